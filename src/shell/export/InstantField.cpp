#include "shell/export/InstantField.h"

#include "shell/look/Icons.h"
#include "shell/look/Labelled.h"
#include "shell/look/Typography.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QTimeEdit>
#include <cmath>

namespace quorvane {
namespace {

constexpr int timeWidth = 104;
constexpr int leastDateWidth = 180;

/// The language's long date without the day of the week.
QString dateFormat() {
    static const QRegularExpression weekday(QStringLiteral("[,،]?\\s*dddd[,،]?\\s*"));
    return QLocale().dateFormat(QLocale::LongFormat).remove(weekday);
}

}  // namespace

InstantField::InstantField(const std::string& name, const Localization& localization, QWidget* parent)
    : QWidget(parent), date_(new QDateEdit), time_(new QTimeEdit) {
    date_->setCalendarPopup(true);
    date_->setDisplayFormat(dateFormat());
    date_->setMinimumWidth(leastDateWidth);
    date_->findChild<QLineEdit*>()->addAction(icon(QStringLiteral("calendar")), QLineEdit::LeadingPosition);
    time_->setDisplayFormat(QStringLiteral("HH:mm"));
    time_->setFixedWidth(timeWidth);
    time_->setAccessibleName(qt(localization.text("a11y_time_field", name)));
    auto* const line = lineBox(8, this);
    line->addLayout(labelled(qt(name), *date_), 1);
    line->addWidget(time_, 0, Qt::AlignBottom);
    for (QDateTimeEdit* const field : {static_cast<QDateTimeEdit*>(date_), static_cast<QDateTimeEdit*>(time_)}) {
        field->setKeyboardTracking(false);
        connect(field, &QDateTimeEdit::dateTimeChanged, this, [this] { choose(); });
    }
}

void InstantField::setInstant(Date instant) {
    const auto local = QDateTime::fromMSecsSinceEpoch(std::llround(instant.time_since_epoch() / 1ms));
    const QSignalBlocker quietDate(date_);
    const QSignalBlocker quietTime(time_);
    date_->setDate(local.date());
    time_->setTime(local.time());  // seconds too, which it doesn't show
}

void InstantField::choose() {
    const QDateTime next(date_->date(), time_->time());
    chosen.send(Date(std::chrono::milliseconds(next.toMSecsSinceEpoch())));
}

}  // namespace quorvane
