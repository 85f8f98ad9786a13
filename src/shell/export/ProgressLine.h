#pragma once

#include <QProgressBar>

namespace quorvane {

/// How far something has come, as a bar of 6 without words.
class ProgressLine : public QProgressBar {
public:
    explicit ProgressLine(const QString& name, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvane
