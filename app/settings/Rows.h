#pragma once

#include <QVBoxLayout>
#include <QWidget>

namespace tidewell {

// How the boxes of the settings window are laid out. Points.

/// What check boxes keep beside their squares for the ring of the keyboard's focus. The rest lines
/// up with the squares.
inline constexpr int ringRoom = 2;

/// Lays out what is in a box, top to bottom.
inline QVBoxLayout* makeColumn(QWidget* owner) {
    auto* column = new QVBoxLayout(owner);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(3);
    return column;
}

/// The control at the side where lines begin, as wide as it needs to be.
inline QHBoxLayout* makeRow(QWidget* control) {
    auto* row = new QHBoxLayout;
    row->addWidget(control);
    row->addStretch();
    return row;
}

} // namespace tidewell
