#include "app/lists/AccessibleList.h"

#include "app/lists/ShowItemList.h"
#include "app/lists/ShowItemView.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <algorithm>
#include <map>

namespace tidewell {

namespace {

class AccessibleRow final : public QAccessibleInterface {
public:
    AccessibleRow(ShowItemList& list, std::size_t index)
        : list_(list)
        , index_(index) {}

    std::size_t index() const { return index_; }

    bool isValid() const override { return index_ < list_.items().size(); }
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
        if (kind != QAccessible::Name || !isValid()) {
            return {};
        }
        const DisplayContainer& item = list_.items()[index_];
        return QString::fromStdString(item.showItem.label) + u' ' + ShowItemView{item}.valueText();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        const QRect frame = list_.rowFrame(index_).toAlignedRect();
        return {list_.viewport()->mapToGlobal(frame.topLeft()), frame.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state = parent()->state();
        state.focusable = false;
        state.focused = false;
        state.offscreen = !list_.rowFrame(index_).intersects(QRectF(list_.viewport()->rect()));
        return state;
    }

private:
    ShowItemList& list_; // the interfaces of a list's rows go with that of the list
    std::size_t index_;
};

class AccessibleList final : public QAccessibleWidget {
public:
    explicit AccessibleList(ShowItemList& list)
        : QAccessibleWidget(&list, QAccessible::List)
        , list_(list) {}
    AccessibleList(const AccessibleList&) = delete;
    AccessibleList& operator=(const AccessibleList&) = delete;
    ~AccessibleList() override {
        for (const auto& [index, id] : rows_) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    int childCount() const override { return static_cast<int>(list_.items().size()); }

    QAccessibleInterface* child(int index) const override {
        return index >= 0 && index < childCount() ? row(static_cast<std::size_t>(index)) : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const row = dynamic_cast<const AccessibleRow*>(child);
        return row == nullptr ? -1 : static_cast<int>(row->index());
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index)->rect().contains(x, y)) {
                return child(index);
            }
        }
        return nullptr;
    }

    void tellChangedRows(const std::vector<DisplayContainer>& before) const {
        const auto& now = list_.items();
        for (std::size_t index = 0; index < std::max(before.size(), now.size()); ++index) {
            if (index >= now.size()) {
                tell(index, QAccessible::ObjectDestroyed);
            } else if (index >= before.size()) {
                tell(index, QAccessible::ObjectCreated);
            } else if (before[index].showItem.label != now[index].showItem.label ||
                       before[index].showItem.value != now[index].showItem.value) {
                tell(index, QAccessible::NameChanged);
            }
        }
    }

private:
    QAccessibleInterface* row(std::size_t index) const {
        const auto [found, isNew] = rows_.try_emplace(index);
        if (isNew) {
            auto* const made = new AccessibleRow(list_, index); // registering hands it over
            found->second = QAccessible::registerAccessibleInterface(made);
        }
        return QAccessible::accessibleInterface(found->second);
    }

    void tell(std::size_t index, QAccessible::Event kind) const {
        QAccessibleEvent event(row(index), kind);
        QAccessible::updateAccessibility(&event);
    }

    ShowItemList& list_;
    mutable std::map<std::size_t, QAccessible::Id> rows_; // made when they are asked for
};

QAccessibleInterface* accessibleList(const QString&, QObject* object) {
    auto* const list = qobject_cast<ShowItemList*>(object);
    return list == nullptr ? nullptr : new AccessibleList(*list);
}

} // namespace

void makeListsAccessible() {
    QAccessible::installFactory(accessibleList); // does nothing the second time
}

void tellChangedRows(ShowItemList& list, const std::vector<DisplayContainer>& before) {
    if (!QAccessible::isActive()) {
        return;
    }
    if (const auto* const spoken =
            dynamic_cast<AccessibleList*>(QAccessible::queryAccessibleInterface(&list))) {
        spoken->tellChangedRows(before);
    }
}

} // namespace tidewell
