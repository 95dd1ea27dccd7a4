#include "app/panel/AnchorPoint.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <string>

namespace tidewell {

namespace {

nlohmann::json number(double value) {
    constexpr double mostExact = 9007199254740992; // 2^53
    const bool isWhole = std::trunc(value) == value && std::abs(value) <= mostExact;
    return isWhole ? nlohmann::json(static_cast<std::int64_t>(value)) : nlohmann::json(value);
}

} // namespace

std::optional<Data> encodePoint(QPointF point) {
    if (!std::isfinite(point.x()) || !std::isfinite(point.y())) {
        return std::nullopt;
    }
    const std::string text = nlohmann::json::array({number(point.x()), number(point.y())}).dump();
    return Data(text.begin(), text.end());
}

std::optional<QPointF> decodePoint(const Data& data) {
    const auto json = nlohmann::json::parse(data, nullptr, false);
    // What follows the two numbers is left alone, as other readers of such arrays do.
    if (!json.is_array() || json.size() < 2 || !json[0].is_number() || !json[1].is_number()) {
        return std::nullopt;
    }
    return QPointF(json[0].get<double>(), json[1].get<double>());
}

QPointF upwardFromDesktop(QPointF point, const QRect& mainScreen) {
    return {point.x() - mainScreen.left(), mainScreen.top() + mainScreen.height() - point.y()};
}

QPointF desktopFromUpward(QPointF point, const QRect& mainScreen) {
    return {point.x() + mainScreen.left(), mainScreen.top() + mainScreen.height() - point.y()};
}

} // namespace tidewell
