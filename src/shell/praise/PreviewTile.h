#pragma once

#include "praise/ShareImage.h"

#include <QPushButton>
#include <memory>

namespace quorvane {

/// A small picture of a card with its name below; one of an exclusive group. Until there is a picture it is a quiet
/// rectangle.
class PreviewTile : public QPushButton {
public:
    /// `size` is the picture's, in logical pixels.
    PreviewTile(const QString& name, const QSize& size, QWidget* parent = nullptr);

    void setImage(std::shared_ptr<const ShareImage> image);
    [[nodiscard]] bool hasImage() const { return image_ != nullptr; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRect picture() const;

    QSize size_;
    std::shared_ptr<const ShareImage> image_;
};

}  // namespace quorvane
