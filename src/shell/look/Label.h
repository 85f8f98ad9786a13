#pragma once

#include "shell/look/Typography.h"

#include <QColor>
#include <QLabel>

namespace quorvane {

struct Theme;

/// A plain text in a role and a colour of the theme, which it follows when that changes. Wrapped lines stand as far
/// apart as the role says.
class Label : public QLabel {
public:
    /// `color` is a member of `Theme`: `&Theme::text2`.
    Label(const QString& text, TypeRole role, QColor Theme::*color, QWidget* parent = nullptr);
    void setColor(QColor Theme::*color);
    /// Cut with "…" at the end where the width is too small, instead of asking for more; the whole text is its tooltip
    /// then. Not together with `setWordWrap`.
    void setElided(bool isElided);
    /// In smaller letters where the width is too small: numbers are never cut.
    void setFitted(bool isFitted);
    void setWordWrap(bool isWrapped);
    /// Left is where the window begins, whatever letters the text has.
    void setAlignment(Qt::Alignment alignment);
    void setText(const QString& text);
    /// The whole text.
    [[nodiscard]] const QString& text() const { return text_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyColor();
    void showText();
    void fitFont();

    QString text_;
    TypeRole role_;
    Qt::Alignment alignment_ = Qt::AlignLeft | Qt::AlignVCenter;
    QColor Theme::*color_;
    bool isElided_ = false;
    bool isFitted_ = false;
    bool isApplying_ = false;
};

}  // namespace quorvane
