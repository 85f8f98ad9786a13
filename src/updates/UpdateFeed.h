#pragma once

#include "diagnostics/ApplicationInfo.h"
#include "platform/HttpClient.h"
#include "updates/UpdateState.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// What the answers of the update server mean. Nothing of a feed is looked at before its signature has been verified.
namespace quorvane::UpdateFeed {

constexpr std::size_t maximumFeedBytes = 1'048'576;
constexpr std::size_t maximumSignatureBytes = 1'024;  ///< 88 are needed
constexpr std::size_t maximumNotesBytes = 4'000;

struct Outcome {
    UpdateState state;    ///< `upToDate`, `available` or `failed`; asked by nobody
    std::string refusal;  ///< why the feed was not followed, in one line for the log; empty if it was
    friend bool operator==(const Outcome&, const Outcome&) = default;
};

/// The end of a check that did not get the feed itself; none if it is there.
[[nodiscard]] std::optional<Outcome> missingFeed(const platform::HttpResult& answer);

/// The same for the signature beside it.
[[nodiscard]] std::optional<Outcome> missingSignature(const platform::HttpResult& answer);

struct Answers {
    std::string_view feed;
    std::string_view signature;  ///< of the feed's exact bytes, in base64
};

/// Offers the newest version of the feed if it is newer than the running application. `publicKey`: in base64.
[[nodiscard]] Outcome judge(const Answers& answers, std::string_view publicKey, const ApplicationInfo& application);

}  // namespace quorvane::UpdateFeed
