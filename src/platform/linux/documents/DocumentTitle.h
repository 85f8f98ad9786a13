#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the title of a window says about the document in it. Only the first 1024 bytes of a title count.
namespace quorvane::platform::DocumentTitle {

/// Absolute paths that the title may mean, the likeliest first: "PATH - App", "NAME (DIRECTORY) - App" and
/// "NAME - DIRECTORY - App", with dashes of any length, marks of changes left out, "~" standing for `home`.
[[nodiscard]] std::vector<std::string> paths(std::string_view title, std::string_view home);

/// The name of the document: the first part of a title that ends with one of the application's names, else the first
/// part that looks like a file's name. Empty if the title does not tell.
[[nodiscard]] std::string documentName(std::string_view title, const std::vector<std::string>& applicationNames);

/// Does the name of a file stand in the title (or the name of a program in a command) as a word of its own?
[[nodiscard]] bool names(std::string_view title, std::string_view fileName);

}  // namespace quorvane::platform::DocumentTitle
