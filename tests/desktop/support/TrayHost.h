#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

/// A panel on the test's session bus: owns org.kde.StatusNotifierWatcher, and reads and chooses in the menu of the icon
/// that registers. It answers from a thread of its own, so that the test may wait for the program meanwhile.
class TrayHost {
public:
    struct Item {
        int id = 0;
        std::string label;  ///< empty for a separator
        bool isEnabled = true;
    };

    TrayHost();
    ~TrayHost();

    /// Has an icon come?
    [[nodiscard]] bool hasItem() const { return !service().isEmpty(); }

    /// The menu from top to bottom, opened first as a panel does.
    [[nodiscard]] std::vector<Item> menu();

    /// The labels from top to bottom: "-" for a separator, "(label)" where it can't be chosen.
    [[nodiscard]] std::vector<std::string> labels();

    /// Chooses the item with this label; false if there is none.
    bool choose(const std::string& label);

private:
    class Watcher;

    [[nodiscard]] QString service() const;
    [[nodiscard]] QVariantList call(const QString& method, const QVariantList& arguments);

    QDBusConnection bus_;
    std::unique_ptr<Watcher> watcher_;
};

}  // namespace quorvane
