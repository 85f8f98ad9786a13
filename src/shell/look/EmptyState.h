#pragma once

#include <QString>
#include <QWidget>

class QVBoxLayout;
class QPushButton;

namespace quorvane {

class Label;

/// What stands where nothing is: an icon in a well, a title, a text, perhaps a button.
class EmptyState : public QWidget {
public:
    EmptyState(const QString& iconName, const QString& title, const QString& text, QWidget* parent = nullptr);
    void setTexts(const QString& title, const QString& text);
    /// At most one.
    void addButton(QPushButton* button);

private:
    QVBoxLayout* layout_;
    Label* title_;
    Label* text_;
};

/// A quarter of an arc that turns; it shows after 300 ms only, and stands still where nothing may move.
class Spinner : public QWidget {
public:
    explicit Spinner(int size, QWidget* parent = nullptr);  ///< 24 or 36
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    int size_;
    int timer_ = 0;
    double angle_ = 0;
    bool isDue_ = false;
};

/// "Loading…" with a spinner.
class LoadingState : public QWidget {
public:
    explicit LoadingState(const QString& text, QWidget* parent = nullptr);
};

}  // namespace quorvane
