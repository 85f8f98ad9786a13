#include "shell/look/Alert.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Motion.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QTimer>
#include <QVariantAnimation>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int room = 40;  // for the shadow round the panel
constexpr int bottomDistance = 24;
constexpr int windowMargin = 24;
constexpr int rise = 8;

class ToastView : public QWidget {
public:
    ToastView(QWidget& window, const QString& title, const QString& message) : QWidget(&window), window_(window) {
        setAccessibleName(title + QLatin1Char(' ') + message);
        auto* icon = new IconView(QStringLiteral("check-circle"), 16, &Theme::ok);
        auto* head = new Label(title, TypeRole::bodyStrong, &Theme::text);
        QFont strong = head->font();
        strong.setWeight(QFont::DemiBold);
        head->setFont(strong);
        auto* words = new Label(message, TypeRole::body, &Theme::text2);
        words->setElided(true);
        if (message.isEmpty()) words->hide();
        auto* line = new QHBoxLayout(this);
        line->setContentsMargins(room + 12, room + 9, room + 15, room + 9);
        line->setSpacing(8);
        line->addWidget(icon);
        line->addWidget(head);
        line->addWidget(words, 1);
        window.installEventFilter(this);
        leave_.setSingleShot(true);
        connect(&leave_, &QTimer::timeout, this, [this] { deleteLater(); });
        leave_.start(Motion::toastStay);
    }

    void appear() {
        const int duration = Motion::milliseconds(Motion::toast);
        lift_ = duration == 0 ? 0 : rise;
        place();
        show();
        raise();
        if (duration == 0) return;
        auto* animation = new QVariantAnimation(this);
        animation->setDuration(duration);
        animation->setEasingCurve(QEasingCurve::OutCubic);
        animation->setStartValue(static_cast<double>(rise));
        animation->setEndValue(0.0);
        connect(animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
            lift_ = value.toInt();
            place();
        });
        animation->start(QAbstractAnimation::DeleteWhenStopped);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == &window_ && event->type() == QEvent::Resize) place();
        return false;
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const QRectF panel = QRectF(rect()).adjusted(room, room, -room, -room);
        paintShadow(painter, panel, Metrics::cardRadius, Elevation::popUp);
        paintPanel(painter, panel, Metrics::cardRadius, theme().surface, theme().line);
    }
    void enterEvent(QEnterEvent* /*event*/) override { leave_.stop(); }
    void leaveEvent(QEvent* /*event*/) override { leave_.start(Motion::toastStay); }

private:
    void place() {
        const int most = window_.width() - 2 * windowMargin + 2 * room;
        const QSize size(std::min(sizeHint().width(), most), sizeHint().height());
        const int y = window_.height() - bottomDistance - size.height() + room + lift_;
        setGeometry(QRect(QPoint((window_.width() - size.width()) / 2, y), size));
    }

    QWidget& window_;
    QTimer leave_;
    int lift_ = 0;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    auto* toast = dynamic_cast<ToastView*>(object);
    return toast == nullptr ? nullptr : new QAccessibleWidget(toast, QAccessible::Notification);
}

}  // namespace

void Toast::show(QWidget& window, const QString& title, const QString& message) {
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    static_cast<void>(isInstalled);
    // One at a time: the newer one takes the older one's place.
    for (QObject* child : window.children()) {
        if (auto* older = dynamic_cast<ToastView*>(child)) {
            older->hide();
            older->deleteLater();
        }
    }
    auto* toast = new ToastView(window, title, message);
    toast->appear();
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(toast, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);
}

}  // namespace quorvane
