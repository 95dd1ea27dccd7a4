#pragma once

#include <QCoreApplication>
#include <QProgressBar>
#include <QVariantAnimation>

#include <atomic>
#include <memory>

class QLabel;

namespace tidewell {

/// A slim progress bar that fills in the layout's direction. While the progress is indeterminate, a
/// part of it moves along, or stands still where animations are switched off.
class ProgressBar final : public QProgressBar {
public:
    enum class Waiting { moves, standsStill };
    explicit ProgressBar(Waiting waiting);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    Waiting waiting_;
    QVariantAnimation movement_;
};

/// A progress bar, and below it the bytes downloaded so far and in all. Main thread.
class ProgressView final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(ProgressView)

public:
    explicit ProgressView(ProgressBar::Waiting waiting);

    /// Shows from now on how many bytes of `length` are there, by reading `received` at intervals.
    void follow(std::shared_ptr<const std::atomic<qint64>> received, qint64 length);

private:
    void setProgress(qint64 received, qint64 length);

    ProgressBar* bar_;
    QLabel* figures_;
};

} // namespace tidewell
