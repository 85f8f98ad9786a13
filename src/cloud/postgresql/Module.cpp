#include "cloud/module/CloudModule.h"
#include "cloud/postgresql/PostgresAdministration.h"
#include "cloud/postgresql/PostgresContainer.h"

namespace {

constexpr quorvane::CloudModule::Door door{
    .makeContainer = []() -> std::unique_ptr<quorvane::platform::RecordContainer> {
        return std::make_unique<quorvane::postgresql::PostgresContainer>(
            quorvane::postgresql::ConnectionSettings{.service = quorvane::CloudModule::serviceName});
    },
    .makeAdministration = []() -> std::unique_ptr<quorvane::CloudAdministration> {
        return std::make_unique<quorvane::postgresql::PostgresAdministration>();
    }};

}  // namespace

extern "C" const quorvane::CloudModule::Door* quorvaneCloudDoor() {
    return &door;
}
