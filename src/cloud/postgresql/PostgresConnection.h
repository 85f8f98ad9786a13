#pragma once

#include "base/Date.h"
#include "cloud/postgresql/CancelToken.h"
#include "cloud/postgresql/Connecting.h"
#include "cloud/postgresql/PostgresError.h"
#include "cloud/postgresql/PostgresResult.h"

#include <functional>
#include <libpq-fe.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quorvane::postgresql {

/// Where to connect to, and how long to wait.
struct ConnectionSettings {
    std::string service = "quorvane";                ///< section of the service file; empty: none
    std::map<std::string, std::string> overrides{};  ///< libpq's keywords; they win over the service's
    Seconds connectPatience = 10s;                   ///< until the server has let us in
    Seconds patience = 30s;                          ///< until a call has its whole answer
};

/// Parameters in text form, `$1` first; none is NULL.
using Parameters = std::vector<std::optional<std::string>>;

/// A connection to a server. Not for two threads at once. Every call blocks until its answer is there, its patience
/// ends or `cancelToken` is cancelled, and throws `PostgresError`. In the last two cases the statement is called off on
/// the server, too, and the connection is closed. What is asked about it then is empty or 0.
class PostgresConnection {
public:
    /// Connects. The token outlives the connection.
    PostgresConnection(ConnectionSettings settings, const CancelToken& cancelToken);
    PostgresConnection(const PostgresConnection&) = delete;
    PostgresConnection& operator=(const PostgresConnection&) = delete;
    ~PostgresConnection() = default;

    /// One statement, with its whole answer.
    PostgresResult execute(const char* sql, const Parameters& parameters = {});

    /// Statements without parameters, one after another up to the first that fails; what they answer is dropped.
    /// Without BEGIN and COMMIT among them they are one transaction.
    void executeScript(const std::string& sql);

    /// One query, its rows as they come: memory holds one of them. What `take` throws ends the connection.
    void forEachRow(const char* sql, const Parameters& parameters, const std::function<void(const PostgresRow&)>& take);

    /// The same statement for each set of parameters, each in a transaction of its own, in one round trip. The answers
    /// stand in the order of the sets. Throws only for what concerns them all.
    std::vector<std::variant<PostgresResult, PostgresError>> executeEach(const char* sql,
                                                                         const std::vector<Parameters>& sets);

    [[nodiscard]] bool isOpen() const { return isUsable_ && PQstatus(connection_.get()) == CONNECTION_OK; }
    /// Between BEGIN and COMMIT, also when a statement there has failed.
    [[nodiscard]] bool inTransaction() const;
    [[nodiscard]] std::string user() const;
    [[nodiscard]] std::string database() const;
    /// Name, address or folder of the socket.
    [[nodiscard]] std::string host() const;
    /// "TLSv1.3"; empty without TLS.
    [[nodiscard]] std::string tlsProtocol() const;

private:
    using Result = std::unique_ptr<PGresult, ResultClear>;

    PostgresConnection(ConnectionSettings settings, const CancelToken& cancelToken, Deadline end);

    Deadline begin();
    void flush(int sent, Deadline deadline);
    Result nextResult(Deadline deadline);
    void expectNoMore(Deadline deadline);
    void waitFor(short events, Deadline deadline);
    void callOff() noexcept;
    [[nodiscard]] PostgresError errorOf(const PGresult* result) const;
    [[noreturn]] void lose(const PostgresError& error);

    ConnectionSettings settings_;
    const CancelToken& cancelToken_;
    std::optional<Deadline> end_;  ///< of one that is made to call another off: it lives no longer
    bool isUsable_ = true;
    ConnectionHandle connection_;
};

}  // namespace quorvane::postgresql
