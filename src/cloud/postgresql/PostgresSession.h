#pragma once

#include "cloud/postgresql/CancelToken.h"
#include "cloud/postgresql/PostgresConnection.h"
#include "cloud/postgresql/PostgresFailure.h"
#include "platform/RecordContainer.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvane::postgresql {

/// The records on a PostgreSQL server, both databases over one connection. A connection that broke is not mended within
/// a call: that call fails, and the next one connects anew.
class PostgresSession : public platform::RecordSession {
public:
    explicit PostgresSession(ConnectionSettings settings);

    platform::AccountStatus accountStatus(std::string* reason) override;
    std::vector<platform::SaveResult> modify(platform::DatabaseScope scope,
                                             const std::vector<platform::CloudRecord>& records) override;
    platform::QueryPage query(platform::DatabaseScope scope, const platform::RecordQuery& query) override;
    std::size_t count(platform::DatabaseScope scope, const std::string& recordType) override;
    std::optional<platform::CloudRecord> record(platform::DatabaseScope scope, const std::string& recordName) override;
    void deleteRecord(platform::DatabaseScope scope, const std::string& recordName) override;
    void cancel() override { cancelToken_.cancel(); }

private:
    PostgresConnection& connection();
    void findOutRights();
    template <class Work>
    auto ask(PostgresFailure::Purpose purpose, const Work& work);

    ConnectionSettings settings_;
    CancelToken cancelToken_;
    std::unique_ptr<PostgresConnection> connection_;
};

}  // namespace quorvane::postgresql
