#pragma once

#include "praise/ColorScheme.h"

#include <QPushButton>

namespace quorvane {

/// A colour scheme: six of its colours and its name. One of an exclusive group.
class SchemeChip : public QPushButton {
public:
    SchemeChip(const QString& name, ColorScheme scheme, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return {134, 32}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ColorScheme scheme_;
};

}  // namespace quorvane
