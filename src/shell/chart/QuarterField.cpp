#include "shell/chart/QuarterField.h"

#include "base/TimeText.h"
#include "shell/look/Controls.h"
#include "shell/look/Kind.h"
#include "shell/look/Typography.h"

#include <QRegularExpression>

namespace quorvane {
namespace {

constexpr int quarter = 15;
constexpr int endOfDay = 24 * 60;
constexpr int besideText = 24;  // padding and edges of a small field
constexpr int buttons = 24;

const QRegularExpression& timePattern() {
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,2}):(\\d{2})$"));
    return pattern;
}

/// Minutes from midnight; -1 for what is no time.
int minutesOf(const QString& text) {
    const auto match = timePattern().match(text.trimmed());
    if (!match.hasMatch()) return -1;
    const int hours = match.captured(1).toInt();
    const int minutes = match.captured(2).toInt();
    const int all = hours * 60 + minutes;
    return minutes < 60 && all <= endOfDay ? all : -1;
}

}  // namespace

QuarterField::QuarterField(const QString& name, QWidget* parent) : QSpinBox(parent) {
    setRange(0, endOfDay);
    setSingleStep(quarter);
    setKeyboardTracking(false);
    setKind(*this, "small quiet");
    setAccessibleName(name);
    setToolTip(name);
}

void QuarterField::stepBy(int steps) {
    const int offset = value() % quarter;
    // From between two quarters the first step leads to the nearer one in its direction.
    const int from = steps < 0 && offset != 0 ? value() - offset + quarter : value() - offset;
    setValue(from + steps * quarter);
}

QSize QuarterField::sizeHint() const {
    const int beside = buttonSymbols() == NoButtons ? 0 : buttons;
    return minimumSizeHint() + QSize(beside, 0);
}

QSize QuarterField::minimumSizeHint() const {
    return {fontMetrics().horizontalAdvance(QStringLiteral("00:00")) + besideText, QSpinBox::sizeHint().height()};
}

QString QuarterField::textFromValue(int minutes) const {
    return qt(clockText(minutes * 1min));
}

int QuarterField::valueFromText(const QString& text) const {
    const int minutes = minutesOf(text);
    return minutes < 0 ? value() : minutes;
}

QValidator::State QuarterField::validate(QString& text, int&) const {
    static const QRegularExpression beginning(QStringLiteral("^\\s*\\d{0,2}(:\\d{0,2})?\\s*$"));
    const int minutes = minutesOf(text);
    if (minutes >= minimum() && minutes <= maximum()) return QValidator::Acceptable;
    return beginning.match(text).hasMatch() ? QValidator::Intermediate : QValidator::Invalid;
}

}  // namespace quorvane
