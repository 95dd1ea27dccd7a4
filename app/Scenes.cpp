#include "app/Scenes.h"

#include <QCoreApplication>

namespace tidewell {

std::array<WindowScene, 3> windowScenes(const std::string& applicationName) {
    const auto title = [](const char* sourceText) {
        return QCoreApplication::translate("Scenes", sourceText);
    };
    const QString about = title(QT_TRANSLATE_NOOP("Scenes", "About"));
    const QString settings = title(QT_TRANSLATE_NOOP("Scenes", "%1 Settings"))
                                 .arg(QString::fromStdString(applicationName));
    const QString appMemory = title(QT_TRANSLATE_NOOP("Scenes", "App Memory"));
    return {{
        {"about", about.toStdString(), 400, 160, TitleBar::hidden, Placement::centred},
        {"settings", settings.toStdString(), 410, 285, TitleBar::standard, Placement::centred},
        {"appMemory", appMemory.toStdString(), 400, 380, TitleBar::hidden, Placement::ownChoice},
    }};
}

} // namespace tidewell
