#include "cloud/postgresql/PostgresAdministration.h"

#include "cloud/postgresql/CloudInspection.h"
#include "cloud/postgresql/CloudSchema.h"
#include "cloud/postgresql/KeyringPassword.h"
#include "cloud/postgresql/PostgresFailure.h"
#include "cloud/postgresql/SchemaVersion.h"

namespace quorvane::postgresql {
namespace {

/// Does the work on a connection to the service; its failures come in words.
template <class Work>
auto onService(const std::string& service, const Work& work) {
    ConnectionSettings settings{.service = service};
    const CancelToken token;
    try {
        return work(*connectWithKeyring(settings, token));
    } catch (const PostgresError& error) {
        throw PostgresFailure::cloudFailure(error, PostgresFailure::Purpose::opening, service);
    }
}

}  // namespace

CloudAdministration::Installation PostgresAdministration::install(const std::string& service,
                                                                  const std::vector<std::string>& users) {
    return onService(service, [&](PostgresConnection& connection) {
        if (const auto objection = CloudSchema::objection(connection, users))
            throw platform::CloudFailure(platform::CloudFailure::Kind::refused, *objection);
        const int before = CloudSchema::migrate(connection);
        CloudSchema::addUsers(connection, users);
        return Installation{.before = before, .now = schemaVersion};
    });
}

std::string PostgresAdministration::script(const std::vector<std::string>& users) {
    return CloudSchema::script(users);
}

CloudDescription PostgresAdministration::describe(const std::string& service) {
    return onService(service, CloudInspection::describe);
}

CloudAdministration::Examination PostgresAdministration::examine(const std::string& service) {
    return onService(service, [](PostgresConnection& connection) {
        Examination examination{.description = CloudInspection::describe(connection)};
        examination.findings = CloudInspection::findings(connection, examination.description);
        return examination;
    });
}

}  // namespace quorvane::postgresql
