#include "cloud/postgresql/KeyringPassword.h"

#include "cloud/postgresql/support/PostgresScene.h"
#include "desktop/support/DesktopSession.h"
#include "desktop/support/Waiting.h"

#include <QCoreApplication>
#include <csignal>
#include <fmt/format.h>
#include <future>
#include <libsecret/secret.h>

namespace quorvane {
namespace {

using postgresql::CancelToken;
using postgresql::keyringPassword;

bool isInstalled(const char* program) {
    return run({"sh", "-c", fmt::format("command -v {} >/dev/null", program)}) == 0;
}

bool hasKeyring() {
    return run({"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.GetNameOwner", "org.freedesktop.secrets"}) ==
           0;
}

/// A bus of the test's own with an open keyring on it, which holds alice's password.
class KeyringPasswordTest : public testing::Test {
protected:
    void SetUp() override {
        if (!isInstalled("gnome-keyring-daemon")) GTEST_SKIP() << "there is no keyring on this machine";
        ASSERT_TRUE(waitUntil(hasKeyring));
        store("alice", "alice-pw");
    }

    static void store(const std::string& user, const std::string& password) {
        GHashTable* attributes = g_hash_table_new(g_str_hash, g_str_equal);
        for (const auto& [key, value] :
             {std::pair("application", "quorvane"), std::pair("service", "quorvane"), std::pair("user", user.c_str())})
            g_hash_table_insert(attributes, const_cast<char*>(key), const_cast<char*>(value));
        GError* error = nullptr;
        secret_password_storev_sync(nullptr, attributes, nullptr, "Quorvane", password.c_str(), nullptr, &error);
        ASSERT_EQ(error, nullptr) << error->message;
        g_hash_table_unref(attributes);
    }

    static void lock() {
        SecretService* service = secret_service_get_sync(SECRET_SERVICE_LOAD_COLLECTIONS, nullptr, nullptr);
        GList* collections = secret_service_get_collections(service);
        EXPECT_GT(secret_service_lock_sync(service, collections, nullptr, nullptr, nullptr), 0);
        g_list_free_full(collections, g_object_unref);
        g_object_unref(service);
        secret_service_disconnect();
    }

    int arguments_ = 0;
    QCoreApplication application_{arguments_, nullptr};
    DesktopSession session_{{.display = false, .windowManager = false}};
    ChildProcess keyring_{
        {"bash", "-c", "exec gnome-keyring-daemon --foreground --unlock --components=secrets <<< word"}};
    CancelToken token_;
};

// One test: libsecret and GLib keep to the bus that they met first.
TEST_F(KeyringPasswordTest, FindsThePasswordOfTheUserAndNeverWaitsForOneThatIsLockedOrDoesNotCome) {
    const auto ask = [&](const char* user, Seconds patience = 10s) {
        return keyringPassword("quorvane", user, patience, token_);
    };
    EXPECT_EQ(ask("alice").password, "alice-pw");
    EXPECT_EQ(ask("bob").password, std::nullopt);
    EXPECT_EQ(keyringPassword("other", "alice", 10s, token_).password, std::nullopt);
    EXPECT_EQ(std::async(std::launch::async, [&] { return ask("alice").password; }).get(), "alice-pw");

    if (PostgresServer::isInstalled()) {
        const PostgresServer server;
        std::string reason;
        const auto statusOf = [&](const char* user) {
            session_.environment().set("PGSERVICEFILE", server.serviceFile(user, {"password="}).string());
            return postgresql::PostgresSession({}).accountStatus(&reason);
        };
        EXPECT_EQ(statusOf("alice"), platform::AccountStatus::available) << reason;
        store("bob", "wrong");
        EXPECT_EQ(statusOf("bob"), platform::AccountStatus::noAccount);
        EXPECT_THAT(reason, StartsWith("The server refuses the password of role \"bob\""));
        lock();
        EXPECT_EQ(statusOf("alice"), platform::AccountStatus::noAccount);
        EXPECT_THAT(reason, HasSubstr("the keyring that holds it is locked"));
    }

    keyring_.send(SIGSTOP);
    const Seconds begin = uptime();
    EXPECT_EQ(ask("alice", 0.3s).password, std::nullopt);
    const Seconds waited = uptime() - begin;
    EXPECT_GE(waited, 0.3s);
    EXPECT_LT(waited, 2s);
    auto cancelled = std::async(std::launch::async, [&] {
        (void)ask("alice", 30s);
        return uptime();
    });
    const Seconds cancelledAt = uptime();
    token_.cancel();
    EXPECT_LT(cancelled.get() - cancelledAt, 2s);
}

}  // namespace
}  // namespace quorvane
