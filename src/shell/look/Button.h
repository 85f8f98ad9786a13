#pragma once

#include <QPushButton>
#include <QString>

namespace quorvane {

enum class ButtonKind { secondary, primary, destructive, destructiveFill, ghost, link };
enum class ButtonSize { small = 28, regular = 32, large = 36 };  ///< heights

/// A push button of the house: text, an icon before it, or an icon alone. Enter presses it as Space does.
class Button : public QPushButton {
public:
    explicit Button(const QString& text, ButtonKind kind = ButtonKind::secondary, QWidget* parent = nullptr);
    /// With an icon alone: square, with `name` as its accessible name and tooltip.
    [[nodiscard]] static Button* withIcon(const QString& iconName, const QString& name,
                                          ButtonKind kind = ButtonKind::ghost, ButtonSize size = ButtonSize::regular,
                                          QWidget* parent = nullptr);

    void setIconName(const QString& name);  ///< of `Icons.h`
    void setButtonSize(ButtonSize size);
    void setKind(ButtonKind kind);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] bool isIconOnly() const;

    ButtonKind kind_;
    ButtonSize size_ = ButtonSize::regular;
    QString iconName_;
};

}  // namespace quorvane
