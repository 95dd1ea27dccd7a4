#include "ui/AccessibleItems.h"

#include <QWidget>

namespace tidewell {

namespace {

class AccessibleItem final : public QAccessibleInterface {
public:
    AccessibleItem(QWidget& widget, const PaintedItems& items, PaintedItems::ItemKey key)
        : widget_(widget)
        , items_(items)
        , key_(key) {}

    std::optional<std::size_t> index() const { return items_.itemWithKey(key_); }

    bool isValid() const override { return index().has_value(); }
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
        const auto place = index();
        return !place                             ? QString()
               : kind == QAccessible::Name        ? items_.itemText(*place)
               : kind == QAccessible::Description ? items_.itemDescription(*place)
                                                  : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        const QRect frame = this->frame().toAlignedRect();
        return {widget_.mapToGlobal(frame.topLeft()), frame.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state = parent()->state();
        const auto place = index();
        state.focusable = true;
        state.focused = widget_.hasFocus() && place && place == items_.currentItem();
        state.offscreen = !frame().intersects(QRectF(widget_.rect()));
        return state;
    }

private:
    QRectF frame() const {
        const auto place = index();
        return place ? items_.itemFrame(*place) : QRectF();
    }

    QWidget& widget_; // outlives this: the interfaces of its items go with its own
    const PaintedItems& items_;
    PaintedItems::ItemKey key_;
};

AccessibleItems* listenedTo(QWidget& widget) {
    return QAccessible::isActive()
               ? dynamic_cast<AccessibleItems*>(QAccessible::queryAccessibleInterface(&widget))
               : nullptr;
}

} // namespace

std::optional<std::size_t> PaintedItems::itemWithKey(ItemKey key) const {
    for (std::size_t index = 0; index < itemCount(); ++index) {
        if (itemKey(index) == key) {
            return index;
        }
    }
    return std::nullopt;
}

AccessibleItems::~AccessibleItems() {
    for (const auto& [key, id] : ids_) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

int AccessibleItems::childCount() const {
    return static_cast<int>(items_.itemCount());
}

QAccessibleInterface* AccessibleItems::child(int index) const {
    return index >= 0 && index < childCount()
               ? item(items_.itemKey(static_cast<std::size_t>(index)))
               : nullptr;
}

int AccessibleItems::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const item = dynamic_cast<const AccessibleItem*>(child);
    const auto index = item == nullptr ? std::nullopt : item->index();
    return index ? static_cast<int>(*index) : -1;
}

QAccessibleInterface* AccessibleItems::childAt(int x, int y) const {
    for (int index = 0; index < childCount(); ++index) {
        if (child(index)->rect().contains(x, y)) {
            return child(index);
        }
    }
    return nullptr;
}

QAccessibleInterface* AccessibleItems::focusChild() const {
    const auto current = items_.currentItem();
    return widget()->hasFocus() && current ? child(static_cast<int>(*current)) : nullptr;
}

QString AccessibleItems::text(QAccessible::Text kind) const {
    const bool isSummary = kind == QAccessible::Description || kind == QAccessible::Value;
    const QString own = isSummary ? items_.summary() : QString();
    return own.isEmpty() ? QAccessibleWidget::text(kind) : own;
}

void AccessibleItems::tell(PaintedItems::ItemKey key, QAccessible::Event kind) const {
    QAccessibleEvent event(item(key), kind);
    QAccessible::updateAccessibility(&event);
}

void AccessibleItems::tellChanges() {
    auto before = std::exchange(names_, names());
    for (const auto& [key, name] : names_) {
        const auto old = before.extract(key);
        if (old.empty()) {
            tell(key, QAccessible::ObjectCreated);
        } else if (old.mapped() != name) {
            tell(key, QAccessible::NameChanged);
        }
    }
    for (const auto& [key, name] : before) {
        tell(key, QAccessible::ObjectDestroyed);
        QAccessible::deleteAccessibleInterface(ids_.at(key));
        ids_.erase(key);
    }
}

std::map<PaintedItems::ItemKey, QString> AccessibleItems::names() const {
    std::map<PaintedItems::ItemKey, QString> names;
    for (std::size_t index = 0; index < items_.itemCount(); ++index) {
        names.emplace(items_.itemKey(index), items_.itemText(index));
    }
    return names;
}

QAccessibleInterface* AccessibleItems::item(PaintedItems::ItemKey key) const {
    const auto [found, isNew] = ids_.try_emplace(key);
    if (isNew) {
        auto* const made = new AccessibleItem(*widget(), items_, key); // registering hands it over
        found->second = QAccessible::registerAccessibleInterface(made);
    }
    return QAccessible::accessibleInterface(found->second);
}

void tellOfItem(QWidget& widget, std::size_t index, QAccessible::Event kind) {
    if (const auto* const items = listenedTo(widget)) {
        items->tell(dynamic_cast<PaintedItems&>(widget).itemKey(index), kind);
    }
}

void tellOfChanges(QWidget& widget) {
    if (auto* const items = listenedTo(widget)) {
        items->tellChanges();
    }
}

} // namespace tidewell
