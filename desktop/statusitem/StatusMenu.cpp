#include "desktop/statusitem/StatusMenu.h"

#include "ui/Palette.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QMenu>

namespace tidewell {

// The types of com.canonical.dbusmenu's messages.

struct MenuItemProperties { // (ia{sv})
    int id = 0;
    QVariantMap properties;

    friend QDBusArgument& operator<<(QDBusArgument& out, const MenuItemProperties& item) {
        out.beginStructure();
        out << item.id << item.properties;
        out.endStructure();
        return out;
    }

    friend const QDBusArgument& operator>>(const QDBusArgument& in, MenuItemProperties& item) {
        in.beginStructure();
        in >> item.id >> item.properties;
        in.endStructure();
        return in; // NOLINT(bugprone-return-const-ref-from-parameter): as the toolkit wants it
    }
};

struct MenuLayout { // (ia{sv}av), the children being layouts themselves
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;

    friend QDBusArgument& operator<<(QDBusArgument& out, const MenuLayout& layout) {
        out.beginStructure();
        out << layout.id << layout.properties;
        out.beginArray(QMetaType::fromType<QDBusVariant>());
        for (const MenuLayout& child : layout.children) {
            out << QDBusVariant(QVariant::fromValue(child));
        }
        out.endArray();
        out.endStructure();
        return out;
    }

    friend const QDBusArgument& operator>>(const QDBusArgument& in, MenuLayout& layout) {
        in.beginStructure();
        in >> layout.id >> layout.properties;
        in.beginArray();
        while (!in.atEnd()) {
            QDBusVariant child;
            in >> child;
            layout.children.append(qdbus_cast<MenuLayout>(child.variant()));
        }
        in.endArray();
        in.endStructure();
        return in; // NOLINT(bugprone-return-const-ref-from-parameter): as the toolkit wants it
    }
};

struct MenuEvent { // (isvu)
    int id = 0;
    QString type;
    QDBusVariant data;
    uint timestamp = 0;

    friend QDBusArgument& operator<<(QDBusArgument& out, const MenuEvent& event) {
        out.beginStructure();
        out << event.id << event.type << event.data << event.timestamp;
        out.endStructure();
        return out;
    }

    friend const QDBusArgument& operator>>(const QDBusArgument& in, MenuEvent& event) {
        in.beginStructure();
        in >> event.id >> event.type >> event.data >> event.timestamp;
        in.endStructure();
        return in; // NOLINT(bugprone-return-const-ref-from-parameter): as the toolkit wants it
    }
};

namespace {

QString withoutMnemonics(const std::string& title, QChar mark) {
    return QString::fromStdString(title).replace(mark, QString(2, mark));
}

} // namespace

/// Item 0 is the menu, items from 1 on are its entries.
class StatusMenuAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    StatusMenuAdaptor(QObject* object, std::vector<StatusMenuEntry> entries)
        : QDBusAbstractAdaptor(object)
        , entries_(std::move(entries)) {}

    uint version() const { return 3; }
    QString textDirection() const {
        return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
    }
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

    Q_SLOT uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                          tidewell::MenuLayout& layout) const {
        layout = {parentId, propertiesOf(parentId, propertyNames), {}};
        if (parentId == 0 && recursionDepth != 0) {
            for (int id = 1; isItem(id); ++id) {
                layout.children.append({id, propertiesOf(id, propertyNames), {}});
            }
        }
        return revision;
    }

    Q_SLOT QList<tidewell::MenuItemProperties>
    GetGroupProperties(const QList<int>& ids, const QStringList& propertyNames) const {
        QList<MenuItemProperties> result;
        for (int id = 0; isItem(id); ++id) {
            if (ids.isEmpty() || ids.contains(id)) {
                result.append({id, propertiesOf(id, propertyNames)});
            }
        }
        return result;
    }

    Q_SLOT QDBusVariant GetProperty(int id, const QString& name) const {
        return QDBusVariant(propertiesOf(id, {}).value(name, QString()));
    }

    Q_SLOT void Event(int id, const QString& type, const QDBusVariant&, uint) {
        if (type == QStringLiteral("clicked") && isItem(id) && id > 0) {
            // Answered first: what the entry does may take its time.
            QMetaObject::invokeMethod(this, entries_[static_cast<std::size_t>(id) - 1].action,
                                      Qt::QueuedConnection);
        }
    }

    Q_SLOT QList<int> EventGroup(const QList<tidewell::MenuEvent>& events) {
        QList<int> unknown;
        for (const MenuEvent& event : events) {
            Event(event.id, event.type, event.data, event.timestamp);
            if (!isItem(event.id)) {
                unknown.append(event.id);
            }
        }
        return unknown;
    }

    Q_SLOT bool AboutToShow(int) const { return false; }

    Q_SLOT QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) const {
        for (const int id : ids) {
            if (!isItem(id)) {
                unknown.append(id);
            }
        }
        return {};
    }

    // Never sent, as the menu never changes; part of the interface all the same.
    Q_SIGNAL void ItemsPropertiesUpdated(const QList<tidewell::MenuItemProperties>&,
                                         const QList<tidewell::MenuItemProperties>&);
    Q_SIGNAL void LayoutUpdated(uint, int);
    Q_SIGNAL void ItemActivationRequested(int, uint);

private:
    static constexpr uint revision = 1;

    bool isItem(int id) const { return id >= 0 && static_cast<std::size_t>(id) <= entries_.size(); }

    QVariantMap propertiesOf(int id, const QStringList& names) const {
        QVariantMap all;
        if (id == 0) {
            all.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
        } else if (isItem(id)) {
            all.insert(QStringLiteral("label"),
                       withoutMnemonics(entries_[static_cast<std::size_t>(id) - 1].title,
                                        QLatin1Char('_')));
            all.insert(QStringLiteral("enabled"), true);
            all.insert(QStringLiteral("visible"), true);
        }
        if (!names.isEmpty()) {
            all.removeIf([&names](const auto& entry) { return !names.contains(entry.key()); });
        }
        return all;
    }

    std::vector<StatusMenuEntry> entries_;
};

void popUpStatusMenu(const std::vector<StatusMenuEntry>& entries, Appearance appearance,
                     const QPoint& place) {
    auto* const menu = new QMenu;
    menu->setPalette(paletteFor(appearance));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const StatusMenuEntry& entry : entries) {
        QObject::connect(menu->addAction(withoutMnemonics(entry.title, QLatin1Char('&'))),
                         &QAction::triggered, menu, entry.action);
    }
    menu->popup(place);
}

ExportedStatusMenu::ExportedStatusMenu(QDBusConnection bus, std::vector<StatusMenuEntry> entries)
    : bus_(std::move(bus)) {
    qDBusRegisterMetaType<MenuItemProperties>();
    qDBusRegisterMetaType<QList<MenuItemProperties>>();
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    new StatusMenuAdaptor(&object_, std::move(entries));
    bus_.registerObject(QLatin1String(path), &object_);
}

ExportedStatusMenu::~ExportedStatusMenu() {
    bus_.unregisterObject(QLatin1String(path));
}

} // namespace tidewell

#include "StatusMenu.moc"
