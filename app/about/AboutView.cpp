#include "app/about/AboutView.h"

#include "base/ports/Bundle.h"
#include "ui/Labels.h"
#include "ui/Palette.h"
#include "ui/Pictures.h"
#include "ui/PushButton.h"
#include "ui/SymbolView.h"

#include <QLabel>
#include <QMouseEvent>
#include <QUrl>
#include <QVBoxLayout>

namespace tidewell {

namespace {

constexpr int iconHeight = 130;
constexpr int symbolWidth = 40;
constexpr int symbolHeight = 30; // of the waves in their square

QUrl website() {
    static const QUrl url(QStringLiteral(TIDEWELL_WEB_SITE));
    return url;
}

QString fromBundle(std::string (*lookup)(const Bundle&), const Bundle& bundle) {
    return QString::fromStdString(lookup(bundle));
}

} // namespace

AboutView::AboutView(Environment environment)
    : environment_(std::move(environment)) {
    auto* icon = new PictureView(drawApplicationIcon);
    icon->setFixedSize(iconHeight, iconHeight);
    icon->setAccessibleName(fromBundle(applicationName, environment_.bundle));

    auto* columns = new QHBoxLayout;
    columns->setContentsMargins(20, 8, 8, 0);
    columns->setSpacing(8);
    columns->addWidget(icon);
    columns->addWidget(makeTexts(), 1);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 8);
    column->setSpacing(0);
    column->addLayout(columns, 1);
    column->addWidget(
        makeSecondaryLabel(fromBundle(copyright, environment_.bundle), TextStyle::footnote));
}

QWidget* AboutView::makeTexts() {
    const Bundle& bundle = environment_.bundle;
    auto* texts = new QWidget;
    auto* column = new QVBoxLayout(texts);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addStretch();
    column->addWidget(makeLabel(fromBundle(applicationName, bundle), TextStyle::largeTitle));
    column->addWidget(makeSecondaryLabel(
        tr("Version %1 (%2)").arg(fromBundle(version, bundle), fromBundle(buildNumber, bundle)),
        TextStyle::body));

    auto* symbol = new SymbolView("water.waves", colours::systemBlue, symbolWidth);
    symbol->setFixedHeight(symbolHeight);
    column->addWidget(symbol, 0, Qt::AlignHCenter);
    column->addWidget(makeSecondaryLabel(tr("Built for the Linux desktop"), TextStyle::body));

    auto* visit = new PushButton(tr("Visit website"));
    visit->setFont(textFont(TextStyle::body));
    connect(visit, &QPushButton::clicked, this, &AboutView::visitWebsite);
    column->addWidget(visit, 0, Qt::AlignHCenter);
    column->addStretch();
    return texts;
}

void AboutView::visitWebsite() const {
    if (const QUrl url = website(); url.isValid()) {
        environment_.openUrl(url);
    }
    environment_.dismissWindow();
}

void AboutView::mousePressEvent(QMouseEvent* event) {
    event->accept(); // or the release would go elsewhere
}

void AboutView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        environment_.dismissWindow();
    }
}

} // namespace tidewell
