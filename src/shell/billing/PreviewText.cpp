#include "shell/billing/PreviewText.h"

#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QEvent>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

namespace quorvane {
namespace {

constexpr int mailSize = 14;
constexpr int mailLine = 22;
constexpr int documentMargin = 14;

QFont mailFont() {
    QFont mail = font(TypeRole::body);
    mail.setPixelSize(static_cast<int>(mailSize * typeScale()));
    return mail;
}

}  // namespace

PreviewText::PreviewText(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(documentMargin);
}

void PreviewText::show(const QString& text, bool isFixedPitch) {
    isFixedPitch_ = isFixedPitch;
    applyLook();
    setPlainText(text);
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    QTextBlockFormat lines;
    const double height = isFixedPitch ? lineHeight(TypeRole::fixed) : mailLine * typeScale();
    lines.setLineHeight(height, QTextBlockFormat::FixedHeight);
    all.mergeBlockFormat(lines);
    moveCursor(QTextCursor::Start);
}

void PreviewText::changeEvent(QEvent* event) {
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) applyLook();
}

void PreviewText::applyLook() {
    if (isApplying_) return;
    isApplying_ = true;
    document()->setDefaultFont(isFixedPitch_ ? quorvane::font(TypeRole::fixed) : mailFont());
    const Theme& t = theme();
    const QColor ground = isFixedPitch_ ? t.sunken : t.surface;
    setStyleSheet(QStringLiteral("QTextEdit { background: %1; border: 1px solid %2; border-radius: 10px; }")
                      .arg(ground.name(), t.line.name()));
    isApplying_ = false;
}

}  // namespace quorvane
