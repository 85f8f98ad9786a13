#pragma once

namespace quorvane {

/// Does a test host run this process? Then nothing starts by itself that reaches out of it. The host says so with the
/// environment key "XCTestConfigurationFilePath"; its value does not matter.
[[nodiscard]] bool isUnderTestHost();

}  // namespace quorvane
