#pragma once

#include "cli/ProgramRun.h"
#include "desktop/support/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// What kind of server a test wants.
struct PostgresSetUp {
    enum class Schema : std::uint8_t { none, first, newest };
    enum class Certificate : std::uint8_t { good, expired, ofAnotherAuthority };

    Schema schema = Schema::newest;
    Certificate certificate = Certificate::good;
    std::vector<std::string> settings{};  ///< lines of postgresql.conf
};

/// A PostgreSQL server of the test's own, on a Unix socket and with TLS on the loopback, with a database "quorvane". It
/// lasts as long as the object and not longer than the test's process.
///
/// Its roles: "alice" and "bob", members of quorvane_user; "rita", a member of quorvane_reader; "stranger", a member of
/// nothing; "owner", who owns the database, may create roles and is no superuser; "admin", who is one. Without a schema
/// the first three are members of nothing. The password of each is the name with "-pw" behind it.
class PostgresServer {
public:
    /// Throws where the server does not start.
    explicit PostgresServer(const PostgresSetUp& setUp = {});
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;
    ~PostgresServer();

    /// Are the server's programs on this machine?
    [[nodiscard]] static bool isInstalled();

    /// Writes a service file and gives its path: sections "quorvane", with this user, and "quorvane-owner". Both come
    /// over TLS and check the certificate. `more` are lines of both sections; they outweigh what is said here, and one
    /// such as "password=" takes a setting away.
    [[nodiscard]] std::filesystem::path serviceFile(const std::string& user = "alice",
                                                    const std::vector<std::string>& more = {}) const;

    /// What libpq has to know so that the role comes over the socket: its keywords, with the password.
    [[nodiscard]] std::map<std::string, std::string> access(const std::string& role,
                                                            const std::string& database = "quorvane") const;

    /// Folder of the socket, the service files and the certificates: ca.crt and server.crt.
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_.path(); }
    [[nodiscard]] int port() const { return port_; }

    /// Runs the statements as the role with psql, each in a transaction of its own, until the first that fails. Rows
    /// come with "|" between the columns; an error with its SQLSTATE.
    [[nodiscard]] ProgramResult psql(const std::string& role, const std::string& statements,
                                     const std::string& database = "quorvane") const;

    /// The same for what has to succeed, else it throws: rows without the last line's end.
    std::string sql(const std::string& role, const std::string& statements,
                    const std::string& database = "quorvane") const;

    void stop();    ///< Breaks all connections; nobody listens any more.
    void pause();   ///< It no longer answers, but its connections stay.
    void resume();  ///< after `pause`

    /// Breaks the connections of a role; how many they were.
    int terminateBackends(const std::string& role = "alice") const;

private:
    /// A descriptor; its closing tells the watcher that the test is gone.
    struct Watched {
        int number = -1;
        ~Watched();
    };

    void make(const std::string& certificate);
    [[nodiscard]] bool start();
    void furnish(PostgresSetUp::Schema schema) const;
    void signalAll(int signal) const;

    Watched watched_;  // first: the folder goes before it
    TemporaryFolder folder_;
    int port_ = 0;
    std::optional<ChildProcess> process_;
    bool isPaused_ = false;
};

/// The text of a migration as an installation has it: migrationText(1).
[[nodiscard]] std::string migrationText(int number);

}  // namespace quorvane
