#include "base/TestHost.h"

#include <cstdlib>

namespace quorvane {

bool isUnderTestHost() {
    return std::getenv("XCTestConfigurationFilePath") != nullptr;
}

}  // namespace quorvane
