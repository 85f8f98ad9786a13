#pragma once

#include "platform/CloudFailure.h"
#include "platform/CloudRecord.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quorvane::platform {

/// May this user keep records there?
enum class AccountStatus : std::uint8_t { couldNotDetermine, available, restricted, noAccount };

/// The two databases of a container: what a user keeps to himself, and what he publishes.
enum class DatabaseScope : std::uint8_t { privateData, publicData };

/// Where a page of a query ended: the next one begins behind it. What it holds is the database's own affair.
struct RecordCursor {
    std::string createdAt;
    std::string recordName;
    friend bool operator==(const RecordCursor&, const RecordCursor&) = default;
};

/// What to look for: the records of a type that have these values, newest `createdAt` first and those without one last.
struct RecordQuery {
    std::string recordType;
    std::map<std::string, CloudRecord::Value> equals{};  ///< empty: all
    std::size_t limit = 500;                             ///< rows of one page
    std::optional<RecordCursor> after{};                 ///< none: the first page
};

/// A row that can't be read as a record.
struct UnreadableRow {
    std::string recordName;
    std::string reason;
    friend bool operator==(const UnreadableRow&, const UnreadableRow&) = default;
};

struct QueryPage {
    std::vector<std::variant<CloudRecord, UnreadableRow>> rows{};
    std::optional<RecordCursor> next{};  ///< none: there is nothing behind the page
};

/// What became of one record of a batch.
struct SaveResult {
    std::string recordName;
    std::optional<std::string> error{};  ///< in one line; none: it is saved
    friend bool operator==(const SaveResult&, const SaveResult&) = default;
};

/// One connection to the cloud, which opens with the first question and closes with the session. Every call blocks
/// until there is an answer or its patience ends, and throws `CloudFailure` where there is none; so it belongs on a
/// worker, one call at a time.
class RecordSession {
public:
    virtual ~RecordSession() = default;

    /// Never throws: what can't be found out is `couldNotDetermine`. `reason` (if given) takes one line that says why
    /// it isn't `available`.
    [[nodiscard]] virtual AccountStatus accountStatus(std::string* reason = nullptr) = 0;

    /// Saves a batch. Of a record that is there already the keys that come replace their values and the others stay, so
    /// that saving twice does no harm. The answers stand in the order of the records; a record that is refused leaves
    /// the others saved. Throws if the whole batch failed.
    [[nodiscard]] virtual std::vector<SaveResult> modify(DatabaseScope scope,
                                                         const std::vector<CloudRecord>& records) = 0;

    /// One page of what the query finds.
    [[nodiscard]] virtual QueryPage query(DatabaseScope scope, const RecordQuery& query) = 0;

    /// How many records of the type there are.
    [[nodiscard]] virtual std::size_t count(DatabaseScope scope, const std::string& recordType) = 0;

    /// The record of the name; none if there is none that this user may see.
    [[nodiscard]] virtual std::optional<CloudRecord> record(DatabaseScope scope, const std::string& recordName) = 0;

    /// Throws `recordNotFound` if there is no such record of this user's.
    virtual void deleteRecord(DatabaseScope scope, const std::string& recordName) = 0;

    /// Ends the session: what runs is called off on the server, too, and fails soon as `cancelled`; so does every later
    /// call. From any thread, and at once.
    virtual void cancel() = 0;
};

/// Where a user's cloud records live.
class RecordContainer {
public:
    virtual ~RecordContainer() = default;

    /// Opens no connection yet. The session may outlive the container.
    [[nodiscard]] virtual std::shared_ptr<RecordSession> newSession() = 0;
};

/// The cloud service of this machine, if it carries one.
struct CloudService {
    /// Looks at settings alone: no connection, no name resolution.
    std::function<bool()> isConfigured;
    /// Called only after that was true.
    std::function<std::unique_ptr<RecordContainer>()> makeContainer;
};

}  // namespace quorvane::platform
