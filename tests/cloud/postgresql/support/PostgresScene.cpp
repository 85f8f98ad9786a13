#include "cloud/postgresql/support/PostgresScene.h"

#include "desktop/support/Waiting.h"

#include <poll.h>

namespace quorvane {

void PostgresScene::SetUp() {
    if (!PostgresServer::isInstalled()) GTEST_SKIP() << "there is no PostgreSQL server on this machine";
    environment_.set("HOME", home_.path().string());
    environment_.set("PGPASSFILE", (home_ / "pgpass").string());
    environment_.set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (home_ / "no-bus").string());
    for (const char* name : {"PGSSLMODE", "PGSSLROOTCERT", "PGHOST", "PGPORT", "PGUSER", "PGPASSWORD", "PGSERVICE"})
        environment_.unset(name);
}

PostgresServer& PostgresScene::start(const PostgresSetUp& setUp) {
    server_.reset();
    server_ = std::make_unique<PostgresServer>(setUp);
    return *server_;
}

std::unique_ptr<postgresql::PostgresSession> PostgresScene::session(const std::string& user,
                                                                    const std::vector<std::string>& more,
                                                                    const postgresql::ConnectionSettings& settings) {
    environment_.set("PGSERVICEFILE", server_->serviceFile(user, more).string());
    return std::make_unique<postgresql::PostgresSession>(settings);
}

bool PostgresScene::answers(const std::string& sql, const std::string& expected) const {
    const auto end = uptime() + 10s;
    while (server_->sql("admin", sql) != expected) {
        if (uptime() > end) return false;
        ::poll(nullptr, 0, 10);
    }
    return true;
}

platform::CloudFailure failureOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const platform::CloudFailure& failure) {
        return failure;
    }
    ADD_FAILURE() << "it did not fail";
    return {platform::CloudFailure::Kind::refused, ""};
}

platform::CloudRecord activity(const std::string& name, const std::string& title) {
    return {.recordType = "ActivityRecord", .recordName = name, .values = {{"windowTitle", title}}};
}

platform::CloudRecord share(const std::string& token, const std::string& title) {
    return {.recordType = "ActivityShare", .recordName = token, .values = {{"isActive", true}, {"title", title}}};
}

}  // namespace quorvane
