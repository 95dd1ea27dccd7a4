#include "desktop/display/ScreenWatch.h"

#include <QGuiApplication>
#include <QScreen>

namespace tidewell {

ScreenWatch::ScreenWatch(std::function<void()> changed)
    : changed_(std::move(changed)) {
    for (const auto signal :
         {&QGuiApplication::primaryScreenChanged, &QGuiApplication::screenRemoved}) {
        connect(qGuiApp, signal, this, [this] { changed_(); });
    }
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](const QScreen* screen) {
        follow(screen);
        changed_();
    });
    for (const QScreen* screen : QGuiApplication::screens()) {
        follow(screen);
    }
}

void ScreenWatch::follow(const QScreen* screen) {
    for (const auto signal : {&QScreen::geometryChanged, &QScreen::availableGeometryChanged}) {
        connect(screen, signal, this, [this] { changed_(); });
    }
}

} // namespace tidewell
