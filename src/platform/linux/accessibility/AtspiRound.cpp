#include "platform/linux/accessibility/AtspiRound.h"

#include <QDBusVariant>
#include <algorithm>

namespace quorvane::platform {
namespace {

constexpr auto accessible = "org.a11y.atspi.Accessible";
constexpr qsizetype manyElements = 1000;

std::vector<AtspiReference> references(const QDBusMessage& answer) {
    std::vector<AtspiReference> found;
    if (!BoundedBusConnection::isAnswer(answer, "a(so)")) return found;
    const auto all = qdbus_cast<QList<AtspiReference>>(answer.arguments().constFirst());
    for (const auto& reference : all.first(std::min(all.size(), manyElements)))
        if (!reference.isNull()) found.push_back(reference);
    return found;
}

std::optional<std::string> textOf(const QDBusMessage& answer) {
    if (!BoundedBusConnection::isAnswer(answer, "s")) return std::nullopt;
    return answer.arguments().constFirst().toString().toStdString();
}

}  // namespace

QDBusMessage AtspiRound::ask(const AtspiReference& element, const char* interface, const char* method,
                             const QVariantList& arguments) {
    return connection_->ask(element, interface, method, arguments, deadline_);
}

QVariant AtspiRound::property(const AtspiReference& element, const char* interface, const char* name) {
    const auto answer = ask(element, "org.freedesktop.DBus.Properties", "Get",
                            {QString::fromLatin1(interface), QString::fromLatin1(name)});
    if (!BoundedBusConnection::isAnswer(answer, "v")) return {};
    return answer.arguments().constFirst().value<QDBusVariant>().variant();
}

std::optional<std::string> AtspiRound::textProperty(const AtspiReference& element, const char* interface,
                                                    const char* name) {
    const auto value = property(element, interface, name);
    if (value.typeId() != QMetaType::QString) return std::nullopt;
    return value.toString().toStdString();
}

std::vector<AtspiReference> AtspiRound::applications() {
    return children({QStringLiteral("org.a11y.atspi.Registry"), QDBusObjectPath(AtspiReference::applicationPath())});
}

std::optional<AtspiReference> AtspiRound::application(std::int64_t process) {
    for (const auto& application : applications())
        if (this->process(application) == process) return application;
    return std::nullopt;
}

std::vector<AtspiReference> AtspiRound::children(const AtspiReference& element) {
    return references(ask(element, accessible, "GetChildren"));
}

std::optional<AtspiReference> AtspiRound::parent(const AtspiReference& element) {
    if (element.isApplication()) return std::nullopt;  // above is only the registry
    const auto value = property(element, accessible, "Parent");
    if (value.typeId() != qMetaTypeId<QDBusArgument>()) return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(so)")) return std::nullopt;
    const auto parent = qdbus_cast<AtspiReference>(argument);
    return parent.isNull() ? std::nullopt : std::optional(parent);
}

std::optional<unsigned> AtspiRound::role(const AtspiReference& element) {
    const auto answer = ask(element, accessible, "GetRole");
    if (!BoundedBusConnection::isAnswer(answer, "u")) return std::nullopt;
    return answer.arguments().constFirst().toUInt();
}

std::optional<std::string> AtspiRound::roleName(const AtspiReference& element) {
    return textOf(ask(element, accessible, "GetRoleName"));
}

std::optional<std::string> AtspiRound::name(const AtspiReference& element) {
    return textProperty(element, accessible, "Name");
}

std::optional<std::string> AtspiRound::description(const AtspiReference& element) {
    return textProperty(element, accessible, "Description");
}

std::optional<std::string> AtspiRound::toolkit(const AtspiReference& application) {
    return textProperty(application, "org.a11y.atspi.Application", "ToolkitName");
}

bool AtspiRound::hasState(const AtspiReference& element, unsigned state) {
    const auto answer = ask(element, accessible, "GetState");
    if (!BoundedBusConnection::isAnswer(answer, "au")) return false;
    const auto words = qdbus_cast<QList<uint>>(answer.arguments().constFirst());
    return state / 32 < static_cast<unsigned>(words.size()) && (words[state / 32] >> state % 32 & 1U) != 0;
}

std::optional<std::string> AtspiRound::text(const AtspiReference& element, int characters) {
    const auto answer = ask(element, "org.a11y.atspi.Text", "GetText", {0, characters});
    if (!BoundedBusConnection::isAnswer(answer, "s")) return std::nullopt;
    const auto text = answer.arguments().constFirst().toString().toUcs4();
    return QString::fromUcs4(reinterpret_cast<const char32_t*>(text.constData()),
                             std::min<qsizetype>(text.size(), characters))
        .toStdString();
}

std::optional<double> AtspiRound::currentValue(const AtspiReference& element) {
    const auto value = property(element, "org.a11y.atspi.Value", "CurrentValue");
    return value.typeId() == QMetaType::Double ? std::optional(value.toDouble()) : std::nullopt;
}

std::vector<AtspiReference> AtspiRound::matches(const AtspiReference& element, const AtspiMatchRule& rule, int count) {
    constexpr unsigned orderOfTree = 1;
    return references(
        ask(element, "org.a11y.atspi.Collection", "GetMatches", {QVariant::fromValue(rule), orderOfTree, count, true}));
}

std::optional<std::string> AtspiRound::documentAttribute(const AtspiReference& document, const char* key) {
    auto value = textOf(ask(document, "org.a11y.atspi.Document", "GetAttributeValue", {QString::fromLatin1(key)}));
    return value && value->empty() ? std::nullopt : value;
}

}  // namespace quorvane::platform
