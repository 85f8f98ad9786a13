#pragma once

#include "platform/RecordContainer.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvane::platform {

/// A cloud on paper, which containers share and which outlives them. A test looks into it and orders its failures.
struct SimulatedCloud {
    using Records = std::map<std::string, CloudRecord>;

    std::array<Records, 2> databases{};  ///< by scope, and by record name
    AccountStatus status = AccountStatus::available;
    std::string statusReason{};
    std::map<std::string, std::string> refusedRecords{};  ///< names that can't be saved, and why
    std::vector<UnreadableRow> unreadableRows{};          ///< at the head of every query's first page
    std::optional<CloudFailure> failure{};                ///< what calls fail with, once `callsBeforeFailure` are done
    int callsBeforeFailure = 0;
    bool losesAnswer = false;                         ///< the call that fails has done its work all the same
    int sessions = 0;                                 ///< how many were opened
    std::vector<std::vector<std::string>> batches{};  ///< the names of each batch that came

    [[nodiscard]] Records& records(DatabaseScope scope) { return databases.at(static_cast<std::size_t>(scope)); }
    [[nodiscard]] Records& privateRecords() { return records(DatabaseScope::privateData); }
    [[nodiscard]] Records& publicRecords() { return records(DatabaseScope::publicData); }
};

/// Answers at once. A server that says nothing is a run loop whose background work is held.
class SimulatedRecordContainer final : public RecordContainer {
public:
    explicit SimulatedRecordContainer(SimulatedCloud& cloud) : cloud_(cloud) {}
    [[nodiscard]] std::shared_ptr<RecordSession> newSession() override;

private:
    SimulatedCloud& cloud_;
};

}  // namespace quorvane::platform
