#pragma once

#include "platform/RecordContainer.h"
#include "support/Matching.h"

#include <functional>
#include <memory>

namespace quorvane {

/// A kind of cloud, for the tests that each has to pass.
struct CloudMaker {
    std::string name;  ///< letters only
    /// A container with no records in it. Empty where there is no such cloud on this machine.
    std::function<std::unique_ptr<platform::RecordContainer>()> make;
};

/// What whoever keeps records in a cloud relies on. A test program that compiles the tests in names its clouds by
///     INSTANTIATE_TEST_SUITE_P(Simulated, RecordSessionContract, testing::Values(CloudMaker{...}), cloudName);
class RecordSessionContract : public testing::TestWithParam<CloudMaker> {
protected:
    void SetUp() override;

    std::unique_ptr<platform::RecordContainer> container_;
    std::shared_ptr<platform::RecordSession> session_;
};

[[nodiscard]] std::string cloudName(const testing::TestParamInfo<CloudMaker>& maker);

}  // namespace quorvane
