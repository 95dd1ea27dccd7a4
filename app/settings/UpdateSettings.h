#pragma once

#include "model/updates/SparkleModel.h"
#include "ui/LaterRefresh.h"

#include <QWidget>

#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace tidewell {

/// The choices about updates, handed to the updater at the moment they are made. When it first
/// appears, it takes the updater's own choices over, so that its controls show them; then it acts
/// on the two toggles as if the user had just set them. Main thread.
class UpdateSettings final : public QWidget {
    Q_OBJECT

public:
    explicit UpdateSettings(std::shared_ptr<SparkleModel> model);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makePicker();
    QWidget* makeCheckRow();

    void loadChoices();
    void applyAutomaticChecks(bool check);
    void applyAutomaticDownloads(bool download);
    void applyCheckInterval(double seconds);
    void refresh();

    std::shared_ptr<SparkleModel> model_;
    bool hasAppeared_ = false;
    LaterRefresh later_{*this, [this] { refresh(); }};

    // Owned by their parents.
    QCheckBox* checksAutomatically_;
    QCheckBox* downloadsAutomatically_;
    QLabel* intervalLabel_ = nullptr;
    QComboBox* interval_ = nullptr;
    QPushButton* checkNow_ = nullptr;
    QWidget* checkRow_ = nullptr;
    Subscription modelChanges_;
};

} // namespace tidewell
