#pragma once

#include "shell/look/Typography.h"

#include <QColor>
#include <QLabel>

namespace quorvane {

struct Theme;

/// A text in a role and a colour of the theme, which it follows when that changes.
class Label : public QLabel {
public:
    /// `color` is a member of `Theme`: `&Theme::text2`.
    Label(const QString& text, TypeRole role, QColor Theme::*color, QWidget* parent = nullptr);
    void setColor(QColor Theme::*color);
    /// Cut with "…" at the end where the width is too small, instead of asking for more; the whole text is its tooltip
    /// then.
    void setElided(bool isElided);
    void setText(const QString& text);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:

    QString text_;
    TypeRole role_;
    QColor Theme::*color_;
    bool isElided_ = false;
    bool isApplying_ = false;
};

}  // namespace quorvane
