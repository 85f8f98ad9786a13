#include "shell/export/InstantField.h"

#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QDateEdit>
#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QTimeEdit>
#include <QVBoxLayout>
#include <cmath>

namespace quorvane {
namespace {

constexpr int timeWidth = 104;
constexpr int leastDateWidth = 180;
constexpr int iconSize = 16;
constexpr int iconStart = 11;
constexpr int textStart = 26;  // from where the field's text begins

/// The language's long date without the day of the week.
QString dateFormat() {
    static const QRegularExpression weekday(QStringLiteral("[,،]?\\s*dddd[,،]?\\s*"));
    return QLocale().dateFormat(QLocale::LongFormat).remove(weekday);
}

}  // namespace

InstantField::InstantField(const std::string& name, const Localization& localization, QWidget* parent)
    : QWidget(parent), date_(new QDateEdit), time_(new QTimeEdit) {
    auto* const label = new Label(qt(name), TypeRole::label, &Theme::text2);
    label->setBuddy(date_);
    date_->setCalendarPopup(true);
    date_->setDisplayFormat(dateFormat());
    date_->setMinimumWidth(leastDateWidth);
    addCalendarIcon();
    time_->setDisplayFormat(QStringLiteral("HH:mm"));
    time_->setFixedWidth(timeWidth);
    auto* const line = new QHBoxLayout;
    line->setSpacing(8);
    line->addWidget(date_, 1);
    line->addWidget(time_);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(label);
    column->addLayout(line);
    date_->setAccessibleName(qt(name));
    time_->setAccessibleName(qt(localization.text("a11y_time_field", name)));
    for (QDateTimeEdit* const field : {static_cast<QDateTimeEdit*>(date_), static_cast<QDateTimeEdit*>(time_)}) {
        field->setKeyboardTracking(false);
        connect(field, &QDateTimeEdit::dateTimeChanged, this, [this] { choose(); });
    }
}

void InstantField::addCalendarIcon() {
    auto* const inside = new QHBoxLayout(date_);
    inside->setContentsMargins(iconStart, 0, iconStart, 0);
    auto* const icon = new IconView(QStringLiteral("calendar"), iconSize, &Theme::text2);
    icon->setAttribute(Qt::WA_TransparentForMouseEvents);
    inside->addWidget(icon);
    inside->addStretch(1);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    date_->findChild<QLineEdit*>()->setTextMargins(isMirrored ? 0 : textStart, 0, isMirrored ? textStart : 0, 0);
}

void InstantField::setInstant(Date instant) {
    instant_ = QDateTime::fromMSecsSinceEpoch(std::llround(instant.time_since_epoch() / 1ms));
    const QSignalBlocker quietDate(date_);
    const QSignalBlocker quietTime(time_);
    date_->setDate(instant_.date());
    time_->setTime(instant_.time());
}

void InstantField::choose() {
    const QTime shown = time_->time();
    const QTime time(shown.hour(), shown.minute(), instant_.time().second(), instant_.time().msec());
    const QDateTime next(date_->date(), time);
    if (next == instant_) return;
    instant_ = next;
    chosen.send(Date(std::chrono::milliseconds(next.toMSecsSinceEpoch())));
}

}  // namespace quorvane
