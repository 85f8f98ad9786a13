#pragma once

#include <QFrame>

namespace quorvane {

/// A soft ground under words that explain the settings.
class SettingsWell : public QFrame {
public:
    using QFrame::QFrame;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvane
