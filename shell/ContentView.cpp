#include "shell/ContentView.h"

#include "support/ByteText.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace tidewell {

namespace {

QString valueText(std::uint64_t value) {
    constexpr auto most = std::uint64_t{std::numeric_limits<std::int64_t>::max()};
    return QString::fromStdString(byteText(static_cast<std::int64_t>(std::min(value, most))));
}

} // namespace

ContentView::ContentView(std::shared_ptr<MemoryWatcher> memoryWatcher,
                         const std::string& applicationName, std::function<void()> quit)
    : memoryWatcher_(std::move(memoryWatcher))
    , figures_(new QGridLayout) {
    auto* title = new QLabel(QString::fromStdString(applicationName));
    QFont titleFont = title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.8);
    title->setFont(titleFont);
    title->setAlignment(Qt::AlignCenter);

    auto* quitButton = new QPushButton(tr("Quit"));
    connect(quitButton, &QPushButton::clicked, this, std::move(quit));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(16);
    layout->addWidget(title);
    figures_->setVerticalSpacing(8);
    layout->addLayout(figures_);
    layout->addStretch();
    layout->addWidget(quitButton);

    watching_ = memoryWatcher_->objectWillChange([this] { scheduleRefresh(); });
}

void ContentView::showEvent(QShowEvent* event) {
    refresh();
    QWidget::showEvent(event);
}

void ContentView::scheduleRefresh() {
    if (refreshScheduled_ || !isVisible()) {
        return;
    }
    refreshScheduled_ = true;
    // Later: the observed fields still have their old values.
    QMetaObject::invokeMethod(
        this,
        [this] {
            refreshScheduled_ = false;
            if (isVisible()) {
                refresh();
            }
        },
        Qt::QueuedConnection);
}

void ContentView::refresh() {
    const auto& items = memoryWatcher_->showItems();
    while (rows_.size() < items.size()) {
        const int row = static_cast<int>(rows_.size());
        auto* name = new QLabel;
        auto* value = new QLabel;
        figures_->addWidget(name, row, 0);
        figures_->addWidget(value, row, 1, Qt::AlignRight);
        rows_.emplace_back(name, value);
    }
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const auto& [name, value] = rows_[row];
        const bool used = row < items.size();
        name->setVisible(used);
        value->setVisible(used);
        if (used) {
            name->setText(QString::fromStdString(items[row].label));
            value->setText(valueText(items[row].value));
        }
    }
}

} // namespace tidewell
