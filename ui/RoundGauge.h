#pragma once

#include "base/values/Colour.h"
#include "ui/Gauge.h"

#include <QImage>

#include <vector>

namespace tidewell {

/// What a round gauge shows. Texts take the text variants of their colours.
struct RoundGaugeContent {
    double value = 0;
    double minimum = 0;
    double maximum = 100;
    QString text;
    Colour textColour = colours::primary;
    QString minimumText;
    QString maximumText;
    Colour minimumTextColour = colours::primary;
    Colour maximumTextColour = colours::primary;
    std::vector<Colour> gradient; ///< along the arc, the first at the minimum; none: grey
    bool operator==(const RoundGaugeContent&) const = default;
};

/// An arc that is open at the bottom, in the colours of a gradient along it, with a marker at the
/// value, the value's text in the middle and the texts of the ends below them. Values outside the
/// range stand at its nearer end.
///
/// It turns clockwise in right-to-left layouts, too, as clocks and dials do there.
class RoundGauge final : public GaugeOf<RoundGaugeContent> {
public:
    RoundGauge();

protected:
    bool looksLike(const RoundGaugeContent& other) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// Where on the arc the marker stands, 0 to 1, in steps too short to see.
    double markerPlace(const RoundGaugeContent& content) const;
    const QImage& arc(Appearance appearance);

    QImage arc_; ///< rendered for these, and its own device pixel ratio
    std::vector<Colour> arcGradient_;
    Appearance arcAppearance_ = Appearance::light;
};

/// The arc of a round gauge, open at the bottom, in the colours of `gradient` along it; grey
/// without any. Square, as wide as the arc. Format ARGB32_Premultiplied. Pure.
QImage roundGaugeArc(const std::vector<Colour>& gradient, Appearance appearance,
                     double devicePixelRatio);

} // namespace tidewell
