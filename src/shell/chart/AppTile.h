#pragma once

#include "base/Color.h"

#include <QIcon>
#include <QString>
#include <QWidget>

namespace quorvane {

/// A tile of 32 for an application: the desktop's icon of it, or one in its colour.
class AppTile : public QWidget {
public:
    explicit AppTile(QWidget* parent = nullptr);
    void setApp(const QIcon& icon, Color color, const QString& appName);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QIcon icon_;
    Color color_;
    QString appName_;
};

}  // namespace quorvane
