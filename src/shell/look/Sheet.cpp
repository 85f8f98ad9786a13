#include "shell/look/Sheet.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Controls.h"
#include "shell/look/Painting.h"
#include "shell/look/SheetMotion.h"
#include "shell/look/SheetPanel.h"
#include "shell/look/Theme.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QTextEdit>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

constexpr int windowMargin = 24;
constexpr int rise = 8;

bool isText(const QWidget* widget) {
    return dynamic_cast<const QLineEdit*>(widget) != nullptr || dynamic_cast<const QTextEdit*>(widget) != nullptr ||
           dynamic_cast<const QPlainTextEdit*>(widget) != nullptr;
}

bool takesTab(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget.focusProxy() == nullptr &&
           widget.isEnabled() && widget.isVisible();
}

/// Is the shortcut one of the window's, and not of the whole program?
bool isWindowShortcut(const QObject& watched) {
    const auto* shortcut = dynamic_cast<const QShortcut*>(&watched);
    return shortcut == nullptr || shortcut->context() != Qt::ApplicationShortcut;
}

}  // namespace

struct Sheet::Parts {
    QWidget& window;
    SheetPanel* panel;
    int wantedWidth;
    int wantedHeight;
    QPointer<QWidget> opener;
    QPointer<QWidget> lastFocus;
    QPointer<QPushButton> primary;
    SheetMotion motion;
    bool isOpen = false;
};

Sheet::Sheet(QWidget& window, const QString& title, int width, int height)
    : QWidget(&window), parts_(std::make_unique<Parts>(Parts{
                            .window = window,
                            .panel = new SheetPanel(title, this),
                            .wantedWidth = width,
                            .wantedHeight = height,
                        })) {
    setAccessibleRole(*this, QAccessible::Dialog, title);
    parts_->opener = window.focusWidget();
    hide();
    setFocusPolicy(Qt::NoFocus);
    connect(&parts_->panel->closeButton(), &QAbstractButton::clicked, this, [this] { close(); });
    window.installEventFilter(this);
    parts_->panel->bodyWidget().installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { keepFocus(now); });
}

Sheet::~Sheet() {
    qApp->removeEventFilter(this);
}

void Sheet::setSubtitle(const QString& subtitle) {
    parts_->panel->setSubtitle(subtitle);
}

void Sheet::hideCloseButton() {
    parts_->panel->closeButton().hide();
}

void Sheet::hideHead() {
    parts_->panel->hideHead();
}

void Sheet::setTabs(QWidget* tabs) {
    parts_->panel->setTabs(tabs);
}

void Sheet::scrollToTop() {
    parts_->panel->scrollToTop();
}

QVBoxLayout& Sheet::body() {
    return parts_->panel->body();
}

void Sheet::addToHead(QWidget* widget) {
    parts_->panel->addToHead(widget);
}

void Sheet::addToFootStart(QWidget* widget) {
    parts_->panel->addToFootStart(widget);
}

void Sheet::addAction(QPushButton* button) {
    parts_->panel->addAction(button);
    parts_->primary = button;
}

void Sheet::setPrimary(QPushButton* button) {
    parts_->primary = button;
}

void Sheet::stackActions() {
    parts_->panel->stackActions();
}

void Sheet::open() {
    if (parts_->isOpen) return;
    parts_->isOpen = true;
    QWidget* now = parts_->window.focusWidget();
    if (now != nullptr && !isAncestorOf(now)) parts_->opener = now;
    qApp->installEventFilter(this);
    QWidget* wanted = focusWidget();
    raise();
    show();
    relayout();
    if (wanted == nullptr || wanted == this || !isAncestorOf(wanted)) wanted = firstStop();
    // A hidden widget that was given the focus keeps it in name only.
    if (wanted == QApplication::focusWidget()) wanted->clearFocus();
    wanted->setFocus(Qt::OtherFocusReason);
    announceDialog(*this, true);
    // While it moves a picture stands for the panel, which waits outside of what is seen, focus and all.
    parts_->motion.start(
        *this, *parts_->panel, true, [this] { update(); }, [this] { relayout(); });
    if (parts_->motion.isMoving()) relayout();
}

