#pragma once

#include <QCoreApplication>
#include <QProgressBar>
#include <QVariantAnimation>

#include <atomic>
#include <memory>

class QLabel;

namespace tidewell {

/// A slim bar that fills in the direction of the layout. As long as nothing is known of the
/// progress a part of it moves along, or stands still.
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

/// What is going on: a bar, and below it the bytes that are there and those that there will be.
/// Main thread.
class ProgressView final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(ProgressView)

public:
    explicit ProgressView(ProgressBar::Waiting waiting);

    /// Shows how many bytes of `length` there are, now and from time to time.
    void follow(std::shared_ptr<const std::atomic<qint64>> received, qint64 length);

private:
    void setProgress(qint64 received, qint64 length);

    ProgressBar* bar_;
    QLabel* figures_;
};

} // namespace tidewell
