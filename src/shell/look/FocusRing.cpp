#include "shell/look/FocusRing.h"

#include "shell/look/Painting.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextEdit>
#include <optional>

namespace quorvane {
namespace {

constexpr int reach = 4;  // of the ring beyond the control

struct Outline {
    QRect rectangle;
    double radius;
};

/// The control that a focused widget belongs to: the line inside a combo or a spin box stands for it.
QWidget* controlOf(QWidget* widget) {
    QWidget* parent = widget->parentWidget();
    const bool isInner =
        dynamic_cast<QComboBox*>(parent) != nullptr || dynamic_cast<QAbstractSpinBox*>(parent) != nullptr;
    return isInner ? parent : widget;
}

std::optional<Outline> outlineOf(const QWidget& control) {
    if (const auto* own = dynamic_cast<const FocusOutline*>(&control))
        return Outline{own->focusOutline(), own->focusRadius()};
    const bool isControl =
        dynamic_cast<const QAbstractButton*>(&control) != nullptr ||
        dynamic_cast<const QLineEdit*>(&control) != nullptr || dynamic_cast<const QComboBox*>(&control) != nullptr ||
        dynamic_cast<const QAbstractSpinBox*>(&control) != nullptr ||
        dynamic_cast<const QTextEdit*>(&control) != nullptr || dynamic_cast<const QPlainTextEdit*>(&control) != nullptr;
    if (!isControl) return std::nullopt;
    const bool isSmall = control.height() <= Metrics::smallHeight;
    return Outline{.rectangle = control.rect(),
                   .radius = isSmall ? 1.0 * Metrics::smallRadius : 1.0 * Metrics::controlRadius};
}

/// The farthest ancestor that moves along with the control: what scrolls clips, so the ring stays inside of it.
QWidget* hostOf(QWidget& control) {
    QWidget* host = control.parentWidget();
    while (host != nullptr && !host->isWindow() && host->parentWidget() != nullptr &&
           dynamic_cast<QAbstractScrollArea*>(host->parentWidget()) == nullptr) {
        host = host->parentWidget();
    }
    return host;
}

bool isText(const QWidget* widget) {
    return widget != nullptr && widget->inputMethodQuery(Qt::ImEnabled).toBool() &&
           (dynamic_cast<const QLineEdit*>(widget) != nullptr || dynamic_cast<const QTextEdit*>(widget) != nullptr ||
            dynamic_cast<const QPlainTextEdit*>(widget) != nullptr);
}

/// Typing into a field that was clicked is no wish to see where the focus is; leaving it by a key is.
bool isNavigation(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta: return false;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter: return true;
    default: return !isText(QApplication::focusWidget());
    }
}

class RingWidget : public QWidget {
public:
    RingWidget(QWidget* parent, double radius) : QWidget(parent), radius_(radius) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setFocusPolicy(Qt::NoFocus);
    }
    [[nodiscard]] double radius() const { return radius_; }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        // What lies below shows through the gap: it has the surface's colour.
        paintFocusRing(painter, QRectF(rect()).adjusted(reach, reach, -reach, -reach), radius_, QColor());
    }

private:
    double radius_;
};

class FocusFollower : public QObject {
public:
    explicit FocusFollower(QObject* parent) : QObject(parent) {
        qApp->installEventFilter(this);
        connect(qApp, &QApplication::focusChanged, this, [this] { place(); });
    }

    [[nodiscard]] bool isByKeyboard() const { return isByKeyboard_; }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::KeyPress:
            if (!isByKeyboard_ && isNavigation(*static_cast<QKeyEvent*>(event))) setByKeyboard(true);
            break;
        case QEvent::MouseButtonPress:
        case QEvent::TouchBegin:
            if (isByKeyboard_) setByKeyboard(false);
            break;
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::ParentChange:
        case QEvent::EnabledChange:
            if (ring_ != nullptr && watched != ring_ && concerns(watched)) place();
            break;
        default: break;
        }
        return false;
    }

private:
    void setByKeyboard(bool isByKeyboard) {
        isByKeyboard_ = isByKeyboard;
        if (QWidget* focused = QApplication::focusWidget()) focused->update();
        place();
    }

    [[nodiscard]] bool concerns(QObject* watched) const {
        const auto* moved = dynamic_cast<QWidget*>(watched);
        return moved != nullptr && control_ != nullptr && (moved == control_ || moved->isAncestorOf(control_));
    }

    /// Not at once: the focus also moves while Qt walks through the children of what hides, and the ring is one.
    void dropRing() {
        if (ring_ == nullptr) return;
        ring_->hide();
        ring_->deleteLater();
        ring_ = nullptr;
    }

    void place() {
        QWidget* focused = QApplication::focusWidget();
        control_ = focused == nullptr ? nullptr : controlOf(focused);
        QWidget* host = control_ == nullptr ? nullptr : hostOf(*control_);
        const auto outline = control_ == nullptr ? std::nullopt : outlineOf(*control_);
        if (!isByKeyboard_ || host == nullptr || !outline || !control_->isVisible()) {
            dropRing();
            return;
        }
        if (ring_ == nullptr || ring_->parentWidget() != host || ring_->radius() != outline->radius) {
            dropRing();
            ring_ = new RingWidget(host, outline->radius);
        }
        const QRect around = outline->rectangle.adjusted(-reach, -reach, reach, reach);
        ring_->setGeometry(QRect(control_->mapTo(host, around.topLeft()), around.size()));
        ring_->raise();
        ring_->show();
    }

    bool isByKeyboard_ = false;
    QPointer<QWidget> control_;
    QPointer<RingWidget> ring_;
};

FocusFollower& follower() {
    static QPointer<FocusFollower> instance;
    if (instance == nullptr) instance = new FocusFollower(qApp);
    return *instance;
}

}  // namespace

void followFocus() {
    follower();
}

bool showsFocusRing(const QWidget& widget) {
    return widget.hasFocus() && follower().isByKeyboard();
}

}  // namespace quorvane
