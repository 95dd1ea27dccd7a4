#include "app/QuitConfirmation.h"

#include "model/preferences/StoredPreferences.h"
#include "ui/Pictures.h"

#include <QGridLayout>
#include <QPushButton>
#include <QScreen>

#include <utility>

namespace tidewell {

namespace {

constexpr int leastWidth = 320;

} // namespace

QuitConfirmation::QuitConfirmation(const UserDefaults& defaults, QString applicationName,
                                   QWidget& window, std::function<void()> quit)
    : defaults_(defaults)
    , applicationName_(std::move(applicationName))
    , window_(window)
    , quit_(std::move(quit)) {}

void QuitConfirmation::confirmQuit() {
    if (!readForView(defaults_, preferences::confimQuitOnExit)) {
        quit_();
        return;
    }
    if (!question_) {
        question_ =
            new QMessageBox(QMessageBox::Warning, applicationName_,
                            tr("Are you sure you want to quit?"), QMessageBox::NoButton, &window_);
        question_->setWindowIcon(applicationIcon());
        question_->setAttribute(Qt::WA_DeleteOnClose);
        question_->setAttribute(Qt::WA_WindowPropagation); // the panel's colours, as they change
        question_->setWindowModality(Qt::ApplicationModal);
        question_->setWindowFlag(Qt::WindowStaysOnTopHint); // as the panel does
        question_->setInformativeText(tr("%1 will terminate immediately.").arg(applicationName_));
        QPushButton* quit = question_->addButton(tr("Quit"), QMessageBox::AcceptRole);
        question_->setDefaultButton(quit);
        question_->setEscapeButton(question_->addButton(tr("Cancel"), QMessageBox::RejectRole));
        QObject::connect(quit, &QPushButton::clicked, question_.data(), quit_);
        // Else it is so narrow that the second text is broken before its last word.
        if (auto* grid = qobject_cast<QGridLayout*>(question_->layout())) {
            grid->addItem(new QSpacerItem(leastWidth, 0), grid->rowCount(), 0, 1,
                          grid->columnCount());
        }
    }
    if (!window_.isVisible() && !question_->isVisible()) {
        // Else it would come up over where the panel once was.
        question_->adjustSize();
        QRect place = question_->rect();
        place.moveCenter(question_->screen()->availableGeometry().center());
        question_->move(place.topLeft());
    }
    question_->show();
    question_->raise();
    question_->activateWindow();
}

} // namespace tidewell
