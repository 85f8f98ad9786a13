#pragma once

#include "cloud/postgresql/CancelToken.h"

#include <chrono>
#include <libpq-fe.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace quorvane::postgresql {

struct ConnectionFinish {
    void operator()(PGconn* connection) const { PQfinish(connection); }
};
using ConnectionHandle = std::unique_ptr<PGconn, ConnectionFinish>;
using Deadline = std::chrono::steady_clock::time_point;

/// Connects with libpq's keywords. The connection is non-blocking and silent. Throws `PostgresError`.
[[nodiscard]] ConnectionHandle connectTo(const std::map<std::string, std::string>& keywords, Deadline deadline,
                                         const CancelToken& cancelToken);

/// The code in what libpq says of a failed connection at its highest verbosity; empty if there is none.
[[nodiscard]] std::string sqlStateIn(std::string_view message);

/// The same without code, severity and whereabouts, in one line without control characters.
[[nodiscard]] std::string primaryMessageIn(std::string_view message);

/// In one line: what controls a terminal is a blank, and no two blanks follow each other.
[[nodiscard]] std::string oneLine(std::string_view text);

/// Waits until one of the events comes to the descriptor (true) or the deadline passes (false). The token's end counts
/// as an event: look at it afterwards. A descriptor below 0 has no events.
[[nodiscard]] bool waitForEvents(int descriptor, short events, const CancelToken& cancelToken, Deadline deadline);

}  // namespace quorvane::postgresql
