#pragma once

#include "cloud/postgresql/PostgresError.h"
#include "platform/CloudFailure.h"
#include "platform/RecordContainer.h"

#include <cstdint>
#include <string>
#include <string_view>

/// What the failures of a server mean to those who keep records there.
namespace quorvane::postgresql::PostgresFailure {

/// What the statement was for.
enum class Purpose : std::uint8_t { opening, reading, writing };

/// In words that name the service and say what to do. The server's own message comes with them only where it can quote
/// nothing of a record.
[[nodiscard]] platform::CloudFailure cloudFailure(const PostgresError& error, Purpose purpose,
                                                  const std::string& service = "quorvane");

/// The database's schema is of another version than `schemaVersion`.
[[nodiscard]] platform::CloudFailure otherSchema(int version);

[[nodiscard]] platform::AccountStatus accountStatus(platform::CloudFailure::Kind kind);

/// Whom a failed batch of records blames.
enum class Blame : std::uint8_t {
    records,  ///< one or several: they go one by one, so that the others are saved
    nobody,   ///< others were at work on the same rows: the batch goes again
    batch,    ///< no record would fare better alone
};
[[nodiscard]] Blame blame(const PostgresError& error);

/// Why a record was refused, without a word of what is in it.
[[nodiscard]] std::string refusal(std::string_view sqlState);

}  // namespace quorvane::postgresql::PostgresFailure
