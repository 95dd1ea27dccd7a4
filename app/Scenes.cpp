#include "app/Scenes.h"

#include <QCoreApplication>

namespace tidewell {

QString objectName(SceneIdentifier identifier) {
    constexpr std::array names{"about", "settings", "appMemory"};
    return QString::fromLatin1(names.at(static_cast<std::size_t>(identifier)));
}

std::array<WindowScene, 3> windowScenes(const QString& applicationName) {
    const auto title = [](const char* sourceText) {
        return QCoreApplication::translate("Scenes", sourceText);
    };
    return {{
        {.identifier = SceneIdentifier::about,
         .title = title(QT_TRANSLATE_NOOP("Scenes", "About")),
         .width = 400,
         .height = 160,
         .titleBar = TitleBar::hidden,
         .placement = Placement::centred},
        {.identifier = SceneIdentifier::settings,
         .title = title(QT_TRANSLATE_NOOP("Scenes", "%1 Settings")).arg(applicationName),
         .width = 410,
         .height = 285,
         .titleBar = TitleBar::standard,
         .placement = Placement::centred},
        {.identifier = SceneIdentifier::appMemory,
         .title = title(QT_TRANSLATE_NOOP("Scenes", "App Memory")),
         .width = 400,
         .height = 380,
         .titleBar = TitleBar::hidden,
         .placement = Placement::ownChoice},
    }};
}

} // namespace tidewell
