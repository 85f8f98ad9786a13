#include "platform/linux/system/LinuxSystemInfo.h"

#include <string_view>
#include <sys/utsname.h>

namespace quorvane::platform {
namespace {

/// "6.1" of "6.1.0-18-amd64".
std::string majorAndMinor(std::string_view release) {
    constexpr std::string_view digits = "0123456789";
    const auto dot = release.find_first_not_of(digits);
    if (dot == std::string_view::npos || release[dot] != '.') return std::string(release.substr(0, dot));
    return std::string(release.substr(0, release.find_first_not_of(digits, dot + 1)));
}

}  // namespace

SystemInfo linuxSystemInfo() {
    utsname names{};
    if (uname(&names) != 0) return {};
    return {.name = names.sysname, .version = majorAndMinor(names.release), .architecture = names.machine};
}

}  // namespace quorvane::platform
