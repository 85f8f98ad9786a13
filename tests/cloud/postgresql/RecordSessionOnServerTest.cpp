#include "cloud/RecordSessionContract.h"
#include "cloud/postgresql/PostgresContainer.h"
#include "cloud/postgresql/support/PostgresServer.h"

namespace quorvane {
namespace {

/// One server for all tests; each begins without a record in it.
std::unique_ptr<platform::RecordContainer> emptyContainer() {
    if (!PostgresServer::isInstalled()) return nullptr;
    static const PostgresServer server;
    server.sql("admin", "DELETE FROM quorvane.private_records; DELETE FROM quorvane.public_records;");
    return std::make_unique<postgresql::PostgresContainer>(
        postgresql::ConnectionSettings{.service = "", .overrides = server.access("alice")});
}

INSTANTIATE_TEST_SUITE_P(OnPostgres, RecordSessionContract, testing::Values(CloudMaker{"PostgreSQL", emptyContainer}),
                         cloudName);

}  // namespace
}  // namespace quorvane
