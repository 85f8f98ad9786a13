#pragma once

#include "platform/linux/accessibility/AtspiConnection.h"

#include <QRect>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// One part of what an application shows.
struct AccessibleNode {
    std::string role;  ///< "push button", "list item"
    std::string name;
    QRect place;  ///< on the screen, in the application's pixels: Qt's are larger where it scales
    bool isFocusable = false;
    bool isFocused = false;
    bool isSelected = false;
    bool isChecked = false;
    int depth = 0;  ///< 0 for a window
};

/// What an application shows to assistive technology: the tree under its windows, as a screen reader walks it.
class AccessibleTree {
public:
    /// `address` is the accessibility bus's; the application is known by its name.
    AccessibleTree(const QString& address, std::string application);

    /// All that is visible, parents before their children; empty while the application is not on the bus.
    [[nodiscard]] std::vector<AccessibleNode> nodes();

private:
    [[nodiscard]] std::optional<platform::AtspiReference> application();
    [[nodiscard]] QVariant ask(const platform::AtspiReference& element, const char* interface, const char* method,
                               const QVariantList& arguments = {});
    [[nodiscard]] std::vector<platform::AtspiReference> children(const platform::AtspiReference& element);
    [[nodiscard]] std::string name(const platform::AtspiReference& element);
    void walk(const platform::AtspiReference& element, int depth, std::vector<AccessibleNode>& found);

    platform::AtspiConnection bus_;
    std::string application_;
};

}  // namespace quorvane
