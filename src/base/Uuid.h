#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

/// A 128-bit identifier. It prints in upper case and orders as its text does.
class Uuid {
public:
    /// All zero.
    constexpr Uuid() = default;
    explicit constexpr Uuid(std::array<std::uint8_t, 16> bytes) : bytes_(bytes) {}

    /// A fresh version 4 identifier from the system's random source.
    [[nodiscard]] static Uuid random();

    /// Reads the form 8-4-4-4-12 in either case; nothing else is one.
    [[nodiscard]] static std::optional<Uuid> parse(std::string_view text);

    /// 36 characters, upper case.
    [[nodiscard]] std::string string() const;
    void appendTo(std::string& out) const;

    [[nodiscard]] const std::array<std::uint8_t, 16>& bytes() const { return bytes_; }

    friend auto operator<=>(const Uuid&, const Uuid&) = default;

private:
    std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace quorvane

template <>
struct std::hash<quorvane::Uuid> {
    std::size_t operator()(const quorvane::Uuid& uuid) const noexcept;
};
