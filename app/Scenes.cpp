#include "app/Scenes.h"

#include <QCoreApplication>

namespace tidewell {

namespace {

struct Scenes {
    Q_DECLARE_TR_FUNCTIONS(Scenes)
};

} // namespace

std::array<WindowScene, 3> windowScenes(const QString& applicationName) {
    return {{
        {.identifier = SceneIdentifier::about,
         .objectName = "about",
         .title = Scenes::tr("About"),
         .width = 400,
         .height = 160,
         .titleBar = TitleBar::hidden,
         .placement = Placement::centred},
        {.identifier = SceneIdentifier::settings,
         .objectName = "settings",
         .title = Scenes::tr("%1 Settings").arg(applicationName),
         .width = 410,
         .height = 285,
         .titleBar = TitleBar::standard,
         .placement = Placement::centred},
        {.identifier = SceneIdentifier::appMemory,
         .objectName = "appMemory",
         .title = Scenes::tr("App Memory"),
         .width = 400,
         .height = 380,
         .titleBar = TitleBar::hidden,
         .placement = Placement::ownChoice},
    }};
}

} // namespace tidewell
