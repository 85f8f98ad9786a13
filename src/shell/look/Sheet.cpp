#include "shell/look/Sheet.h"

#include "l10n/Localization.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Motion.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QApplication>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPropertyAnimation>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTextEdit>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int windowMargin = 24;
constexpr int margin = 25;  // 24 and the edge
constexpr int narrowestAction = 80;

bool isText(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) != nullptr || qobject_cast<const QTextEdit*>(widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
}

bool takesTab(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget.focusProxy() == nullptr &&
           widget.isEnabled() && widget.isVisible();
}

/// Is the shortcut one of the window's, and not of the whole program?
bool isWindowShortcut(const QObject& watched) {
    const auto* shortcut = qobject_cast<const QShortcut*>(&watched);
    return shortcut == nullptr || shortcut->context() != Qt::ApplicationShortcut;
}

int heightOf(const QWidget& part, int width) {
    if (part.isHidden()) return 0;
    const QLayout* layout = part.layout();
    if (layout == nullptr) return part.minimumHeight();
    return layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : layout->totalSizeHint().height();
}

}  // namespace

Sheet::Sheet(QWidget& window, const QString& title, int width, int height)
    : QDialog(&window), window_(window), wanted_(width, height), panel_(new QWidget(this)), head_(new QWidget),
      scroll_(new QScrollArea), footRule_(new Separator), foot_(new QWidget), opener_(window.focusWidget()) {
    setWindowFlags(Qt::Widget);
    setAccessibleRole(*this, QAccessible::Dialog, title);
    setFocusPolicy(Qt::NoFocus);
    hide();
    buildHead(title);
    buildBody();
    buildFoot();
    auto* column = new QVBoxLayout(panel_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(head_);
    column->addWidget(scroll_, 1);
    column->addWidget(footRule_);
    column->addWidget(foot_);
    window.installEventFilter(this);
    scroll_->widget()->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { keepFocus(now); });
}

Sheet::~Sheet() {
    qApp->removeEventFilter(this);
}

// --- What stands in it

void Sheet::buildHead(const QString& title) {
    auto* name = new Label(title, TypeRole::title, &Theme::text);
    subtitle_ = new Label(QString(), TypeRole::body, &Theme::text2);
    name->setElided(true);
    subtitle_->setElided(true);
    subtitle_->hide();
    close_ = iconButton(QStringLiteral("close"), qt(Localization::fromEnvironment().text("close")));
    connect(close_, &QAbstractButton::clicked, this, &QDialog::reject);
    auto* words = new QVBoxLayout;
    words->setSpacing(1);
    words->addWidget(name);
    words->addWidget(subtitle_);
    headLine_ = new QHBoxLayout(head_);
    headLine_->setContentsMargins(margin, 17, 17, 16);
    headLine_->setSpacing(12);
    headLine_->addLayout(words, 1);
    headLine_->addWidget(close_);
}

void Sheet::buildBody() {
    auto* content = new QWidget;
    body_ = new QVBoxLayout(content);
    body_->setContentsMargins(margin, 4, margin, 20);
    body_->setSpacing(12);
    scroll_->setWidget(content);
    scroll_->setWidgetResizable(true);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setFocusPolicy(Qt::NoFocus);
}

void Sheet::buildFoot() {
    footStart_ = new QHBoxLayout;
    footStart_->setSpacing(8);
    actions_ = new QHBoxLayout;
    actions_->setSpacing(8);
    auto* line = new QHBoxLayout(foot_);
    line->setContentsMargins(margin, 12, margin, 12);
    line->setSpacing(8);
    line->addLayout(footStart_, 1);
    line->addLayout(actions_);
    line->setAlignment(actions_, Qt::AlignRight);  // also where nothing stands at the start
    foot_->hide();
    footRule_->hide();
}

void Sheet::showFoot() {
    foot_->show();
    footRule_->setVisible(footStart_ != nullptr);
}

void Sheet::setSubtitle(const QString& subtitle) {
    subtitle_->setText(subtitle);
    subtitle_->setVisible(!subtitle.isEmpty());
}

void Sheet::hideCloseButton() {
    close_->hide();
}

void Sheet::hideHead() {
    head_->hide();
    body_->setContentsMargins(margin, margin, margin, 20);
}

void Sheet::addToHead(QWidget* widget) {
    headLine_->insertWidget(headLine_->count() - 1, widget);
}

void Sheet::setTabs(QWidget* tabs) {
    constexpr int gap = 9;  // between title and tabs
    tabs_ = tabs;
    headLine_->setContentsMargins(margin, 17, 17, gap);
    auto* line = new QHBoxLayout;
    line->setContentsMargins(margin, 0, margin, 0);
    line->addWidget(tabs);
    auto* column = static_cast<QVBoxLayout*>(panel_->layout());
    column->insertLayout(1, line);
    column->insertWidget(2, new Separator);
    body_->setContentsMargins(margin, 17, margin, 20);
}

void Sheet::setContent(QWidget& panel) {
    head_->hide();
    body_->setContentsMargins(0, 0, 0, 0);
    body_->addWidget(&panel);
    panel.show();
}

void Sheet::scrollToTop() {
    scroll_->verticalScrollBar()->setValue(0);
}

void Sheet::addToFootStart(QWidget* widget) {
    footStart_->addWidget(widget);
    showFoot();
}

void Sheet::addAction(QPushButton* button) {
    if (footStart_ == nullptr)
        setKind(*button, "large", true);
    else
        button->setMinimumWidth(std::max(narrowestAction, button->sizeHint().width()));
    actions_->addWidget(button);
    setDefault(button);
    showFoot();
}

