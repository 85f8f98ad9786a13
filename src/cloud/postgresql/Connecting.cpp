#include "cloud/postgresql/Connecting.h"

#include "base/Text.h"
#include "cloud/postgresql/PostgresError.h"

#include <algorithm>
#include <cerrno>
#include <locale.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace quorvane::postgresql {

namespace {

using Certificate = PostgresError::Certificate;

/// One attempt to connect, which its thread and whoever waits for it share.
struct Attempt {
    CancelToken finished;
    CancelToken abandoned;
    ConnectionHandle connection;  ///< the waiting thread's once it has `finished`
    Certificate certificate = Certificate::noObjection;
};

/// The language of libpq's texts is that of the thread: some failures have no other sign than their English words. It
/// is "C" and no other, since to all others LANGUAGE gives another language still.
class EnglishMessages {
public:
    EnglishMessages() : english_(newlocale(LC_ALL_MASK, "C", nullptr)) {
        if (english_) before_ = uselocale(english_);
    }
    EnglishMessages(const EnglishMessages&) = delete;
    EnglishMessages& operator=(const EnglishMessages&) = delete;
    ~EnglishMessages() {
        if (!english_) return;
        uselocale(before_);
        freelocale(english_);
    }

private:
    locale_t english_;
    locale_t before_{};
};

Certificate objection(const SSL* ssl) {
    switch (SSL_get_verify_result(ssl)) {
    case X509_V_OK: return Certificate::noObjection;
    case X509_V_ERR_CERT_HAS_EXPIRED: return Certificate::expired;
    case X509_V_ERR_CERT_NOT_YET_VALID: return Certificate::notYetValid;
    default: return Certificate::untrusted;
    }
}

/// Sees the TLS sessions of this thread end. When a certificate fails libpq says no more than that, and has let go of
/// the session: of one whose server was quick to answer within the very step in which it was made.
class EndOfSessions {
public:
    EndOfSessions() {
        static const int registration =
            CRYPTO_get_ex_new_index(CRYPTO_EX_INDEX_SSL, 0, nullptr, nullptr, nullptr, note);
        (void)registration;
        watching_ = this;
    }
    EndOfSessions(const EndOfSessions&) = delete;
    EndOfSessions& operator=(const EndOfSessions&) = delete;
    ~EndOfSessions() { watching_ = nullptr; }

    /// What the last one that ended said of the server's certificate.
    [[nodiscard]] Certificate lastObjection() const { return lastObjection_; }

private:
    static void note(void* ssl, void*, CRYPTO_EX_DATA*, int, long, void*) {
        if (watching_) watching_->lastObjection_ = objection(static_cast<const SSL*>(ssl));
    }

    static thread_local EndOfSessions* watching_;
    Certificate lastObjection_ = Certificate::noObjection;
};
thread_local EndOfSessions* EndOfSessions::watching_ = nullptr;

void dropNotice(void*, const char*) {}

struct Keywords {
    std::vector<const char*> keys;
    std::vector<const char*> values;
};

Keywords asArrays(const std::map<std::string, std::string>& keywords) {
    Keywords arrays;
    arrays.keys.reserve(keywords.size() + 1);
    arrays.values.reserve(keywords.size() + 1);
    for (const auto& [key, value] : keywords) {
        arrays.keys.push_back(key.c_str());
        arrays.values.push_back(value.c_str());
    }
    arrays.keys.push_back(nullptr);
    arrays.values.push_back(nullptr);
    return arrays;
}

/// Goes through libpq's steps of connecting, as far as the deadline lets it. Those that resolve a name block for as
/// long as that takes.
void run(Attempt& attempt, const std::map<std::string, std::string>& settings, Deadline deadline) {
    const EnglishMessages english;
    const EndOfSessions sessions;
    const Keywords keywords = asArrays(settings);
    attempt.connection.reset(PQconnectStartParams(keywords.keys.data(), keywords.values.data(), 0));
    PGconn* connection = attempt.connection.get();
    PQsetNoticeProcessor(connection, dropNotice, nullptr);
    PQsetErrorVerbosity(connection, PQERRORS_VERBOSE);  // otherwise failures of connecting bear no code
    auto state = PQstatus(connection) == CONNECTION_BAD ? PGRES_POLLING_FAILED : PGRES_POLLING_WRITING;
    while (state != PGRES_POLLING_OK && state != PGRES_POLLING_FAILED) {
        const short events = state == PGRES_POLLING_READING ? POLLIN : POLLOUT;
        if (!waitForEvents(PQsocket(connection), events, attempt.abandoned, deadline)) return;
        if (attempt.abandoned.isCancelled()) return;
        state = PQconnectPoll(connection);
    }
    attempt.certificate = sessions.lastObjection();
    PQsetErrorVerbosity(connection, PQERRORS_DEFAULT);
    PQsetnonblocking(connection, 1);  // otherwise a full socket blocks whoever sends, and also who closes
}

}  // namespace