void Sheet::close() {
    if (!parts_->isOpen) return;
    parts_->isOpen = false;
    qApp->removeEventFilter(this);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    if (parts_->opener != nullptr && parts_->opener->isVisible()) {
        parts_->opener->setFocus(Qt::OtherFocusReason);
    } else if (QWidget* inside = focusWidget()) {
        inside->clearFocus();
    }
    announceDialog(*this, false);
    parts_->motion.start(
        *this, *parts_->panel, false, [this] { update(); },
        [this] {
            hide();
            deleteLater();
        });
    if (parts_->motion.isMoving()) relayout();
    closed.send();
}

QRect Sheet::panel() const {
    const QSize most = parts_->window.size() - QSize(2 * windowMargin, 2 * windowMargin);
    const int width = std::min(parts_->wantedWidth, most.width());
    const int wanted = parts_->wantedHeight > 0 ? parts_->wantedHeight : parts_->panel->naturalHeight(width);
    const int height = std::min(wanted, most.height());
    return {(parts_->window.width() - width) / 2, (parts_->window.height() - height) / 2, width, height};
}

void Sheet::relayout() {
    setGeometry(parts_->window.rect());
    QRect place = panel();
    if (parts_->motion.isMoving()) place.moveTop(height() + 1);
    parts_->panel->setGeometry(place);
    update();
}

QWidget* Sheet::firstStop() {
    QWidget* closeButton = &parts_->panel->closeButton();
    for (QWidget* next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        if (isAncestorOf(next) && next != closeButton && takesTab(*next)) return next;
    }
    if (takesTab(*closeButton)) return closeButton;
    setFocusPolicy(Qt::StrongFocus);  // nothing to press: the sheet itself hears Esc
    return this;
}

bool Sheet::isTopmost() const {
    const QObjectList& children = parts_->window.children();
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        const auto* sheet = dynamic_cast<const Sheet*>(*child);
        if (sheet != nullptr && sheet->parts_->isOpen) return sheet == this;
    }
    return false;
}

void Sheet::keepFocus(QWidget* now) {
    if (now == nullptr || !parts_->isOpen || !isTopmost()) return;
    if (now == this || isAncestorOf(now)) {
        parts_->lastFocus = now;
    } else if (now->window() == &parts_->window) {
        QWidget* back = parts_->lastFocus != nullptr ? parts_->lastFocus.data() : firstStop();
        back->setFocus(Qt::OtherFocusReason);
    }
}

bool Sheet::focusNextPrevChild(bool next) {
    QWidget* from = QApplication::focusWidget();
    if (from == nullptr || !isAncestorOf(from)) from = this;
    const auto step = [next](QWidget* widget) {
        return next ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (QWidget* to = step(from); to != from; to = step(to)) {
        if (!isAncestorOf(to) || !takesTab(*to)) continue;
        to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        break;
    }
    return true;  // also where there is no other: it must not leave
}

void Sheet::keyPressEvent(QKeyEvent* event) {
    event->accept();  // nothing below hears of it
    if (event->key() == Qt::Key_Escape) return close();
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter || event->isAutoRepeat() || isText(QApplication::focusWidget())) return;
    if (parts_->primary != nullptr && parts_->primary->isEnabled()) parts_->primary->click();
}

void Sheet::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

bool Sheet::eventFilter(QObject* watched, QEvent* event) {
    const bool isResize = watched == &parts_->window && event->type() == QEvent::Resize;
    const bool isNewContent = watched == &parts_->panel->bodyWidget() && event->type() == QEvent::LayoutRequest;
    if (isResize || isNewContent) relayout();
    if (event->type() != QEvent::Shortcut || !parts_->isOpen || !isTopmost()) return false;
    // The window's shortcuts rest while the sheet is open.
    const QObject* owner = watched->isWidgetType() ? watched : watched->parent();
    const auto* widget = dynamic_cast<const QWidget*>(owner);
    const bool isOutside = widget != nullptr && widget->window() == &parts_->window && !isAncestorOf(widget);
    return isOutside && isWindowShortcut(*watched);
}

void Sheet::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const SheetMotion& motion = parts_->motion;
    painter.setOpacity(motion.progress);
    painter.fillRect(rect(), theme().scrim);
    QRectF place = panel();
    place.translate(0, (1 - motion.progress) * rise);
    paintShadow(painter, place, Metrics::sheetRadius, Elevation::sheet);
    if (motion.isMoving()) painter.drawPixmap(place.topLeft(), motion.picture);
}

}  // namespace quorvane
