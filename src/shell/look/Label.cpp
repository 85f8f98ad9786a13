#include "shell/look/Label.h"

#include "shell/look/Theme.h"

#include <QEvent>
#include <QPalette>
#include <QStyle>
#include <algorithm>

namespace quorvane {

Label::Label(const QString& text, TypeRole role, QColor Theme::*color, QWidget* parent)
    : QLabel(parent), text_(text), role_(role), color_(color) {
    setTextFormat(Qt::PlainText);
    setFont(quorvane::font(role));
    setAlignment(alignment_);
    applyColor();
    showText();
}

void Label::setColor(QColor Theme::*color) {
    color_ = color;
    applyColor();
}

void Label::setElided(bool isElided) {
    isElided_ = isElided;
    QSizePolicy policy = sizePolicy();
    policy.setHorizontalPolicy(isElided ? QSizePolicy::Expanding : QSizePolicy::Preferred);
    setSizePolicy(policy);
    showText();
}

void Label::setFitted(bool isFitted) {
    isFitted_ = isFitted;
    showText();
}

void Label::setWordWrap(bool isWrapped) {
    QLabel::setWordWrap(isWrapped);
    showText();
}

void Label::setAlignment(Qt::Alignment alignment) {
    alignment_ = alignment;
    QLabel::setAlignment(QStyle::visualAlignment(layoutDirection(), alignment));
}

void Label::setText(const QString& text) {
    if (text == text_) return;
    text_ = text;
    showText();
    updateGeometry();
}

void Label::applyColor() {
    isApplying_ = true;
    QPalette own = palette();
    own.setColor(QPalette::WindowText, theme().*color_);
    own.setColor(QPalette::Text, theme().*color_);
    setPalette(own);
    isApplying_ = false;
}

void Label::showText() {
    if (wordWrap()) {
        // The distance of lines can be told to rich text alone.
        setTextFormat(Qt::RichText);
        const QString escaped = text_.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>"));
        // Rich text follows its own letters; the lines shall follow the window, as those of plain text do.
        const bool isMirrored = layoutDirection() == Qt::RightToLeft && !alignment().testFlag(Qt::AlignHCenter);
        const QString side = isMirrored ? QStringLiteral(" align=\"right\"") : QString();
        const QString form = QStringLiteral("<div%1 style=\"line-height:%2px\">%3</div>");
        QLabel::setText(form.arg(side).arg(lineHeight(role_)).arg(escaped));
        setAccessibleName(text_);
        return;
    }
    setTextFormat(Qt::PlainText);
    if (isFitted_) fitFont();
    if (!isElided_) return QLabel::setText(text_);
    const QString shown = fontMetrics().elidedText(text_, Qt::ElideRight, contentsRect().width());
    const bool isCut = shown != text_;
    setToolTip(isCut ? text_ : QString());
    setAccessibleName(isCut ? text_ : QString());
    if (shown != QLabel::text()) QLabel::setText(shown);
}

void Label::fitFont() {
    QFont fitting = quorvane::font(role_);
    while (fitting.pixelSize() > 1 && QFontMetrics(fitting).horizontalAdvance(text_) > contentsRect().width())
        fitting.setPixelSize(fitting.pixelSize() - 1);
    if (fitting != QLabel::font()) setFont(fitting);
}

QSize Label::sizeHint() const {
    QSize hint = QLabel::sizeHint();
    if (isElided_ || isFitted_) {
        const QMargins margins = contentsMargins();
        const QFontMetrics metrics = isFitted_ ? QFontMetrics(quorvane::font(role_)) : fontMetrics();
        hint.setWidth(metrics.horizontalAdvance(text_) + margins.left() + margins.right() + 1);
    }
    return hint.expandedTo(QSize(0, lineHeight(role_)));
}

QSize Label::minimumSizeHint() const {
    QSize hint = QLabel::minimumSizeHint();
    if (isElided_ || isFitted_) hint.setWidth(std::min(24, sizeHint().width()));
    return hint.expandedTo(QSize(0, lineHeight(role_)));
}

void Label::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        setAlignment(alignment_);
        if (wordWrap()) showText();
    }
    const bool isThemeChange = event->type() == QEvent::PaletteChange;
    if (isThemeChange && !isApplying_ && palette().color(QPalette::WindowText) != theme().*color_) applyColor();
}

void Label::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    if (isElided_ || isFitted_) showText();
}

}  // namespace quorvane
