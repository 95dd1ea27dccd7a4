#pragma once

#include <QWidget>

#include <functional>

class QVBoxLayout;

namespace tidewell {

/// A box with soft corners around a widget and a title above it: 20 points for the title, the rest
/// for the box. Assistive technology reads it as a group of that name. Main thread.
class TitledBox final : public QWidget {
public:
    static constexpr int titleHeight = 20;

    /// The box takes the content over and gives it the colours of its inside.
    TitledBox(const QString& title, QWidget* content, QWidget* parent = nullptr);

    void setTitle(const QString& title);
    /// Secondary text at the end of the title's line, and the group's description.
    void setNote(const QString& note);

    /// Points between the box's line and its content, 4 at every side at first.
    void setContentMargins(QMargins margins);

    /// `hovered(true)` when the pointer comes over the box, its title included, and
    /// `hovered(false)` when it leaves or the box is hidden. Content does not come between.
    void onHover(std::function<void(bool)> hovered);

    /// Calls `paint`, which paints `content`, a widget in a box, and keeps that off the line around
    /// the box and out of its corners.
    static void paintInside(QPainter& painter, const QWidget& content,
                            const std::function<void()>& paint);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void setHovered(bool isHovered);

    QVBoxLayout* inside_;
    QString note_;
    std::function<void(bool)> hovered_;
    bool isHovered_ = false;
};

} // namespace tidewell
