#pragma once

#include "base/Color.h"

#include <QWidget>

namespace quorvane {

class Label;

/// Why the sentence is said, behind a stripe in the colour of the application that is used most.
class PraiseReason : public QWidget {
public:
    explicit PraiseReason(QWidget* parent = nullptr);

    void show(const QString& text, const QColor& stripe);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Label* label_;
    QColor stripe_;
};

}  // namespace quorvane
