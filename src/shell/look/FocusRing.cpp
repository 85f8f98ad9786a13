#include "shell/look/FocusRing.h"

#include "shell/look/Painting.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QFocusFrame>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTabBar>
#include <QTextEdit>

namespace quorvane {
namespace {

template <class... Classes>
bool isOneOf(const QWidget* widget) {
    return (... || (qobject_cast<const Classes*>(widget) != nullptr));
}

/// The control that a focused widget belongs to: the line inside a combo or a spin box stands for it.
QWidget* controlOf(QWidget* widget) {
    QWidget* parent = widget->parentWidget();
    return isOneOf<QComboBox, QAbstractSpinBox>(parent) ? parent : widget;
}

bool isText(const QWidget* widget) {
    return isOneOf<QLineEdit, QTextEdit, QPlainTextEdit>(widget) && widget->inputMethodQuery(Qt::ImEnabled).toBool();
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

class FocusFollower : public QObject {
public:
    explicit FocusFollower(QObject* parent) : QObject(parent) {
        qApp->installEventFilter(this);
        connect(qApp, &QApplication::focusChanged, this, [this] { place(); });
    }

    [[nodiscard]] bool isByKeyboard() const { return isByKeyboard_; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        switch (event->type()) {
        case QEvent::KeyPress:
            if (!isByKeyboard_ && isNavigation(*static_cast<QKeyEvent*>(event))) setByKeyboard(true);
            break;
        case QEvent::MouseButtonPress:
        case QEvent::TouchBegin:
            if (isByKeyboard_) setByKeyboard(false);
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

    void place() {
        QWidget* focused = QApplication::focusWidget();
        QWidget* control = isByKeyboard_ && focused != nullptr ? controlOf(focused) : nullptr;
        if (!isOneOf<QAbstractButton, QLineEdit, QComboBox, QAbstractSpinBox, QTextEdit, QPlainTextEdit, QTabBar>(
                control))
            control = nullptr;
        if (frame_ == nullptr && control != nullptr) frame_ = new QFocusFrame(control->parentWidget());
        if (frame_ != nullptr) frame_->setWidget(control);
    }

    bool isByKeyboard_ = false;
    QPointer<QFocusFrame> frame_;  ///< goes with the page that it is on
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
