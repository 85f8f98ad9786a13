#pragma once

#include "shell/look/Theme.h"

#include <QFrame>

namespace quorvane {

/// A soft ground under words that explain the settings.
class SettingsWell : public QFrame {
public:
    using QFrame::QFrame;
    /// A member of `Theme`: `&Theme::warnSoft`.
    void setGround(QColor Theme::*ground);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor Theme::*ground_ = &Theme::accSoft;
};

}  // namespace quorvane
