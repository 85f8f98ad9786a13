#pragma once

#include <QWidget>

namespace quorvane {

/// A widget that places its parts by its width, from which its height follows.
class ArrangedWidget : public QWidget {
public:
    explicit ArrangedWidget(QWidget* parent = nullptr);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return arrange(width, true); }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    /// Returns the height; places nothing when it is only a trial.
    virtual int arrange(int width, bool isTrial) const = 0;
    /// Gives a part its place, mirrored where the layout is.
    void put(QWidget& part, int width, const QRect& place) const;
    /// Parts came, went or have another size.
    void rearrange();

    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;
};

}  // namespace quorvane
