#include "shell/look/AccessibleRole.h"
#include "shell/look/Alert.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Motion.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QTimer>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int room = 40;  // for the shadow round the panel
constexpr int bottomDistance = 24;
constexpr int leastMargin = 24;

class ToastView : public QWidget {
public:
    ToastView(QWidget& window, const QString& title, const QString& message) : QWidget(&window), window_(window) {
        setAccessibleRole(*this, QAccessible::Notification, title + QLatin1Char(' ') + message);
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
        place();
        show();
        raise();
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
        const int most = window_.width() - 2 * leastMargin + 2 * room;
        const QSize size(std::min(sizeHint().width(), most), sizeHint().height());
        const int y = window_.height() - bottomDistance - size.height() + room;
        setGeometry(QRect(QPoint((window_.width() - size.width()) / 2, y), size));
    }

    QWidget& window_;
    QTimer leave_;
};

}  // namespace

void Toast::show(QWidget& window, const QString& title, const QString& message) {
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
