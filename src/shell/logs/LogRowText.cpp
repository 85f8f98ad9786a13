#include "shell/logs/LogRowText.h"

#include "base/DateText.h"
#include "shell/look/Typography.h"

#include <QStringList>

namespace quorvane {

QString LogRowText::time(const LogEntry& entry) {
    return qt(localDateText(entry.timestamp, "HH:mm:ss.SSS"));
}

QString LogRowText::level(LogLevel level) {
    return qt(std::string(rawValue(level)));
}

QString LogRowText::message(const LogEntry& entry) {
    return qt(entry.message).replace(QLatin1Char('\n'), QLatin1Char(' '));
}

QString LogRowText::spoken(const LogEntry& entry) {
    return QStringList{time(entry), level(entry.level), qt(entry.module), qt(entry.message)}.join(QStringLiteral(", "));
}

}  // namespace quorvane
