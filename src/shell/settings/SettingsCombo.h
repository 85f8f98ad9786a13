#pragma once

#include <QComboBox>

namespace quorvane {

/// A combo box of a fixed width that leaves the wheel to the page that scrolls.
class SettingsCombo : public QComboBox {
public:
    explicit SettingsCombo(int width, QWidget* parent = nullptr);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace quorvane
