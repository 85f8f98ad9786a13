#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quorvane {

/// The order in which a language lists names: "Äpfel" beside "Apfel", "item 9" before "item 10".
class Collation {
public:
    /// `language` as a tag, "en"; what is unknown orders as Unicode's root does.
    explicit Collation(const std::string& language);
    Collation(Collation&&) noexcept;
    ~Collation();

    /// Does `a` stand before `b`?
    [[nodiscard]] bool comesBefore(std::string_view a, std::string_view b) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvane
