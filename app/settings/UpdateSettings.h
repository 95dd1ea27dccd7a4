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

/// The choices about updates, handed to the updater at the moment they are made. It begins with the
/// updater's own choices, and acts on them as if the user had just made them. Main thread.
class UpdateSettings final : public QWidget {
    Q_OBJECT

public:
    explicit UpdateSettings(std::shared_ptr<SparkleModel> model);

private:
    QWidget* makePicker();
    QWidget* makeCheckRow();

    void loadChoices();
    void applyAutomaticChecks(bool check);
    void applyAutomaticDownloads(bool download);
    void applyCheckInterval();
    void refresh();

    std::shared_ptr<SparkleModel> model_;
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
