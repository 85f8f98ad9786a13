#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace quorvane {

struct Theme;

/// An icon that stands for itself, in a colour of the theme, which it follows; perhaps in a well. Decoration: assistive
/// technology hears of it only when it has an accessible name.
class IconView : public QWidget {
public:
    IconView(const QString& name, int size, QColor Theme::*ink, QWidget* parent = nullptr);
    void setIcon(const QString& name, QColor Theme::*ink);
    /// A coloured square of `side` with this radius behind it; half of the side for a round one.
    void setWell(int side, double radius, QColor Theme::*ground);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString name_;
    int size_;
    QColor Theme::*ink_;
    int wellSide_ = 0;
    double wellRadius_ = 0;
    QColor Theme::*wellGround_ = nullptr;
};

}  // namespace quorvane
