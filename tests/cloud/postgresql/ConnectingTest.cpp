#include "cloud/module/CloudModule.h"
#include "cloud/postgresql/support/PostgresScene.h"

#include <atomic>
#include <filesystem>
#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>

namespace {
std::atomic<bool> readsLate = false;
}

/// Stands in for the C library's, which libpq reads with. When it is late the server has answered before libpq looks.
extern "C" ssize_t recv(int socket, void* buffer, std::size_t length, int flags) {
    if (readsLate) ::poll(nullptr, 0, 20);
    return ::recvfrom(socket, buffer, length, flags, nullptr, nullptr);
}

namespace quorvane {
namespace {

using namespace platform;
using Kind = CloudFailure::Kind;
using Lines = std::vector<std::string>;

class ConnectingTest : public PostgresScene {
protected:
    CloudFailure failureWith(const Lines& more, const std::string& user = "alice") {
        const auto asked = session(user, more);
        return failureOf([&] { (void)asked->count(DatabaseScope::privateData, "ActivityRecord"); });
    }

    [[nodiscard]] bool connectsWith(const Lines& more, const std::string& user = "alice") {
        return session(user, more)->accountStatus(nullptr) == AccountStatus::available;
    }
};

TEST_F(ConnectingTest, EachObstacleHasItsOwnWords) {
    start();
    server().sql("admin", "CREATE ROLE locked NOLOGIN PASSWORD 'locked-pw'; ALTER ROLE bob CONNECTION LIMIT 0; "
                          "CREATE DATABASE closed; REVOKE CONNECT ON DATABASE closed FROM PUBLIC;");
    const std::tuple<const char*, Lines, Kind, std::string> rows[] = {
        {"alice", {"password=wrong"}, Kind::noAccount, "The server refuses the password of role \"alice\""},
        {"nobody", {}, Kind::noAccount, "The server refuses the password of role \"nobody\""},
        {"alice", {"password="}, Kind::noAccount, "The server wants a password for role \"alice\""},
        {"locked", {}, Kind::noAccount, "Role \"locked\" may not log in there"},
        {"alice", {"dbname=nowhere"}, Kind::noAccount, "The server has no such database: database \"nowhere\""},
        {"alice", {"dbname=closed"}, Kind::noAccount, "Role \"alice\" has no right to the database"},
        {"bob", {}, Kind::busy, "The server has too many connections already"},
        {"alice", {"host=127.0.0.1"}, Kind::insecure, "The server's certificate is of another host"},
        {"alice", {"sslrootcert=/nowhere.crt"}, Kind::insecure, "The authority that vouches for the server can't"},
        {"alice", {"port=1"}, Kind::unreachable, "Nobody takes connections where the server should be"},
        {"alice", {"host=/nowhere", "hostaddr="}, Kind::unreachable, "No server runs where its socket should be"},
        {"alice", {"host=nowhere.invalid", "hostaddr="}, Kind::unreachable, "Nobody knows the server's name"},
        {"alice", {"colour=blue"}, Kind::unreachable, "The settings of service \"quorvane\" can't be read: syntax"},
    };
    for (const auto& [user, more, kind, words] : rows) {
        SCOPED_TRACE(words);
        const CloudFailure failure = failureWith(more, user);
        EXPECT_EQ(failure.kind(), kind);
        EXPECT_THAT(failure.what(), StartsWith(words));
    }
    EXPECT_THAT(failureWith({"colour=blue"}).what(), HasSubstr(", line 2"));
    EXPECT_TRUE(connectsWith({}));

    postgresql::PostgresSession nowhere({.service = "nowhere"});
    std::string reason;
    EXPECT_EQ(nowhere.accountStatus(&reason), AccountStatus::couldNotDetermine);
    EXPECT_THAT(reason, StartsWith("There are no settings for service \"nowhere\""));

    server().stop();
    EXPECT_EQ(failureWith({}).kind(), Kind::unreachable);
}

TEST_F(ConnectingTest, TheWordsDoNotDependOnTheLanguageOfTheUser) {
    start();
    environment_.set("LC_ALL", "de_DE.UTF-8");
    environment_.set("LANGUAGE", "de");
    EXPECT_EQ(failureWith({"host=127.0.0.1"}).kind(), Kind::insecure);
    EXPECT_THAT(failureWith({"port=1"}).what(), HasSubstr("Connection refused"));
}

TEST_F(ConnectingTest, APasswordFileCountsIfNobodyElseMayReadIt) {
    start();
    writeFile(home_ / "pgpass", fmt::format("localhost:{}:quorvane:alice:alice-pw\n", server().port()));
    using std::filesystem::perms;
    std::filesystem::permissions(home_ / "pgpass", perms::owner_read | perms::owner_write);
    EXPECT_TRUE(connectsWith({"password="}));
    std::filesystem::permissions(home_ / "pgpass", perms::owner_read | perms::owner_write | perms::others_read);
    const CloudFailure failure = failureWith({"password="});
    EXPECT_EQ(failure.kind(), Kind::noAccount);
    EXPECT_THAT(failure.what(), HasSubstr("mode 0600"));
}

TEST_F(ConnectingTest, AServerMustProveWhoItIsUnlessTheSettingsAskForLess) {
    const std::pair<PostgresSetUp, const char*> rows[] = {
        {{.certificate = PostgresSetUp::Certificate::expired}, "The server's certificate has expired"},
        {{.certificate = PostgresSetUp::Certificate::ofAnotherAuthority},
         "The server's certificate comes from nobody whom the settings trust"},
        {{.settings = {"ssl = off"}}, "The server offers no encryption, and the settings ask for it"},
    };
    for (const auto& [setUp, words] : rows) {
        SCOPED_TRACE(words);
        start(setUp);
        for (const bool late : {false, true}) {
            readsLate = late;
            EXPECT_THAT(failureWith({}).what(), StartsWith(words)) << late;
        }
        readsLate = false;
        EXPECT_TRUE(connectsWith({"sslmode=prefer"}));

        // Where the service says nothing.
        std::string file = contentOf(server().serviceFile());
        for (std::size_t at = file.find("sslmode"); at != std::string::npos; at = file.find("sslmode"))
            file.erase(at, file.find('\n', at) + 1 - at);
        writeFile(home_ / "service", file);
        environment_.set("PGSERVICEFILE", (home_ / "service").string());
        postgresql::PostgresSession alice({});
        environment_.unset("PGSSLMODE");
        CloudModule::verifyServersByDefault();
        std::string reason;
        EXPECT_EQ(alice.accountStatus(&reason), AccountStatus::couldNotDetermine);
        EXPECT_THAT(reason, StartsWith(words));
        environment_.set("PGSSLMODE", "prefer");
        CloudModule::verifyServersByDefault();
        EXPECT_EQ(alice.accountStatus(&reason), AccountStatus::available);
    }
}

}  // namespace
}  // namespace quorvane
