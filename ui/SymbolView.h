#pragma once

#include "base/values/Colour.h"
#include "ui/Symbols.h"

#include <QWidget>

#include <string_view>

namespace tidewell {

/// Shows a symbol in a square of a fixed size, in a colour of the palette's appearance. Decoration:
/// nothing to read aloud. Main thread.
class SymbolView final : public QWidget {
public:
    SymbolView(std::string_view symbol, Colour colour, int size);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SymbolPicture symbol_;
    Colour colour_;
};

} // namespace tidewell
