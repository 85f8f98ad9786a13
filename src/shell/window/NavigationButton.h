#pragma once

#include <QAbstractButton>

namespace quorvane {

/// A section in the sidebar: icon and title, on a rail the icon alone with the title as tooltip. Checkable.
class NavigationButton : public QAbstractButton {
public:
    NavigationButton(const QString& iconName, const QString& title, QWidget* parent = nullptr);
    void setRail(bool isRail);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString iconName_;
    bool isRail_ = false;
};

}  // namespace quorvane
