#include "cloud/RecordSessionContract.h"
#include "platform/simulated/SimulatedRecordContainer.h"

namespace quorvane {
namespace {

std::unique_ptr<platform::RecordContainer> emptyContainer() {
    static platform::SimulatedCloud cloud;
    cloud = {};
    return std::make_unique<platform::SimulatedRecordContainer>(cloud);
}

INSTANTIATE_TEST_SUITE_P(Simulated, RecordSessionContract, testing::Values(CloudMaker{"Simulated", emptyContainer}),
                         cloudName);

}  // namespace
}  // namespace quorvane
