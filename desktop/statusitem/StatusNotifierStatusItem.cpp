#include "desktop/statusitem/StatusNotifierStatusItem.h"

#include "desktop/session/ServiceCall.h"
#include "desktop/statusitem/BusStructure.h"
#include "ui/Symbols.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QTimer>
#include <QtEndian>

#include <chrono>

#include <unistd.h>

namespace tidewell {

struct NotifierPixmap { // (iiay): ARGB32, big-endian
    int width = 0;
    int height = 0;
    QByteArray pixels;

    static auto fields(auto& pixmap) {
        return std::tie(pixmap.width, pixmap.height, pixmap.pixels);
    }
};

struct NotifierTooltip { // (sa(iiay)ss)
    QString iconName;
    QList<NotifierPixmap> icon;
    QString title;
    QString text;

    static auto fields(auto& tooltip) {
        return std::tie(tooltip.iconName, tooltip.icon, tooltip.title, tooltip.text);
    }
};

namespace {

constexpr std::chrono::seconds untilRead{1};
constexpr std::chrono::hours timeout{24}; // nothing waits for a hung bus

/// `text` without what a host could take for markup.
QString plainTooltip(const std::string& text) {
    return QString::fromStdString(text).remove(QLatin1Char('<')).remove(QLatin1Char('&'));
}

NotifierPixmap pixmapOf(const StatusItemContent& content, Appearance appearance, int size) {
    const auto image = symbolImage(content.symbolName, content.colour.in(appearance), size, 1);
    if (!image) {
        return {};
    }
    NotifierPixmap pixmap{size, size, QByteArray(image->sizeInBytes(), Qt::Uninitialized)};
    qToBigEndian<quint32>(image->constBits(), image->sizeInBytes() / 4, pixmap.pixels.data());
    return pixmap;
}

} // namespace

/// The methods, properties and signals of org.kde.StatusNotifierItem.
class StatusNotifierAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)
    Q_PROPERTY(QString IconThemePath READ none)
    Q_PROPERTY(QString IconName READ none)
    Q_PROPERTY(QList<tidewell::NotifierPixmap> IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ description)
    Q_PROPERTY(QString OverlayIconName READ none)
    Q_PROPERTY(QList<tidewell::NotifierPixmap> OverlayIconPixmap READ noPixmap)
    Q_PROPERTY(QString AttentionIconName READ none)
    Q_PROPERTY(QList<tidewell::NotifierPixmap> AttentionIconPixmap READ noPixmap)
    Q_PROPERTY(QString AttentionMovieName READ none)
    Q_PROPERTY(tidewell::NotifierTooltip ToolTip READ toolTip)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)

public:
    StatusNotifierAdaptor(QObject* object, DesktopAppearance& appearance, StatusItemPlace& place,
                          StatusItemBehaviour behaviour)
        : QDBusAbstractAdaptor(object)
        , appearance_(appearance)
        , place_(place)
        , shownAppearance_(appearance.statusArea())
        , behaviour_(std::move(behaviour))
        , menu_(behaviour_.menu, appearance)
        , appearanceChanged_(appearance.didChange([this] { followAppearance(); })) {}

    void setContent(const StatusItemContent& content) {
        const StatusItemContent old = std::exchange(content_, content);
        if (old.symbolName != content.symbolName ||
            old.colour.in(shownAppearance_) != content.colour.in(shownAppearance_)) {
            Q_EMIT NewIcon();
        }
        if (old.description != content.description) {
            Q_EMIT NewToolTip();
        }
        if (old.text != content.text && showsLabel_) {
            Q_EMIT XAyatanaNewLabel(label(), labelGuide());
        }
    }

    QString category() const { return QStringLiteral("SystemServices"); }
    QString id() const { return QString::fromStdString(behaviour_.identifier); }
    QString title() const { return QString::fromStdString(behaviour_.title); }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const {
        return QDBusObjectPath(QLatin1String(ExportedStatusMenu::path));
    }
    QString none() const { return {}; }
    QList<NotifierPixmap> noPixmap() const { return {}; }
    /// Drawn on demand, not kept: all sizes together are 35 KB.
    QList<NotifierPixmap> iconPixmap() const {
        QList<NotifierPixmap> pixmaps;
        for (const int size : statusItemSizes) {
            pixmaps.append(pixmapOf(content_, shownAppearance_, size));
        }
        return pixmaps;
    }
    NotifierTooltip toolTip() const {
        // The figure first: some hosts show the title only.
        return {{}, {}, plainTooltip(content_.description), plainTooltip(behaviour_.title)};
    }
    QString description() const { return QString::fromStdString(content_.description); }
    QString label() const {
        return showsLabel_ ? QString::fromStdString(content_.text) : QString();
    }
    QString labelGuide() const { return tidewell::labelGuide(label()); }

    /// Tells the label a moment after the item was registered: GNOME's extension shows a label that
    /// changes after it has read the properties, and none that was there before.
    void showLabelSoon() {
        QTimer::singleShot(untilRead, this, [this] {
            showsLabel_ = true;
            Q_EMIT XAyatanaNewLabel(label(), labelGuide());
        });
    }

    Q_SLOT void Activate(int x, int y) {
        place_.clickedAt({x, y});
        activated();
    }
    Q_SLOT void SecondaryActivate(int x, int y) { Activate(x, y); }
    Q_SLOT void XAyatanaSecondaryActivate(uint) {
        place_.clicked();
        activated();
    }
    Q_SLOT void ContextMenu(int x, int y) {
        place_.clickedAt({x, y});
        menu_.popUp(place_.lastKnown().value_or(QRect()).center());
    }
    Q_SLOT void ProvideXdgActivationToken(const QString& token) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8()); // for the window that opens next
    }
    Q_SLOT void Scroll(int, const QString&) {}

    Q_SIGNAL void NewIcon();
    Q_SIGNAL void NewToolTip();
    Q_SIGNAL void XAyatanaNewLabel(const QString&, const QString&);

