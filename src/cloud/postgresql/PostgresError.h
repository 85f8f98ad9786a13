#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace quorvane::postgresql {

/// What went wrong between us and a server, as the server or libpq tells it.
class PostgresError : public std::runtime_error {
public:
    enum class Stage : std::uint8_t { connecting, statement };
    enum class Cause : std::uint8_t {
        told,       ///< by the server or by libpq
        timedOut,   ///< our patience ended; what was under way has been called off
        cancelled,  ///< by our token; the same
    };

    /// What was wrong with the certificate that the server showed.
    enum class Certificate : std::uint8_t { noObjection, expired, notYetValid, untrusted };

    struct Facts {
        Stage stage = Stage::statement;
        Cause cause = Cause::told;
        std::string sqlState{};         ///< five characters, or empty: libpq's own failures have none
        std::string message{};          ///< the primary message in one line, in the server's language. May quote data!
        bool isConnectionLost = false;  ///< the connection is of no use any more
        bool needsPassword = false;     ///< a password was wanted and none was found
        Certificate certificate = Certificate::noObjection;
        bool isKeyringLocked = false;  ///< and the keyring has one, but is locked
        std::string user{};            ///< role of the connection, if it was known already
    };

    explicit PostgresError(Facts facts) : std::runtime_error(facts.message), facts_(std::move(facts)) {}
    [[nodiscard]] const Facts& facts() const { return facts_; }
    [[nodiscard]] const std::string& sqlState() const { return facts_.sqlState; }

private:
    Facts facts_;
};

}  // namespace quorvane::postgresql
