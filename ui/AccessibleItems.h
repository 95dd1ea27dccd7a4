#pragma once

#include "ui/Accessible.h"

#include <map>

namespace tidewell {

/// A widget that paints a list of items, none of which is a widget.
class PaintedItems {
public:
    PaintedItems() = default;
    PaintedItems(const PaintedItems&) = delete;
    PaintedItems& operator=(const PaintedItems&) = delete;
    virtual ~PaintedItems() = default;

    virtual std::size_t itemCount() const = 0;
    virtual QString itemText(std::size_t index) const = 0;
    /// In the widget's coordinates, which it may lie outside of.
    virtual QRectF itemFrame(std::size_t index) const = 0;
};

/// What assistive technology is told of it: a list of named items, which are made when they are
/// asked for. Main thread.
class AccessibleItems : public QAccessibleWidget {
public:
    /// `items` is the same object as `widget`.
    AccessibleItems(QWidget* widget, const PaintedItems& items);
    AccessibleItems(const AccessibleItems&) = delete;
    AccessibleItems& operator=(const AccessibleItems&) = delete;
    ~AccessibleItems() override;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;

    /// Sends an event of an item.
    void tell(std::size_t index, QAccessible::Event kind) const;

private:
    QAccessibleInterface* item(std::size_t index) const;

    const PaintedItems& items_;
    mutable std::map<std::size_t, QAccessible::Id> ids_;
};

/// Sends an event of an item, if anyone listens. `widget` is read through an `AccessibleItems`.
void tellOfItem(QWidget& widget, std::size_t index, QAccessible::Event kind);

} // namespace tidewell
