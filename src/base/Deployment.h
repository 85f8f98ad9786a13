#pragma once

#include <string_view>

namespace quorvane {

/// What belongs to whoever hands the application out, and not to its code: hosts, addresses and keys. The values are
/// set when the build is configured (cmake -DQUORVANE_UPDATE_HOST=...; see `cmake/Deployment.cmake`). Each of them is
/// empty unless somebody sets it, and what is empty switches its service off: a plain build speaks to nobody.
struct Deployment {
    /// Where the update feed lies: "updates.example.org", with a port if it isn't 443.
    std::string_view updateHost;
    /// The Ed25519 key that the feed has to be signed with: 32 bytes in base64.
    std::string_view updatePublicKey;
    /// Where performance reports go: "telemetry.example.org", with a port if it isn't 443.
    std::string_view telemetryHost;
    /// The address of the maker's web site, to which the code on share cards leads: "https://www.example.org". Cards
    /// bear no code without it.
    std::string_view makerAddress;
};

[[nodiscard]] const Deployment& deployment();

}  // namespace quorvane
