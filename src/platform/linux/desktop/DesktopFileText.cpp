#include "platform/linux/desktop/DesktopFileText.h"

namespace quorvane::platform {

std::string desktopValue(std::string_view text) {
    std::string value;
    for (const char c : text) {
        if (c == '\\') value += '\\';
        value += c;
    }
    return value;
}

std::string desktopArgument(std::string_view path) {
    std::string argument = "\"";
    for (const char c : path) {
        if (c == '"' || c == '`' || c == '$' || c == '\\') argument += '\\';
        if (c == '%') argument += '%';
        argument += c;
    }
    return desktopValue(argument + '"');
}

}  // namespace quorvane::platform
