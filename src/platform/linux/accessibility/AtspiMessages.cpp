#include "platform/linux/accessibility/AtspiMessages.h"

#include <QDBusMetaType>

namespace quorvane::platform {
namespace {

enum Match { all = 1, any = 2 };

void setBit(QList<int>& words, unsigned bit) {
    words[bit / 32] = static_cast<int>(static_cast<unsigned>(words[bit / 32]) | 1U << bit % 32);
}

}  // namespace

bool AtspiReference::isNull() const {
    return path.path() == QLatin1String("/org/a11y/atspi/null") || !bus.startsWith(':') || !path.path().startsWith('/');
}

AtspiMatchRule::AtspiMatchRule(unsigned state, std::initializer_list<unsigned> anyOfRoles) {
    setBit(states, state);
    for (const unsigned role : anyOfRoles)
        setBit(roles, role);
}

QDBusArgument& operator<<(QDBusArgument& argument, const AtspiReference& reference) {
    argument.beginStructure();
    argument << reference.bus << reference.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, AtspiReference& reference) {
    argument.beginStructure();
    argument >> reference.bus >> reference.path;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const AtspiMatchRule& rule) {
    const bool isAnyRole = rule.roles == QList<int>{0, 0, 0, 0};
    argument.beginStructure();
    argument << rule.states << int{all} << QMap<QString, QString>() << int{all} << rule.roles
             << int{isAnyRole ? all : any} << QStringList() << int{all} << false;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, AtspiMatchRule&) {
    return argument;  // it is only ever sent
}

void registerAtspiMessages() {
    [[maybe_unused]] static const bool once = [] {
        qDBusRegisterMetaType<AtspiReference>();
        qDBusRegisterMetaType<QList<AtspiReference>>();
        qDBusRegisterMetaType<QMap<QString, QString>>();
        qDBusRegisterMetaType<AtspiMatchRule>();
        return true;
    }();
}

}  // namespace quorvane::platform