ConnectionHandle connectTo(const std::map<std::string, std::string>& keywords, Deadline deadline,
                           const CancelToken& cancelToken) {
    PostgresError::Facts facts{.stage = PostgresError::Stage::connecting, .isConnectionLost = true};
    if (cancelToken.isCancelled()) {
        facts.cause = PostgresError::Cause::cancelled;
        throw PostgresError(std::move(facts));
    }
    // At the end of the process the thread may still be at work.
    OPENSSL_init_ssl(OPENSSL_INIT_NO_ATEXIT, nullptr);
    const auto attempt = std::make_shared<Attempt>();
    // A thread of its own, because nothing can interrupt the resolution of a name. Nobody waits for it longer than he
    // likes: what it comes to then goes with the attempt.
    try {
        std::thread([attempt, keywords, deadline] {
            try {
                run(*attempt, keywords, deadline);
            } catch (const std::exception&) {  // the machine has no room left: there is no connection
                attempt->connection.reset();
            }
            attempt->finished.cancel();
        }).detach();
    } catch (const std::system_error& error) {
        facts.message = error.what();
        throw PostgresError(std::move(facts));
    }
    const bool isFinished = waitForEvents(attempt->finished.descriptor(), POLLIN, cancelToken, deadline);
    const bool isCancelled = cancelToken.isCancelled();
    if (!isFinished || isCancelled) {
        attempt->abandoned.cancel();
        facts.cause = isCancelled ? PostgresError::Cause::cancelled : PostgresError::Cause::timedOut;
        facts.message = isCancelled ? "connecting was cancelled" : "the server does not answer";
        throw PostgresError(std::move(facts));
    }
    PGconn* connection = attempt->connection.get();
    if (PQstatus(connection) == CONNECTION_OK) return std::move(attempt->connection);
    // Its thread ends at the same deadline, and may be the first to notice.
    if (connection && PQstatus(connection) != CONNECTION_BAD) {
        facts.cause = PostgresError::Cause::timedOut;
        facts.message = "the server does not answer";
        throw PostgresError(std::move(facts));
    }
    const char* message = PQerrorMessage(connection);
    const char* user = PQuser(connection);
    facts.sqlState = sqlStateIn(message);
    facts.message = primaryMessageIn(message);
    facts.needsPassword = PQconnectionNeedsPassword(connection) == 1;
    facts.certificate = attempt->certificate;
    facts.user = user ? user : "";
    throw PostgresError(std::move(facts));
}

std::string sqlStateIn(std::string_view message) {
    const auto isCodeCharacter = [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); };
    for (auto at = message.find(":  "); at != std::string_view::npos; at = message.find(":  ", at + 1)) {
        const std::string_view rest = message.substr(at + 3);
        if (rest.size() >= 6 && rest[5] == ':' && std::all_of(rest.begin(), rest.begin() + 5, isCodeCharacter))
            return std::string(rest.substr(0, 5));
    }
    return {};
}

std::string primaryMessageIn(std::string_view message) {
    const std::string sqlState = sqlStateIn(message);
    if (sqlState.empty()) return oneLine(message);
    const std::string_view primary = message.substr(message.find(":  " + sqlState + ":") + 3 + sqlState.size() + 1);
    return oneLine(primary.substr(0, primary.find('\n')));
}

std::string oneLine(std::string_view text) {
    std::string line;
    const std::string valid = text::validUtf8(text);
    for (std::size_t i = 0; i < valid.size(); ++i) {
        // C1 controls are two bytes in UTF-8: C2 80 to C2 9F.
        const auto byte = static_cast<unsigned char>(valid[i]);
        const bool isC1 = byte == 0xC2 && i + 1 < valid.size() && static_cast<unsigned char>(valid[i + 1]) < 0xA0;
        const bool isBlank = byte <= 0x20 || byte == 0x7F || isC1;
        if (isC1) ++i;
        if (!isBlank)
            line += valid[i];
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    if (!line.empty() && line.back() == ' ') line.pop_back();
    return line;
}

bool waitForEvents(int descriptor, short events, const CancelToken& cancelToken, Deadline deadline) {
    pollfd polled[] = {{cancelToken.descriptor(), POLLIN, 0}, {descriptor, events, 0}};
    while (!cancelToken.isCancelled()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return false;
        const auto most = std::min<std::chrono::milliseconds::rep>(left.count(), 60'000);
        const int ready = poll(polled, 2, static_cast<int>(most));
        if (ready > 0) return true;
        if (ready < 0 && errno != EINTR) throw std::system_error(errno, std::generic_category(), "poll");
    }
    return true;
}

}  // namespace quorvane::postgresql
