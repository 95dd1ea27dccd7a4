#include "ui/Labels.h"

#include <QLabel>

namespace tidewell {

QLabel* makeLabel(const QString& text, TextStyle style) {
    auto* label = new QLabel(text);
    label->setFont(textFont(style, label->font()));
    label->setAlignment(Qt::AlignCenter);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* makeSecondaryLabel(const QString& text, TextStyle style) {
    QLabel* label = makeLabel(text, style);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace tidewell
