#pragma once

#include <string>
#include <vector>

namespace quorvane {

/// The command of a program that has made a window with this class and title; the command itself without a title.
[[nodiscard]] std::vector<std::string> ofWindow(const std::string& wmClass, const std::string& title,
                                                std::vector<std::string> command);

}  // namespace quorvane
