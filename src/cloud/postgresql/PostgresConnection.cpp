#include "cloud/postgresql/PostgresConnection.h"

#include <exception>
#include <poll.h>
#include <utility>

namespace quorvane::postgresql {

namespace {

/// How long calling a statement off on the server may take, its connection included.
constexpr Seconds callOffPatience = 1s;

Deadline in(Seconds patience) {
    return std::chrono::steady_clock::now() + std::chrono::duration_cast<std::chrono::milliseconds>(patience);
}

std::map<std::string, std::string> keywords(const ConnectionSettings& settings) {
    std::map<std::string, std::string> result{{"application_name", "Quorvane"}, {"client_encoding", "UTF8"}};
    if (!settings.service.empty()) result["service"] = settings.service;
    for (const auto& [key, value] : settings.overrides)
        result[key] = value;
    return result;
}

std::vector<const char*> pointers(const Parameters& parameters) {
    std::vector<const char*> result;
    result.reserve(parameters.size());
    for (const auto& parameter : parameters) {
        if (parameter && parameter->find('\0') != std::string::npos)  // it would end there and mean something else
            throw PostgresError({.sqlState = "22021", .message = "a parameter holds U+0000"});
        result.push_back(parameter ? parameter->c_str() : nullptr);
    }
    return result;
}

int sendQuery(PGconn* connection, const char* sql, const Parameters& parameters) {
    return PQsendQueryParams(connection, sql, static_cast<int>(parameters.size()), nullptr, pointers(parameters).data(),
                             nullptr, nullptr, 0);
}

bool isAnswer(ExecStatusType status) {
    return status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK || status == PGRES_EMPTY_QUERY;
}

std::string orEmpty(const char* text) {
    return text ? text : "";
}

PostgresError::Facts lostFacts(const std::string& message) {
    return {.message = message, .isConnectionLost = true};
}

}  // namespace

PostgresConnection::PostgresConnection(ConnectionSettings settings, const CancelToken& cancelToken)
    : settings_(std::move(settings)), cancelToken_(cancelToken),
      connection_(connectTo(keywords(settings_), in(settings_.connectPatience), cancelToken_)) {}

PostgresConnection::PostgresConnection(ConnectionSettings settings, const CancelToken& cancelToken, Deadline end)
    : settings_(std::move(settings)), cancelToken_(cancelToken), end_(end),
      connection_(connectTo(keywords(settings_), end, cancelToken_)) {}

PostgresResult PostgresConnection::execute(const char* sql, const Parameters& parameters) {
    const Deadline deadline = begin();
    flush(sendQuery(connection_.get(), sql, parameters), deadline);
    Result result = nextResult(deadline);
    if (!result) lose(PostgresError(lostFacts("the server gave no answer")));
    if (!isAnswer(PQresultStatus(result.get()))) {
        const PostgresError error = errorOf(result.get());
        expectNoMore(deadline);
        throw error;
    }
    expectNoMore(deadline);
    return PostgresResult(result.release());
}

void PostgresConnection::executeScript(const std::string& sql) {
    const Deadline deadline = begin();
    flush(PQsendQuery(connection_.get(), sql.c_str()), deadline);
    std::optional<PostgresError> error;
    while (const Result result = nextResult(deadline)) {
        const auto status = PQresultStatus(result.get());
        if (status == PGRES_COPY_IN || status == PGRES_COPY_OUT || status == PGRES_COPY_BOTH)
            lose(PostgresError(lostFacts("a script can't copy")));
        if (!isAnswer(status) && !error) error = errorOf(result.get());
    }
    if (error) throw PostgresError(*error);
}

void PostgresConnection::forEachRow(const char* sql, const Parameters& parameters,
                                    const std::function<void(const PostgresRow&)>& take) {
    const Deadline deadline = begin();
    flush(sendQuery(connection_.get(), sql, parameters), deadline);
    PQsetSingleRowMode(connection_.get());
    std::optional<PostgresError> error;
    while (const Result result = nextResult(deadline)) {
        if (PQresultStatus(result.get()) == PGRES_SINGLE_TUPLE) {
            isUsable_ = false;  // rows are under way: whatever leaves from here leaves them behind
            take(PostgresRow(result.get(), 0));
            isUsable_ = true;
        } else if (!isAnswer(PQresultStatus(result.get())) && !error) {
            error = errorOf(result.get());
        }
    }
    if (error) throw PostgresError(*error);
}

std::vector<std::variant<PostgresResult, PostgresError>>
PostgresConnection::executeEach(const char* sql, const std::vector<Parameters>& sets) {
    std::vector<std::variant<PostgresResult, PostgresError>> answers;
    if (sets.empty()) return answers;
    answers.reserve(sets.size());
    const Deadline deadline = begin();
    PGconn* connection = connection_.get();
    int sent = PQenterPipelineMode(connection);
    isUsable_ = false;  // until everything has come back
    for (const Parameters& parameters : sets)
        sent = sent && sendQuery(connection, sql, parameters) && PQpipelineSync(connection);
    flush(sent, deadline);

    const PostgresError none(lostFacts("the server gave no answer"));
    std::variant<PostgresResult, PostgresError> current = none;
    while (answers.size() < sets.size()) {
        Result result = nextResult(deadline);
        if (!result) {  // between two statements
            if (PQstatus(connection) != CONNECTION_OK) lose(errorOf(nullptr));
            continue;
        }
        const auto status = PQresultStatus(result.get());
        if (status == PGRES_PIPELINE_SYNC)
            answers.push_back(std::exchange(current, none));
        else if (isAnswer(status))
            current = PostgresResult(result.release());
        else
            current = errorOf(result.get());
        if (PQstatus(connection) != CONNECTION_OK) {
            if (const auto* error = std::get_if<PostgresError>(&current)) lose(*error);
            lose(errorOf(nullptr));
        }
    }
    isUsable_ = PQexitPipelineMode(connection) == 1;
    return answers;
}

std::string PostgresConnection::user() const {
    return orEmpty(PQuser(connection_.get()));
}

std::string PostgresConnection::database() const {
    return orEmpty(PQdb(connection_.get()));
}

std::string PostgresConnection::host() const {
    return orEmpty(PQhost(connection_.get()));
}

bool PostgresConnection::inTransaction() const {
    const auto status = PQtransactionStatus(connection_.get());
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

std::string PostgresConnection::tlsProtocol() const {
    const char* protocol = PQsslInUse(connection_.get()) ? PQsslAttribute(connection_.get(), "protocol") : nullptr;
    return orEmpty(protocol);
}

Deadline PostgresConnection::begin() {
    if (cancelToken_.isCancelled())
        lose(PostgresError({.cause = PostgresError::Cause::cancelled, .message = "cancelled"}));
    if (!isOpen()) throw PostgresError(lostFacts("the connection is closed"));
    return end_.value_or(in(settings_.patience));
}

void PostgresConnection::flush(int sent, Deadline deadline) {
    PGconn* connection = connection_.get();
    if (sent != 1) lose(errorOf(nullptr));
    for (int left = PQflush(connection); left != 0; left = PQflush(connection)) {
        if (left < 0) lose(errorOf(nullptr));
        // A server that is answering already may wait until we have read.
        waitFor(POLLIN | POLLOUT, deadline);
        if (PQconsumeInput(connection) != 1) return;  // what it said before it went is still to be read
    }
}

PostgresConnection::Result PostgresConnection::nextResult(Deadline deadline) {
    PGconn* connection = connection_.get();
    while (PQisBusy(connection) == 1 || cancelToken_.isCancelled()) {
        waitFor(POLLIN, deadline);
        if (PQconsumeInput(connection) == 1) continue;
        if (PQstatus(connection) == CONNECTION_OK) lose(errorOf(nullptr));
        break;  // no socket is left that the next call could wait for
    }
    return Result(PQgetResult(connection));
}

void PostgresConnection::expectNoMore(Deadline deadline) {
    while (const Result more = nextResult(deadline)) {
        const auto status = PQresultStatus(more.get());
        if (status == PGRES_COPY_IN || status == PGRES_COPY_OUT || status == PGRES_COPY_BOTH)
            lose(PostgresError(lostFacts("a statement can't copy")));
    }
}

void PostgresConnection::waitFor(short events, Deadline deadline) {
    const bool hasEvent = waitForEvents(PQsocket(connection_.get()), events, cancelToken_, deadline);
    const bool isCancelled = cancelToken_.isCancelled();
    if (hasEvent && !isCancelled) return;
    callOff();
    lose(PostgresError({.cause = isCancelled ? PostgresError::Cause::cancelled : PostgresError::Cause::timedOut,
                        .message = isCancelled ? "cancelled" : "the server does not answer"}));
}

/// Not `PQcancel`: on a server that stalls it blocks without bound, and it speaks in clear.
void PostgresConnection::callOff() noexcept {
    if (end_) return;
    try {
        ConnectionSettings settings = settings_;
        settings.overrides["host"] = PQhost(connection_.get());  // of several, the one that let us in
        settings.overrides["port"] = PQport(connection_.get());
        settings.overrides["hostaddr"] = PQhostaddr(connection_.get());
        const CancelToken nobodyCancels;
        PostgresConnection other(settings, nobodyCancels, in(callOffPatience));
        (void)other.execute("SELECT pg_catalog.pg_cancel_backend($1)",
                            {std::to_string(PQbackendPID(connection_.get()))});
    } catch (const std::exception&) {
        // It is as good as lost: the server ends the statement when it notices that nobody listens.
    }
}

PostgresError PostgresConnection::errorOf(const PGresult* result) const {
    const char* sqlState = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    const char* primary = PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
    return PostgresError({.sqlState = orEmpty(sqlState),
                          .message = oneLine(primary ? primary : PQerrorMessage(connection_.get())),
                          .isConnectionLost = PQstatus(connection_.get()) != CONNECTION_OK,
                          .user = user()});
}

void PostgresConnection::lose(const PostgresError& error) {
    isUsable_ = false;
    PostgresError::Facts facts = error.facts();
    facts.isConnectionLost = true;
    connection_.reset();  // at once: a server that waits to send its rows hears nothing else
    throw PostgresError(std::move(facts));
}

}  // namespace quorvane::postgresql
