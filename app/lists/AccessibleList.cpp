#include "app/lists/AccessibleList.h"

#include "app/lists/ShowItemList.h"
#include "app/lists/ShowItemView.h"
#include "app/lists/UsageText.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <algorithm>
#include <map>

namespace tidewell {

namespace {

class AccessibleRow final : public QAccessibleInterface {
public:
    AccessibleRow(ShowItemList& list, ShowItemList::RowKey key)
        : list_(list)
        , key_(key) {}

    std::optional<std::size_t> index() const { return list_.rowOf(key_); }

    bool isValid() const override { return index().has_value(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return parent()->window(); }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(&list_);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text kind) const override {
        const auto row = index();
        if (!row) {
            return {};
        }
        const ShowItemView view = list_.row(*row);
        const DisplayContainer& item = view.displayContainer;
        if (kind == QAccessible::Description && item.usage) {
            return UsageText::of(*item.usage);
        }
        if (kind != QAccessible::Name) {
            return {};
        }
        const QString remark = view.remark();
        return QString::fromStdString(item.showItem.label) + u' ' + view.valueText() +
               (remark.isEmpty() ? remark : QStringLiteral(", ") + remark);
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        const auto row = index();
        const QRect frame = row ? list_.rowFrame(*row).toAlignedRect() : QRect();
        return {list_.viewport()->mapToGlobal(frame.topLeft()), frame.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state = parent()->state();
        const auto row = index();
        state.focusable = true;
        state.focused = list_.hasFocus() && row && row == list_.currentRow();
        state.offscreen =
            !row || !list_.rowFrame(*row).intersects(QRectF(list_.viewport()->rect()));
        return state;
    }

private:
    ShowItemList& list_; // the interfaces of a list's rows go with that of the list
    ShowItemList::RowKey key_;
};

class AccessibleList final : public QAccessibleWidget {
public:
    explicit AccessibleList(ShowItemList& list)
        : QAccessibleWidget(&list, QAccessible::List)
        , list_(list) {}
    AccessibleList(const AccessibleList&) = delete;
    AccessibleList& operator=(const AccessibleList&) = delete;
    ~AccessibleList() override {
        for (const auto& [key, id] : rows_) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    int childCount() const override { return static_cast<int>(list_.items().size()); }

    QAccessibleInterface* child(int index) const override {
        return index >= 0 && index < childCount()
                   ? row(ShowItemList::keyOf(list_.items(), static_cast<std::size_t>(index)))
                   : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const row = dynamic_cast<const AccessibleRow*>(child);
        const auto index = row == nullptr ? std::nullopt : row->index();
        return index ? static_cast<int>(*index) : -1;
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index)->rect().contains(x, y)) {
                return child(index);
            }
        }
        return nullptr;
    }

    QAccessibleInterface* focusChild() const override {
        const auto current = list_.currentRow();
        return list_.hasFocus() && current ? child(static_cast<int>(*current)) : nullptr;
    }

    void tellChangedRows(const std::vector<DisplayContainer>& before) {
        const auto& now = list_.items();
        std::map<ShowItemList::RowKey, const DisplayContainer*> gone;
        for (std::size_t i = 0; i < before.size(); ++i) {
            gone.emplace(ShowItemList::keyOf(before, i), &before[i]);
        }
        for (std::size_t i = 0; i < now.size(); ++i) {
            const auto key = ShowItemList::keyOf(now, i);
            const auto old = gone.find(key);
            if (old == gone.end()) {
                tell(key, QAccessible::ObjectCreated);
                continue;
            }
            if (old->second->showItem.label != now[i].showItem.label ||
                old->second->showItem.value != now[i].showItem.value) {
                tell(key, QAccessible::NameChanged);
            }
            gone.erase(old);
        }
        for (const auto& [key, item] : gone) {
            tell(key, QAccessible::ObjectDestroyed);
            QAccessible::deleteAccessibleInterface(rows_.at(key));
            rows_.erase(key);
        }
    }

    void tellFocusedRow() const {
        const auto current = list_.currentRow();
        if (current) {
            tell(ShowItemList::keyOf(list_.items(), *current), QAccessible::Focus);
        }
    }

private:
    QAccessibleInterface* row(ShowItemList::RowKey key) const {
        const auto [found, isNew] = rows_.try_emplace(key);
        if (isNew) {
            auto* const made = new AccessibleRow(list_, key); // registering hands it over
            found->second = QAccessible::registerAccessibleInterface(made);
        }
        return QAccessible::accessibleInterface(found->second);
    }

    void tell(ShowItemList::RowKey key, QAccessible::Event kind) const {
        QAccessibleEvent event(row(key), kind);
        QAccessible::updateAccessibility(&event);
    }

    ShowItemList& list_;
    mutable std::map<ShowItemList::RowKey, QAccessible::Id> rows_; // made when they are asked for
};

QAccessibleInterface* accessibleList(const QString&, QObject* object) {
    auto* const list = qobject_cast<ShowItemList*>(object);
    return list == nullptr ? nullptr : new AccessibleList(*list);
}

AccessibleList* spoken(ShowItemList& list) {
    return QAccessible::isActive()
               ? dynamic_cast<AccessibleList*>(QAccessible::queryAccessibleInterface(&list))
               : nullptr;
}

} // namespace

void makeListsAccessible() {
    QAccessible::installFactory(accessibleList); // does nothing the second time
}

void tellChangedRows(ShowItemList& list, const std::vector<DisplayContainer>& before) {
    if (AccessibleList* const interface = spoken(list)) {
        interface->tellChangedRows(before);
    }
}

void tellFocusedRow(ShowItemList& list) {
    if (const AccessibleList* const interface = spoken(list)) {
        interface->tellFocusedRow();
    }
}

} // namespace tidewell
