#pragma once

#include "base/Color.h"

#include <QString>
#include <QWidget>

namespace quorvane {

/// A tile of 32 for an application, in its colour.
class AppTile : public QWidget {
public:
    explicit AppTile(QWidget* parent = nullptr);
    void setApp(Color color, const QString& appName);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Color color_;
    QString appName_;
};

}  // namespace quorvane
