#pragma once

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <initializer_list>

namespace quorvane::platform {

/// An element on the accessibility bus: the connection of its application, and its path there. On the wire (so).
struct AtspiReference {
    QString bus;
    QDBusObjectPath path;

    /// The element that stands for the whole application has this path.
    [[nodiscard]] static QString applicationPath() { return QStringLiteral("/org/a11y/atspi/accessible/root"); }
    [[nodiscard]] bool isApplication() const { return path.path() == applicationPath(); }

    /// Some applications name "none" by a path of its own.
    [[nodiscard]] bool isNull() const;
};

/// Numbers of the protocol.
namespace AtspiRole {
inline constexpr unsigned dialog = 16;
inline constexpr unsigned frame = 23;
inline constexpr unsigned text = 61;
inline constexpr unsigned window = 69;
inline constexpr unsigned entry = 79;
inline constexpr unsigned documentFrame = 82;
inline constexpr unsigned documentSpreadsheet = 92;
inline constexpr unsigned documentPresentation = 93;
inline constexpr unsigned documentText = 94;
inline constexpr unsigned documentWeb = 95;
[[nodiscard]] constexpr bool isWindow(unsigned role) {
    return role == dialog || role == frame || role == window;
}
}  // namespace AtspiRole
namespace AtspiState {
inline constexpr unsigned active = 1;
inline constexpr unsigned focused = 12;
inline constexpr unsigned showing = 25;
}  // namespace AtspiState

/// Which elements a search is to find: those that have the state and one of the roles. On the wire (aiia{ss}iaiiasib).
struct AtspiMatchRule {
    AtspiMatchRule(unsigned state, std::initializer_list<unsigned> anyOfRoles);
    AtspiMatchRule() = default;

    QList<int> states{0, 0};
    QList<int> roles{0, 0, 0, 0};
};

QDBusArgument& operator<<(QDBusArgument& argument, const AtspiReference& reference);
const QDBusArgument& operator>>(const QDBusArgument& argument, AtspiReference& reference);
QDBusArgument& operator<<(QDBusArgument& argument, const AtspiMatchRule& rule);
const QDBusArgument& operator>>(const QDBusArgument& argument, AtspiMatchRule& rule);

/// Makes the types known to Qt; the first call counts.
void registerAtspiMessages();

}  // namespace quorvane::platform

Q_DECLARE_METATYPE(quorvane::platform::AtspiReference)
Q_DECLARE_METATYPE(quorvane::platform::AtspiMatchRule)
