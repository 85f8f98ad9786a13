#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"

#include <QWidget>
#include <cstddef>

class QPushButton;

namespace quorvane {

class IconView;
class Label;

/// How many records wait for a look, and the way to them.
class ReviewBar : public QWidget {
public:
    explicit ReviewBar(const Localization& localization, QWidget* parent = nullptr);
    void setCount(std::size_t count);

    Signal<> opened;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Localization& localization_;
    IconView* icon_;
    Label* caption_;
    std::size_t count_ = 0;
};

}  // namespace quorvane
