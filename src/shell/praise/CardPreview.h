#pragma once

#include "shell/state/ShareImageWindow.h"

#include <QString>
#include <QWidget>

namespace quorvane {

/// The card, as large as there is room, on the window's ground; a text where there is none yet.
class CardPreview : public QWidget {
public:
    explicit CardPreview(QWidget* parent = nullptr);

    void show(ShareImageWindow::Image image, const QString& placeholder);

    [[nodiscard]] QSize sizeHint() const override { return {456, 600}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {220, 300}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ShareImageWindow::Image image_;
    QString placeholder_;
};

}  // namespace quorvane
