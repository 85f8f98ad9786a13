#include "updates/UpdateFeed.h"

#include "base/Url.h"
#include "updates/Appcast.h"
#include "updates/FeedSignature.h"
#include "updates/PlainText.h"

#include <fmt/format.h>
#include <utility>

namespace quorvane::UpdateFeed {
namespace {

using platform::HttpFailure;

Outcome refused(UpdateFailure failure, std::string cause) {
    return {.state = {.kind = UpdateState::Kind::failed, .failure = failure}, .refusal = std::move(cause)};
}

UpdateFailure failureOf(HttpFailure::Kind kind) {
    switch (kind) {
    case HttpFailure::Kind::refused: return UpdateFailure::untrusted;
    case HttpFailure::Kind::insecure: return UpdateFailure::insecure;
    case HttpFailure::Kind::tooLarge: return UpdateFailure::unreadable;
    case HttpFailure::Kind::unreachable:
    case HttpFailure::Kind::timedOut: break;
    }
    return UpdateFailure::unreachable;
}

/// `what` of the feed could not be had; a server's refusal means `unanswered`.
std::optional<Outcome> missing(const platform::HttpResult& answer, std::string_view what, UpdateFailure unanswered) {
    if (const auto* failure = std::get_if<HttpFailure>(&answer))
        return refused(failureOf(failure->kind), fmt::format("{}: {}", what, failure->cause));
    const int status = std::get<platform::HttpResponse>(answer).status;
    if (status == 200) return std::nullopt;
    return refused(unanswered, fmt::format("{}: the server answered with status {}", what, status));
}

bool isSecureLink(const std::string& link) {
    const auto parts = urlParts(link);
    return parts && parts->scheme == "https" && !parts->host.empty();
}

Outcome offer(const AppcastItem& item, const ApplicationInfo& application) {
    const ReleaseVersion own{.shortVersion = application.shortVersion.value_or("0"),
                             .build = application.build.value_or("0")};
    const auto order = compareReleases(item.version, own);
    if (!order)
        return refused(UpdateFailure::unreadable, fmt::format("{} is no version to compare with", describe(own)));
    if (*order < 0)
        return {.state = {.kind = UpdateState::Kind::upToDate},
                .refusal =
                    fmt::format("its newest version, {}, is older than the running one", describe(item.version))};
    if (*order == 0) return {.state = {.kind = UpdateState::Kind::upToDate}, .refusal = {}};
    if (!isSecureLink(item.link))
        return refused(UpdateFailure::unreadable,
                       fmt::format("its version {} has no https address to get it from", describe(item.version)));
    return {.state = {.kind = UpdateState::Kind::available,
                      .update = AvailableUpdate{.version = item.version,
                                                .link = item.link,
                                                .notes = plainText(item.notes, maximumNotesBytes)}},
            .refusal = {}};
}

}  // namespace

std::optional<Outcome> missingFeed(const platform::HttpResult& answer) {
    return missing(answer, "the feed", UpdateFailure::unreachable);
}

std::optional<Outcome> missingSignature(const platform::HttpResult& answer) {
    return missing(answer, "the signature", UpdateFailure::untrusted);
}

Outcome judge(const Answers& answers, std::string_view publicKey, const ApplicationInfo& application) {
    const auto key = FeedSignature::publicKey(publicKey);
    if (!key) return refused(UpdateFailure::untrusted, "this build has no key to verify it with");
    if (!FeedSignature::verifies(answers.feed, answers.signature, *key))
        return refused(UpdateFailure::untrusted, "its signature is wrong");
    try {
        const auto items = Appcast::parse(answers.feed);
        const auto* const item = Appcast::newest(items);
        return item ? offer(*item, application) : refused(UpdateFailure::unreadable, "it has no item with a version");
    } catch (const AppcastError& error) {
        return refused(UpdateFailure::unreadable, error.what());
    }
}

}  // namespace quorvane::UpdateFeed
