#include "shell/chart/PathText.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

namespace quorvane {

PathText::PathText(TypeRole role, QColor Theme::*color, const QString& copyText, QWidget* parent)
    : Label({}, role, color, parent), copyText_(copyText) {
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void PathText::setPath(const QString& path) {
    path_ = path;
    setAccessibleName(path);
    elide();
}

QSize PathText::minimumSizeHint() const {
    return {0, Label::minimumSizeHint().height()};
}

void PathText::elide() {
    const QString fitting = fontMetrics().elidedText(path_, Qt::ElideMiddle, width());
    setText(isolated(fitting));
    setToolTip(fitting == path_ ? QString() : path_);
}

void PathText::copy() const {
    const QString selection = selectedText();
    const bool isWhole = selection.isEmpty() || selection == text();
    QApplication::clipboard()->setText(isWhole ? path_ : selection);
}

void PathText::resizeEvent(QResizeEvent* event) {
    Label::resizeEvent(event);
    elide();
}

void PathText::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Copy)) return Label::keyPressEvent(event);
    copy();
    event->accept();
}

void PathText::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addAction(copyText_, this, [this] { copy(); });
    menu.exec(event->globalPos());
}

}  // namespace quorvane
