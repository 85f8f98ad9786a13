#pragma once

#include <string>
#include <string_view>

/// The program and library files in call stacks.
namespace quorvane::PerformanceReportModules {

/// The stacks with the name alone of each file that a frame lies in: "#1 0x7f spin() - /opt/ann/libq.so" becomes
/// "#1 0x7f spin() - libq.so". Names of functions stay as they are.
[[nodiscard]] std::string withoutFolders(std::string_view stacks);

}  // namespace quorvane::PerformanceReportModules