private:
    // Queued: the reply goes out first, and this may be deleted in the call.
    void activated() {
        const auto activate = [activated = behaviour_.activated] {
            activated();
            qunsetenv("XDG_ACTIVATION_TOKEN"); // of a click that closed the panel
        };
        QMetaObject::invokeMethod(this, activate, Qt::QueuedConnection);
    }

    void followAppearance() {
        if (shownAppearance_ != appearance_.statusArea()) {
            shownAppearance_ = appearance_.statusArea();
            Q_EMIT NewIcon();
        }
    }

    DesktopAppearance& appearance_;
    StatusItemPlace& place_;
    Appearance shownAppearance_;
    StatusItemBehaviour behaviour_;
    StatusMenuPopup menu_;
    StatusItemContent content_;
    bool showsLabel_ = false;
    Subscription appearanceChanged_;
};

StatusNotifierStatusItem::StatusNotifierStatusItem(const QDBusConnection& bus,
                                                   StatusNotifierHost& host,
                                                   DesktopAppearance& appearance,
                                                   StatusItemPlace& place,
                                                   const StatusItemBehaviour& behaviour)
    : bus_(bus)
    , host_(host)
    , menu_(bus, behaviour.menu, [&place] { place.clicked(); })
    , adaptor_(new StatusNotifierAdaptor(&object_, appearance, place, behaviour)) {
    static int number = 0;
    service_ = QStringLiteral("org.kde.StatusNotifierItem-%1-%2").arg(getpid()).arg(++number);
    qDBusRegisterMetaType<NotifierPixmap>();
    qDBusRegisterMetaType<QList<NotifierPixmap>>();
    qDBusRegisterMetaType<NotifierTooltip>();
    bus_.registerObject(QLatin1String(path), &object_);
}

StatusNotifierStatusItem::~StatusNotifierStatusItem() {
    if (isRegistered_) {
        // The watcher drops an item whose bus name has no owner.
        bus_.send(busCall(QStringLiteral("ReleaseName")) << service_);
    }
    bus_.unregisterObject(QLatin1String(path));
}

void StatusNotifierStatusItem::setContent(const StatusItemContent& content) {
    adaptor_->setContent(content);
    if (!isRegistered_) { // not before there is content: hosts read it at once
        isRegistered_ = true;
        constexpr uint doNotQueue = 4;
        callService(bus_, busCall(QStringLiteral("RequestName")) << service_ << doNotQueue, timeout,
                    object_, [this](const QDBusMessage& reply) {
                        // A sandbox's bus refuses such names. Watchers take the unique one as well.
                        constexpr uint nowOwner = 1;
                        const bool isOurs = reply.arguments().value(0).toUInt() == nowOwner;
                        host_.registerItem(isOurs ? service_ : bus_.baseService());
                        adaptor_->showLabelSoon();
                    });
    }
}

QString labelGuide(QString guide) {
    for (QChar& character : guide) {
        if (character.isDigit()) {
            // Of the same script: Unicode has the ten digits of each in a row.
            character = QChar(character.unicode() - character.digitValue() + 8);
        }
    }
    return guide;
}

} // namespace tidewell

#include "StatusNotifierStatusItem.moc"
