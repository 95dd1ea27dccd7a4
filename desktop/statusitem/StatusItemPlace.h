#pragma once

#include <QPoint>
#include <QRect>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace tidewell {

/// A screen in Qt's coordinates.
struct ScreenArea {
    QRect geometry;
    QRect available;       ///< what the desktop's bars leave of it
    double pixelRatio = 1; ///< native pixels to one of Qt's
};

/// The present screens, the primary one first.
std::vector<ScreenArea> screenAreas();

/// What the coordinates are that a host gives with a click.
enum class HostCoordinates {
    useless, ///< relative to a window or widget of the host's
    logical, ///< of the whole desktop
    native,  ///< of the whole desktop, in native pixels
};

/// Whom to ask where the item was clicked on.
struct PlaceSources {
    /// Where the pointer is; empty where nobody knows.
    std::function<QPoint()> pointer;
    HostCoordinates host = HostCoordinates::useless;
    /// Windows are placed from the bars on, of which nothing more is known.
    bool countsFromBars = false;
    /// The item is taken to be at the lower right where nobody knows, though no bar is known there.
    bool isUsuallyBelow = false;
};

/// Those of this session. `desktops` are the names in XDG_CURRENT_DESKTOP. On X11 the pointer is
/// right. XWayland has it where it last was over one of its own windows, so there the hosts of
/// GNOME and Plasma are believed, and no others. After the application object.
PlaceSources placeSources(const QStringList& desktops);

/// The one that decides where the status item is. What it is told has to be plausible: a place in
/// no bar's strip is none. Main thread.
class StatusItemPlace final {
public:
    explicit StatusItemPlace(PlaceSources sources,
                             std::function<std::vector<ScreenArea>()> screens = screenAreas);

    /// The item was clicked on, at these coordinates of the host's; (0, 0) where it knows none.
    void clickedAt(const QPoint& hostCoordinates);

    /// The item was clicked on, and the host did not say where.
    void clicked();

    /// The item has this geometry, in Qt's coordinates.
    void isAt(const QRect& geometry) { place_ = geometry; }

    /// Where the item was last known to be, around the click where its size is not known. Empty
    /// where it never was, or on a screen that is gone, unless it usually is below.
    std::optional<QRect> lastKnown() const;

private:
    void believe(const QPoint& click);

    PlaceSources sources_;
    std::function<std::vector<ScreenArea>()> screens_;
    std::optional<QRect> place_;
};

} // namespace tidewell
