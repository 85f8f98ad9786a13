#include "desktop/support/AccessibleTree.h"

#include <QDBusVariant>
#include <utility>

namespace quorvane {
namespace {

using platform::AtspiReference;
using platform::Deadline;

constexpr Seconds patience = 5s;
constexpr const char* accessible = "org.a11y.atspi.Accessible";

// Numbers of the protocol.
enum State : unsigned { checked = 4, focusable = 11, focused = 12, selected = 23, visible = 30 };
constexpr unsigned onScreen = 0;

bool has(const QList<unsigned>& states, State state) {
    return !states.isEmpty() && ((states[0] >> state) & 1U) != 0;
}

QRect rectangle(const QVariant& answer) {
    int x = 0, y = 0, width = 0, height = 0;
    const auto argument = answer.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(iiii)")) return {};
    argument.beginStructure();
    argument >> x >> y >> width >> height;
    argument.endStructure();
    return {x, y, width, height};
}

}  // namespace

AccessibleTree::AccessibleTree(const QString& address, std::string application)
    : bus_(address, Deadline(patience)), application_(std::move(application)) {
    platform::registerAtspiMessages();
}

QVariant AccessibleTree::ask(const AtspiReference& element, const char* interface, const char* method,
                             const QVariantList& arguments) {
    const auto answer = bus_.ask(element, interface, method, arguments, Deadline(patience));
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0) : QVariant();
}

std::vector<AtspiReference> AccessibleTree::children(const AtspiReference& element) {
    const auto list = qdbus_cast<QList<AtspiReference>>(ask(element, accessible, "GetChildren"));
    return {list.begin(), list.end()};
}

std::string AccessibleTree::name(const AtspiReference& element) {
    const auto value = ask(element, "org.freedesktop.DBus.Properties", "Get", {accessible, "Name"});
    return value.value<QDBusVariant>().variant().toString().toStdString();
}

std::optional<AtspiReference> AccessibleTree::application() {
    const AtspiReference registry{QStringLiteral("org.a11y.atspi.Registry"),
                                  QDBusObjectPath(AtspiReference::applicationPath())};
    for (const auto& found : children(registry))
        if (name(found) == application_) return found;
    return std::nullopt;
}

std::vector<AccessibleNode> AccessibleTree::nodes() {
    std::vector<AccessibleNode> found;
    if (const auto top = application())
        for (const auto& window : children(*top))
            walk(window, 0, found);
    return found;
}

void AccessibleTree::walk(const AtspiReference& element, int depth, std::vector<AccessibleNode>& found) {
    const auto states = qdbus_cast<QList<unsigned>>(ask(element, accessible, "GetState"));
    if (!has(states, visible)) return;
    found.push_back(
        {.role = ask(element, accessible, "GetRoleName").toString().toStdString(),
         .name = name(element),
         .place = rectangle(ask(element, "org.a11y.atspi.Component", "GetExtents", {QVariant::fromValue(onScreen)})),
         .isFocusable = has(states, focusable),
         .isFocused = has(states, focused),
         .isSelected = has(states, selected),
         .isChecked = has(states, checked),
         .depth = depth});
    for (const auto& child : children(element))
        walk(child, depth + 1, found);
}

}  // namespace quorvane
