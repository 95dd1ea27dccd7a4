#include "ui/AccessibleItems.h"

#include <QWidget>

namespace tidewell {

namespace {

class AccessibleItem final : public QAccessibleInterface {
public:
    AccessibleItem(QWidget& widget, const PaintedItems& items, std::size_t index)
        : widget_(widget)
        , items_(items)
        , index_(index) {}

    std::size_t index() const { return index_; }

    bool isValid() const override { return index_ < items_.itemCount(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return parent()->window(); }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(&widget_);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? items_.itemText(index_) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        const QRect frame = items_.itemFrame(index_).toAlignedRect();
        return {widget_.mapToGlobal(frame.topLeft()), frame.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state = parent()->state();
        state.focusable = false;
        state.focused = false;
        state.offscreen = !items_.itemFrame(index_).intersects(QRectF(widget_.rect()));
        return state;
    }

private:
    QWidget& widget_; // outlives this: the interfaces of its items go with its own
    const PaintedItems& items_;
    std::size_t index_;
};

} // namespace

AccessibleItems::AccessibleItems(QWidget* widget, const PaintedItems& items)
    : QAccessibleWidget(widget, QAccessible::List)
    , items_(items) {}

AccessibleItems::~AccessibleItems() {
    for (const auto& [index, id] : ids_) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

int AccessibleItems::childCount() const {
    return static_cast<int>(items_.itemCount());
}

QAccessibleInterface* AccessibleItems::child(int index) const {
    return index >= 0 && index < childCount() ? item(static_cast<std::size_t>(index)) : nullptr;
}

int AccessibleItems::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const item = dynamic_cast<const AccessibleItem*>(child);
    return item == nullptr ? -1 : static_cast<int>(item->index());
}

QAccessibleInterface* AccessibleItems::childAt(int x, int y) const {
    for (int index = 0; index < childCount(); ++index) {
        if (child(index)->rect().contains(x, y)) {
            return child(index);
        }
    }
    return nullptr;
}

void AccessibleItems::tell(std::size_t index, QAccessible::Event kind) const {
    QAccessibleEvent event(item(index), kind);
    QAccessible::updateAccessibility(&event);
}

QAccessibleInterface* AccessibleItems::item(std::size_t index) const {
    const auto [found, isNew] = ids_.try_emplace(index);
    if (isNew) {
        auto* const made =
            new AccessibleItem(*widget(), items_, index); // registering hands it over
        found->second = QAccessible::registerAccessibleInterface(made);
    }
    return QAccessible::accessibleInterface(found->second);
}

void tellOfItem(QWidget& widget, std::size_t index, QAccessible::Event kind) {
    if (!QAccessible::isActive()) {
        return;
    }
    if (const auto* const spoken =
            dynamic_cast<AccessibleItems*>(QAccessible::queryAccessibleInterface(&widget))) {
        spoken->tell(index, kind);
    }
}

} // namespace tidewell
