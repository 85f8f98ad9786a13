#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace quorvane {

struct Theme;

/// An icon that only decorates: assistive technology passes over it unless it has an accessible name.
class IconMark : public QWidget {
public:
    IconMark(const QString& iconName, int size, QColor Theme::*ink, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString iconName_;
    int size_;
    QColor Theme::*ink_;
};

}  // namespace quorvane
