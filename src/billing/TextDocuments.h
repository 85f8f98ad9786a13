#pragma once

#include <optional>
#include <string>

/// Texts that a file dialog saves and opens. Their files hold UTF-8.
namespace quorvane {

/// Comma-separated values.
struct CSVDocument {
    std::string content;

    /// Throws `FileError` when there are no bytes, or they are no UTF-8.
    [[nodiscard]] static CSVDocument read(const std::optional<std::string>& bytes);
    [[nodiscard]] const std::string& bytes() const { return content; }
};

/// A billing pack. Bytes that are no UTF-8 read as U+FFFD.
struct BillingMarkdownDocument {
    std::string content;

    [[nodiscard]] static BillingMarkdownDocument read(const std::string& bytes);
    [[nodiscard]] const std::string& bytes() const { return content; }
};

}  // namespace quorvane
