#pragma once

#include "desktop/display/OutsideClicks.h"
#include "desktop/display/ScreenWatch.h"
#include "ui/ScrollThumb.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tidewell {

/// The window that drops down from the status item. Its content is made when it first opens. It
/// closes on Escape, on a second click on the status item and when none of our windows has the
/// focus any more. Main thread.
class PanelWindow final : public QWidget {
public:
    using MakeContent = std::function<std::unique_ptr<QWidget>()>;

    /// `itemPlace` gives the status item's geometry, where it is known.
    PanelWindow(MakeContent makeContent, std::function<std::optional<QRect>()> itemPlace);

    /// A click on the status item: closes the panel, or opens it beside the item.
    void toggle();

    /// Opens the panel beside the item, or raises and activates the open one.
    void open();

    /// Makes `window`, a tool window that is about to be shown, a part of the panel to window
    /// managers.
    void adopt(QWidget& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void place();
    void followScreens();
    void addContent();
    void awaitFocus(std::chrono::milliseconds patience);
    void closeWithoutFocus();
    void takeFocusBack();
    bool isDeaf() const;
    void closeByItself();

    MakeContent makeContent_;
    std::function<std::optional<QRect>()> itemPlace_;
    bool isAtEdge_;                      ///< by the layer shell
    ThumbScrollArea* content_ = nullptr; ///< a child, hidden while the panel is
    bool hadFocus_ = false;              ///< since it opened, one of our windows
    QTimer focusWait_;
    QElapsedTimer pointerLeft_; ///< one of our windows
    QElapsedTimer closedByItself_;
    OutsideClicks outsideClicks_;
    QTimer screensChanged_; ///< later: the item may be on its way to another screen
    ScreenWatch screenWatch_{[this] { screensChanged_.start(0); }};
};

} // namespace tidewell
