#include "desktop/statusitem/StatusMenu.h"

#include "desktop/statusitem/BusStructure.h"
#include "ui/Palette.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QGuiApplication>

namespace tidewell {

// The structures of com.canonical.dbusmenu, with their D-Bus signatures.

struct MenuItemProperties { // (ia{sv})
    int id = 0;
    QVariantMap properties;

    static auto fields(auto& item) { return std::tie(item.id, item.properties); }
};

struct MenuLayout { // (ia{sv}av)
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children; // layouts themselves

    static auto fields(auto& layout) {
        return std::tie(layout.id, layout.properties, layout.children);
    }
};

struct MenuEvent { // (isvu)
    int id = 0;
    QString type;
    QDBusVariant data;
    uint timestamp = 0;

    static auto fields(auto& event) {
        return std::tie(event.id, event.type, event.data, event.timestamp);
    }
};

namespace {

QString withoutMnemonics(const std::string& title, QChar mark) {
    return QString::fromStdString(title).replace(mark, QString(2, mark));
}

} // namespace

/// The methods and properties of com.canonical.dbusmenu. Item 0 is the menu, items from 1 on are
/// its entries. The menu never changes, so none of the signals is sent.
class StatusMenuAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    StatusMenuAdaptor(QObject* object, std::vector<StatusMenuEntry> entries,
                      std::function<void()> willOpen)
        : QDBusAbstractAdaptor(object)
        , entries_(std::move(entries))
        , willOpen_(std::move(willOpen)) {}

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
                const MenuLayout child{id, propertiesOf(id, propertyNames), {}};
                layout.children.append(QDBusVariant(QVariant::fromValue(child)));
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
            // Queued: the reply goes out before the action runs.
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

    Q_SLOT bool AboutToShow(int id) const {
        if (id == 0) {
            willOpen_();
        }
        return false;
    }

    Q_SLOT QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) const {
        for (const int id : ids) {
            if (isItem(id)) {
                AboutToShow(id);
            } else {
                unknown.append(id);
            }
        }
        return {};
    }

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
    std::function<void()> willOpen_;
};

StatusMenuPopup::StatusMenuPopup(std::vector<StatusMenuEntry> entries,
                                 const DesktopAppearance& appearance)
    : entries_(std::move(entries))
    , appearance_(appearance) {}

void StatusMenuPopup::popUp(const QPoint& place) {
    if (open_) {
        return;
    }
    open_ = new QMenu;
    open_->setPalette(paletteFor(appearance_.desktop()));
    open_->setAttribute(Qt::WA_DeleteOnClose);
    for (const StatusMenuEntry& entry : entries_) {
        QObject::connect(open_->addAction(withoutMnemonics(entry.title, QLatin1Char('&'))),
                         &QAction::triggered, open_, entry.action);
    }
    open_->popup(place);
}

ExportedStatusMenu::ExportedStatusMenu(QDBusConnection bus, std::vector<StatusMenuEntry> entries,
                                       std::function<void()> willOpen)
    : bus_(std::move(bus)) {
    qDBusRegisterMetaType<MenuItemProperties>();
    qDBusRegisterMetaType<QList<MenuItemProperties>>();
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    new StatusMenuAdaptor(&object_, std::move(entries), std::move(willOpen));
    bus_.registerObject(QLatin1String(path), &object_);
}

ExportedStatusMenu::~ExportedStatusMenu() {
    bus_.unregisterObject(QLatin1String(path));
}

} // namespace tidewell

#include "StatusMenu.moc"
