#pragma once

#include "store/ActivityRecord.h"
#include "store/Project.h"
#include "store/StoreError.h"
#include "support/Builders.h"

#include <gmock/gmock.h>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace quorvane {

// How failed expectations show our values.
void PrintTo(const ActivityRecord& record, std::ostream* out);
void PrintTo(const Project& project, std::ostream* out);
void PrintTo(StoreError::Code code, std::ostream* out);

/// A record of the application, from start to end as `at` reads them; without an end it is open.
[[nodiscard]] testing::Matcher<std::shared_ptr<ActivityRecord>>
isRecord(std::string appName, std::string_view start, std::optional<std::string_view> end = std::nullopt);

/// The code and text of the `StoreError` that `work` throws; it fails the test if there is none.
template <class Work>
[[nodiscard]] StoreError storeErrorOf(Work work) {
    try {
        work();
    } catch (const StoreError& error) {
        return error;
    }
    ADD_FAILURE() << "no StoreError was thrown";
    return {StoreError::Code::failed, "none was thrown"};
}

}  // namespace quorvane
