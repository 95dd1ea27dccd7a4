#include "desktop/statusitem/StatusItemPlace.h"

#include "desktop/display/LayerShell.h"
#include "desktop/display/X11.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <array>

namespace tidewell {

namespace {

// Points. Bars that hide themselves take nothing from the available area.
constexpr int broadestHiddenBar = 64;
// From a click to the edge of such a bar.
constexpr int clickMargin = 16;

const ScreenArea* screenAt(const std::vector<ScreenArea>& screens, const QPoint& point) {
    const auto found = std::ranges::find_if(
        screens, [&point](const ScreenArea& screen) { return screen.geometry.contains(point); });
    return found == screens.end() ? nullptr : &*found;
}

bool isInStrip(const std::vector<ScreenArea>& screens, const QPoint& point) {
    const ScreenArea* const screen = screenAt(screens, point);
    constexpr int strip = broadestHiddenBar;
    return screen != nullptr &&
           !(screen->available & screen->geometry.adjusted(strip, strip, -strip, -strip))
                .contains(point);
}

QPoint atNearestEdge(const QPoint& point, const QRect& screen) {
    const std::array edges{QPoint(point.x(), screen.top()), QPoint(point.x(), screen.bottom()),
                           QPoint(screen.left(), point.y()), QPoint(screen.right(), point.y())};
    return *std::ranges::min_element(
        edges, {}, [&point](const QPoint& edge) { return (edge - point).manhattanLength(); });
}

/// Of a point in native pixels. Qt scales each screen from its upper left corner.
QPoint fromNative(const std::vector<ScreenArea>& screens, const QPoint& point) {
    for (const auto& [geometry, available, ratio] : screens) {
        const QPoint inside = ((point - geometry.topLeft()).toPointF() / ratio).toPoint();
        if (geometry.contains(geometry.topLeft() + inside)) {
            return geometry.topLeft() + inside;
        }
    }
    return point;
}

} // namespace

std::vector<ScreenArea> screenAreas() {
    std::vector<ScreenArea> areas;
    for (const QScreen* screen : QGuiApplication::screens()) {
        areas.push_back(
            {screen->geometry(), screen->availableGeometry(), screen->devicePixelRatio()});
    }
    return areas;
}

PlaceSources placeSources(const QStringList& desktops) {
    if (x11::connection() != nullptr && !x11::isXWayland()) {
        return {.pointer = [] { return QCursor::pos(); }, .host = HostCoordinates::useless};
    }
    PlaceSources sources;
    sources.countsFromBars = layershell::isUsed();
    if (desktops.contains(QStringLiteral("KDE"))) {
        sources.host = HostCoordinates::native;
        sources.isUsuallyBelow = sources.countsFromBars;
    } else if (desktops.contains(QStringLiteral("GNOME"))) {
        sources.host = HostCoordinates::logical;
    }
    return sources;
}

StatusItemPlace::StatusItemPlace(PlaceSources sources,
                                 std::function<std::vector<ScreenArea>()> screens)
    : sources_(std::move(sources))
    , screens_(std::move(screens)) {}

void StatusItemPlace::clickedAt(const QPoint& hostCoordinates) {
    if (hostCoordinates.isNull()) {
        return; // a key, say
    }
    if (sources_.pointer) {
        believe(sources_.pointer());
        return;
    }
    if (sources_.host == HostCoordinates::useless) {
        return;
    }
    const auto screens = screens_();
    const QPoint scaled = fromNative(screens, hostCoordinates);
    const bool isNative = sources_.host == HostCoordinates::native;
    // Versions of hosts differ in this, too.
    for (const QPoint& point : {isNative ? scaled : hostCoordinates, scaled, hostCoordinates}) {
        if (isInStrip(screens, point)) {
            believe(point);
            return;
        }
    }
}

void StatusItemPlace::clicked() {
    if (sources_.pointer && isInStrip(screens_(), sources_.pointer())) {
        believe(sources_.pointer());
    }
}

void StatusItemPlace::believe(const QPoint& click) {
    const auto screens = screens_();
    const ScreenArea* const screen = screenAt(screens, click);
    if (sources_.countsFromBars && screen != nullptr) {
        place_ = QRect(atNearestEdge(click, screen->geometry), QSize(1, 1));
        return;
    }
    const int margin = screen != nullptr && screen->available.contains(click) ? clickMargin : 0;
    place_ = QRect(click, QSize(1, 1)).adjusted(-margin, -margin, margin, margin);
}

std::optional<QRect> StatusItemPlace::lastKnown() const {
    const auto screens = screens_();
    if (place_ && screenAt(screens, place_->center()) != nullptr) {
        return place_;
    }
    if (sources_.isUsuallyBelow && !screens.empty()) {
        return QRect(screens.front().geometry.bottomRight(), QSize(1, 1));
    }
    return std::nullopt;
}

} // namespace tidewell
