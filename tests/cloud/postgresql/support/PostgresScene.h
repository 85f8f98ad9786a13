#pragma once

#include "cloud/postgresql/PostgresSession.h"
#include "cloud/postgresql/support/PostgresServer.h"
#include "desktop/support/Environment.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <functional>
#include <memory>

namespace quorvane {

/// A server, and a user whose settings lie in a folder of the test's own. Skips where there is no server to start.
class PostgresScene : public testing::Test {
protected:
    void SetUp() override;

    /// Starts it, another one than before if there is one already, and lets the service lead there.
    PostgresServer& start(const PostgresSetUp& setUp = {});
    [[nodiscard]] PostgresServer& server() { return *server_; }

    /// A session of the role; `more` are further lines of the service, `settings` the rest.
    [[nodiscard]] std::unique_ptr<postgresql::PostgresSession>
    session(const std::string& user = "alice", const std::vector<std::string>& more = {},
            const postgresql::ConnectionSettings& settings = {});

    /// Waits until the statement gives this answer to the superuser.
    [[nodiscard]] bool answers(const std::string& sql, const std::string& expected) const;

    Environment environment_;
    TemporaryFolder home_;
    std::unique_ptr<PostgresServer> server_;
};

/// What a call failed with; a failure of the test if it did not.
[[nodiscard]] platform::CloudFailure failureOf(const std::function<void()>& call);

[[nodiscard]] platform::CloudRecord activity(const std::string& name, const std::string& title = "title");
[[nodiscard]] platform::CloudRecord share(const std::string& token, const std::string& title = "title");

}  // namespace quorvane
