#pragma once

#include <QWidget>

namespace quorvane {

/// The state of the cloud as an icon in a well: a cloud, or what turns while a sync runs. It stands still where nothing
/// may move. Decoration: words say the same beside it.
class SyncSymbol : public QWidget {
public:
    enum class State { idle, available, syncing };

    explicit SyncSymbol(QWidget* parent = nullptr);
    /// `iconName` is of `Icons.h`.
    void setState(State state, const QString& iconName);
    [[nodiscard]] bool isTurning() const { return timer_ != 0; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void turnOrStop();

    State state_ = State::idle;
    QString iconName_ = QStringLiteral("cloud");
    int timer_ = 0;
    double angle_ = 0;  ///< degrees
};

}  // namespace quorvane
