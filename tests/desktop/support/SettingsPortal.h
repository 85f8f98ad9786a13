#pragma once

#include <QDBusConnection>
#include <memory>

namespace quorvane {

/// The desktop's settings portal on the test's session bus, which knows one thing: the preferred appearance. It answers
/// while the test serves its event loop.
class SettingsPortal {
public:
    explicit SettingsPortal(bool isDark);
    SettingsPortal(const SettingsPortal&) = delete;
    SettingsPortal& operator=(const SettingsPortal&) = delete;
    ~SettingsPortal();

    /// The user chooses another appearance.
    void setDark(bool isDark);

private:
    class Settings;

    QDBusConnection bus_;
    std::unique_ptr<Settings> settings_;
};

}  // namespace quorvane
