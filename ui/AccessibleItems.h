#pragma once

#include "base/values/Interface.h"
#include "ui/Accessible.h"

#include <cstdint>
#include <map>
#include <optional>

namespace tidewell {

/// A widget that paints a list of items, none of which is a widget.
class PaintedItems : public Interface {
public:
    /// Tells an item from the others, also when it moves to another place.
    using ItemKey = std::int64_t;

    virtual std::size_t itemCount() const = 0;
    virtual QString itemText(std::size_t index) const = 0;
    /// In the widget's coordinates, which it may lie outside of.
    virtual QRectF itemFrame(std::size_t index) const = 0;
    virtual QString itemDescription(std::size_t /*index*/) const { return {}; }
    virtual ItemKey itemKey(std::size_t index) const { return static_cast<ItemKey>(index); }
    /// The one that the keyboard marks, if it does.
    virtual std::optional<std::size_t> currentItem() const = 0;
    /// What the list as a whole says beyond its name.
    virtual QString summary() const { return {}; }

    /// Where the item with that key is now.
    std::optional<std::size_t> itemWithKey(ItemKey key) const;
};

/// What assistive technology is told of it: a list of named items, which are made when they are
/// asked for. Main thread.
class AccessibleItems final : public QAccessibleWidget {
public:
    template <std::derived_from<PaintedItems> Widget>
    explicit AccessibleItems(Widget* widget)
        : QAccessibleWidget(widget, QAccessible::List)
        , items_(*widget)
        , names_(names()) {}
    AccessibleItems(const AccessibleItems&) = delete;
    AccessibleItems& operator=(const AccessibleItems&) = delete;
    ~AccessibleItems() override;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QString text(QAccessible::Text kind) const override;

    /// Sends an event of an item.
    void tell(PaintedItems::ItemKey key, QAccessible::Event kind) const;
    /// Sends what came, went or has another name since this was made or called last.
    void tellChanges();

private:
    std::map<PaintedItems::ItemKey, QString> names() const;
    QAccessibleInterface* item(PaintedItems::ItemKey key) const;

    const PaintedItems& items_;
    std::map<PaintedItems::ItemKey, QString> names_;
    mutable std::map<PaintedItems::ItemKey, QAccessible::Id> ids_;
};

// If anyone listens, send what `AccessibleItems` sends. `widget` is read through one.

/// An event of an item, which is there.
void tellOfItem(QWidget& widget, std::size_t index, QAccessible::Event kind);
void tellOfChanges(QWidget& widget);

} // namespace tidewell