void Sheet::setDefault(QPushButton* button) {
    // A dialog looks after its default only while it is a window.
    for (auto* each : findChildren<QPushButton*>())
        each->setDefault(each == button);
}

void Sheet::stackActions() {
    delete foot_->layout();
    footStart_ = nullptr;
    actions_ = new QVBoxLayout(foot_);
    actions_->setContentsMargins(margin, 0, margin, margin);
    actions_->setSpacing(8);
}

// --- Its way in and out

void Sheet::open() {
    if (isOpen_) return;
    isOpen_ = true;
    QWidget* now = window_.focusWidget();
    if (now != nullptr && !isAncestorOf(now)) opener_ = now;
    qApp->installEventFilter(this);
    QWidget* wanted = focusWidget();
    setAttribute(Qt::WA_Moved);  // it has its place
    raise();
    show();
    relayout();
    if (wanted == nullptr || wanted == this || !isAncestorOf(wanted)) wanted = firstStop();
    // A hidden widget that was given the focus keeps it in name only.
    if (wanted == QApplication::focusWidget()) wanted->clearFocus();
    wanted->setFocus(Qt::OtherFocusReason);
    fadeIn();
}

void Sheet::fadeIn() {
    const int duration = Motion::milliseconds(Motion::sheetIn);
    if (duration == 0) return;
    auto* effect = new QGraphicsOpacityEffect(this);
    setGraphicsEffect(effect);
    auto* animation = new QPropertyAnimation(effect, "opacity", effect);
    animation->setDuration(duration);
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
    connect(animation, &QPropertyAnimation::finished, this, [this] { setGraphicsEffect(nullptr); });
    animation->start();
}

void Sheet::done(int result) {
    if (!isOpen_) return;
    isOpen_ = false;
    qApp->removeEventFilter(this);
    if (opener_ != nullptr && opener_->isVisible()) {
        opener_->setFocus(Qt::OtherFocusReason);
    } else if (QWidget* inside = focusWidget()) {
        inside->clearFocus();
    }
    QDialog::done(result);
    deleteLater();
}

// --- Its place

QRect Sheet::panel() const {
    const QSize most = window_.size() - QSize(2 * windowMargin, 2 * windowMargin);
    const int width = std::min(wanted_.width(), most.width());
    const int height = std::min(wanted_.height() > 0 ? wanted_.height() : naturalHeight(width), most.height());
    return {(window_.width() - width) / 2, (window_.height() - height) / 2, width, height};
}

/// The height that shows everything at this width.
int Sheet::naturalHeight(int width) const {
    int height = tabs_ == nullptr ? 0 : tabs_->sizeHint().height() + 1;
    for (const QWidget* part : std::initializer_list<const QWidget*>{head_, scroll_->widget(), footRule_, foot_})
        height += heightOf(*part, width);
    return height;
}

void Sheet::relayout() {
    setGeometry(window_.rect());
    panel_->setGeometry(panel());
    update();
}

void Sheet::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Theme& t = theme();
    painter.fillRect(rect(), t.scrim);
    const QRect place = panel_->geometry();
    paintShadow(painter, place, Metrics::sheetRadius, Elevation::sheet);
    // In the dark, where a shadow hardly shows, an edge says where the panel ends.
    const bool hasEdge = t.isDark || t.isHighContrast;
    paintPanel(painter, place, Metrics::sheetRadius, t.surface, hasEdge ? t.line : QColor());
    if (tabs_ == nullptr) return;
    const int edge = hasEdge ? 1 : 0;
    painter.fillRect(scroll_->geometry().translated(place.topLeft()).adjusted(edge, 0, -edge, 0), t.canvas);
}

// --- The focus, and what is heard while it is open

QWidget* Sheet::firstStop() {
    for (QWidget* next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        if (isAncestorOf(next) && next != close_ && takesTab(*next)) return next;
    }
    if (takesTab(*close_)) return close_;
    setFocusPolicy(Qt::StrongFocus);  // nothing to press: the sheet itself hears Esc
    return this;
}

bool Sheet::isTopmost() const {
    const QObjectList& children = window_.children();
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        const auto* sheet = dynamic_cast<const Sheet*>(*child);
        if (sheet != nullptr && sheet->isOpen_) return sheet == this;
    }
    return false;
}

void Sheet::keepFocus(QWidget* now) {
    if (now == nullptr || !isOpen_ || !isTopmost()) return;
    if (now == this || isAncestorOf(now)) {
        lastFocus_ = now;
    } else if (now->window() == &window_) {
        QWidget* back = lastFocus_ != nullptr ? lastFocus_.data() : firstStop();
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
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter || (!event->isAutoRepeat() && !isText(QApplication::focusWidget()))) QDialog::keyPressEvent(event);
    event->accept();  // nothing below hears of it
}

void Sheet::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

bool Sheet::eventFilter(QObject* watched, QEvent* event) {
    const bool isResize = watched == &window_ && event->type() == QEvent::Resize;
    const bool isNewContent = watched == scroll_->widget() && event->type() == QEvent::LayoutRequest;
    if (isResize || isNewContent) relayout();
    if (event->type() != QEvent::Shortcut || !isOpen_ || !isTopmost()) return false;
    // The window's shortcuts rest while the sheet is open.
    const QObject* owner = watched->isWidgetType() ? watched : watched->parent();
    const auto* widget = qobject_cast<const QWidget*>(owner);
    const bool isOutside = widget != nullptr && widget->window() == &window_ && !isAncestorOf(widget);
    return isOutside && isWindowShortcut(*watched);
}

}  // namespace quorvane
