#include "base/Color.h"

#include <fmt/format.h>

namespace quorvane {

std::string hexText(Color color) {
    return fmt::format("#{:02X}{:02X}{:02X}", color.red, color.green, color.blue);
}

}  // namespace quorvane
