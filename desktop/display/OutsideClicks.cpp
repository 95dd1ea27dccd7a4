#include "desktop/display/OutsideClicks.h"

#include "desktop/display/ClickCatcher.h"
#include "desktop/display/LayerShell.h"
#include "desktop/display/ScreenCover.h"
#include "desktop/display/X11.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QWidget>

#include <algorithm>

#include <xcb/xinput.h>

namespace tidewell {

namespace {

constexpr std::uint32_t lastButton = 3; // those behind it are turns of the wheel

bool isOverOurWindows(const QPoint& pointer) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [&pointer](const QWidget* window) {
        return window->isVisible() && window->frameGeometry().contains(pointer);
    });
}

} // namespace

OutsideClicks::OutsideClicks(std::function<void(std::optional<QPoint> passed)> clicked)
    : clicked_(std::move(clicked))
    , kind_(layershell::isUsed() ? Covers::screenCovers : Covers::none)
    , screenWatch_([this] {
        if (!covers_.empty()) {
            uncoverScreens();
            coverScreens();
        }
    }) {
    xcb_connection_t* const server = x11::connection();
    if (server == nullptr) {
        return;
    }
    if (x11::isXWayland()) {
        kind_ = Covers::clickCatchers;
        return;
    }
    const xcb_query_extension_reply_t* const input = xcb_get_extension_data(server, &xcb_input_id);
    if (input != nullptr && input->present != 0) {
        extension_ = input->major_opcode;
    }
}

OutsideClicks::~OutsideClicks() {
    setOn(false);
}

void OutsideClicks::setOn(bool isOn) {
    if (!isOn) {
        uncoverScreens();
    } else if (covers_.empty()) {
        coverScreens();
    }
    if (extension_ == 0) {
        return;
    }
    struct {
        xcb_input_event_mask_t header;
        std::uint32_t mask;
    } const events{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                   isOn ? std::uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS} : 0U};
    xcb_connection_t* const server = x11::connection();
    xcb_input_xi_select_events(server, x11::rootWindow(), 1, &events.header);
    if (isOn) {
        qApp->installNativeEventFilter(this);
    } else {
        qApp->removeNativeEventFilter(this);
    }
}

void OutsideClicks::coverScreens() {
    if (kind_ == Covers::none) {
        return;
    }
    const auto clicked = [this] { clicked_(std::nullopt); };
    for (QScreen* screen : QGuiApplication::screens()) {
        if (kind_ == Covers::clickCatchers) {
            covers_.emplace_back(new ClickCatcher(*screen, clicked));
        } else {
            covers_.emplace_back(new ScreenCover(*screen, clicked));
        }
    }
}

void OutsideClicks::uncoverScreens() {
    for (const auto& cover : covers_) {
        if (cover) {
            cover->hide();
            cover->deleteLater(); // it may be the one that was clicked on
        }
    }
    covers_.clear();
}

bool OutsideClicks::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* const event = static_cast<const xcb_ge_generic_event_t*>(message);
    if ((event->response_type & 0x7fU) == XCB_GE_GENERIC && event->extension == extension_ &&
        event->event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
        const auto* const press = static_cast<const xcb_input_raw_button_press_event_t*>(message);
        const QPoint pointer = QCursor::pos();
        if (press->detail <= lastButton && !isOverOurWindows(pointer)) {
            clicked_(pointer);
        }
    }
    return false;
}

} // namespace tidewell
