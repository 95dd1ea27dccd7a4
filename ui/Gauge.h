#pragma once

#include <QWidget>

#include <utility>

namespace tidewell {

/// Where `value` lies between the two ends, 0 to 1: values outside lie at the nearer end. An empty,
/// reversed or infinite range and a value that is not a number give 0. Pure.
double gaugeFraction(double value, double minimum, double maximum);

/// What the gauges have in common: assistive technology reads a read-only progress bar with the
/// widget's accessible name, and the value's text as its description. Main thread.
class Gauge : public QWidget {
public:
    struct Reading {
        double value;
        double minimum;
        double maximum;
        QString text; ///< the value as the user reads it
        bool operator==(const Reading&) const = default;
    };
    virtual Reading reading() const = 0;

protected:
    Gauge();

    /// To be called after the content changed, with what `reading` gave before.
    void tellOfChange(const Reading& before);
};

/// A gauge of a plain struct with a `value`, its `text`, a `minimum` and a `maximum`.
template <typename Content>
class GaugeOf : public Gauge {
public:
    const Content& content() const { return content_; }
    /// Draws anew only what differs from what is shown.
    void setContent(Content content) {
        if (content == content_) {
            return;
        }
        if (!looksLike(content)) {
            update();
        }
        const Reading before = reading();
        content_ = std::move(content);
        tellOfChange(before);
    }

    Reading reading() const final {
        return {content_.value, content_.minimum, content_.maximum, content_.text};
    }

protected:
    /// Whether other content would be painted alike.
    virtual bool looksLike(const Content& /*other*/) const { return false; }

private:
    Content content_;
};

} // namespace tidewell
