#include "platform/linux/system/IniUserDefaults.h"

#include "platform/linux/system/XdgPaths.h"

#include <QSettings>
#include <fcntl.h>
#include <unistd.h>

namespace quorvane::platform {
namespace {

/// Qt takes slashes in a key for groups, and changes and merges them; so they are written otherwise.
QString iniKey(std::string_view key) {
    auto text = QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
    text.replace(QLatin1Char('%'), QLatin1String("%25"));
    text.replace(QLatin1Char('/'), QLatin1String("%2F"));
    text.replace(QLatin1Char('\\'), QLatin1String("%5C"));
    return text.isEmpty() ? QStringLiteral("%") : text;
}

/// Qt would make a new file readable for all.
void createPrivately(const std::filesystem::path& file) {
    XdgPaths::createPrivately(file.parent_path());
    if (const int made = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600); made >= 0) close(made);
}

}  // namespace

struct IniUserDefaults::Impl {
    explicit Impl(std::filesystem::path path)
        : file(std::move(path)), settings(QString::fromStdString(file.string()), QSettings::IniFormat) {}

    [[nodiscard]] bool write() {
        createPrivately(file);
        settings.sync();
        return settings.status() == QSettings::NoError;
    }

    std::filesystem::path file;
    QSettings settings;
};

IniUserDefaults::IniUserDefaults() : IniUserDefaults(XdgPaths::applicationConfig() / "quorvane.conf") {}

IniUserDefaults::IniUserDefaults(std::filesystem::path file) : impl_(std::make_unique<Impl>(std::move(file))) {}

IniUserDefaults::~IniUserDefaults() = default;

std::optional<std::string> IniUserDefaults::value(std::string_view key) const {
    impl_->settings.sync();  // reads the file again if another process has changed it
    const auto found = impl_->settings.value(iniKey(key));
    if (!found.isValid()) return std::nullopt;
    return found.toString().toStdString();
}

bool IniUserDefaults::setValue(std::string_view key, std::string_view value) {
    impl_->settings.setValue(iniKey(key), QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size())));
    return impl_->write();
}

bool IniUserDefaults::removeValue(std::string_view key) {
    impl_->settings.remove(iniKey(key));
    return impl_->write();
}

}  // namespace quorvane::platform
