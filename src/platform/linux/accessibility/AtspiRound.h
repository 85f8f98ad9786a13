#pragma once

#include "platform/linux/accessibility/AtspiConnection.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvane::platform {

/// The calls that one question takes; together they have one deadline. An answer of another type than the protocol's
/// is none.
class AtspiRound {
public:
    AtspiRound(std::shared_ptr<AtspiConnection> connection, const Deadline& deadline)
        : connection_(std::move(connection)), deadline_(deadline) {}

    /// All that are on the bus.
    [[nodiscard]] std::vector<AtspiReference> applications();

    /// The process of the element's application; none if the bus does not know it.
    [[nodiscard]] std::optional<std::int64_t> process(const AtspiReference& element) {
        return connection_->process(element.bus, deadline_);
    }

    /// The application with this process; none if it is not on the bus.
    [[nodiscard]] std::optional<AtspiReference> application(std::int64_t process);

    /// At most 1,000.
    [[nodiscard]] std::vector<AtspiReference> children(const AtspiReference& element);
    [[nodiscard]] std::optional<AtspiReference> parent(const AtspiReference& element);
    [[nodiscard]] std::optional<unsigned> role(const AtspiReference& element);
    [[nodiscard]] std::optional<std::string> roleName(const AtspiReference& element);
    [[nodiscard]] std::optional<std::string> name(const AtspiReference& element);
    [[nodiscard]] std::optional<std::string> description(const AtspiReference& element);

    /// "Gecko", "Chromium", "gtk".
    [[nodiscard]] std::optional<std::string> toolkit(const AtspiReference& application);
    [[nodiscard]] bool hasState(const AtspiReference& element, unsigned state);

    /// The first characters of its text.
    [[nodiscard]] std::optional<std::string> text(const AtspiReference& element, int characters);
    [[nodiscard]] std::optional<double> currentValue(const AtspiReference& element);

    /// The first elements below that fit the rule, in the order of the tree. The application searches itself, and stops
    /// when it has as many as it is to find.
    [[nodiscard]] std::vector<AtspiReference> matches(const AtspiReference& element, const AtspiMatchRule& rule,
                                                      int count);

    /// None when it is empty, as unknown ones are.
    [[nodiscard]] std::optional<std::string> documentAttribute(const AtspiReference& document, const char* key);

private:
    [[nodiscard]] QDBusMessage ask(const AtspiReference& element, const char* interface, const char* method,
                                   const QVariantList& arguments = {});
    [[nodiscard]] QVariant property(const AtspiReference& element, const char* interface, const char* name);
    [[nodiscard]] std::optional<std::string> textProperty(const AtspiReference& element, const char* interface,
                                                          const char* name);

    std::shared_ptr<AtspiConnection> connection_;
    Deadline deadline_;
};

}  // namespace quorvane::platform
