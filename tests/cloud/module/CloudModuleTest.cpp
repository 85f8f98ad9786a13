#include "cloud/module/CloudModule.h"

#include "desktop/support/Environment.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

namespace quorvane {
namespace {

using platform::AccountStatus;
using platform::CloudFailure;

std::string reasonOf(platform::RecordContainer& container) {
    std::string reason;
    EXPECT_NE(container.newSession()->accountStatus(&reason), AccountStatus::available);
    return reason;
}

TEST(CloudModuleTest, TheModuleOpensItsDoorAndItsFailuresAreKnownHere) {
    const TemporaryFolder folder;
    Environment environment;
    environment.set("PGSERVICEFILE", (folder / "services").string());
    writeFile(folder / "services", "[quorvane]\nhost=/nowhere\nuser=alice\n");
    const auto container = CloudModule::containerOf(QUORVANE_CLOUD_MODULE);
    EXPECT_THAT(reasonOf(*container), HasSubstr("/nowhere"));
    EXPECT_THROW(static_cast<void>(container->newSession()->count(platform::DatabaseScope::privateData, "Probe")),
                 CloudFailure);
}

TEST(CloudModuleTest, AModuleThatIsMissingOrNoneFailsInWords) {
    const TemporaryFolder folder;
    writeFile(folder / "text.so", "no module");
    for (const char* name : {"missing.so", "text.so"}) {
        const auto container = CloudModule::containerOf(folder / name);
        EXPECT_THAT(reasonOf(*container),
                    AllOf(HasSubstr("The client of the cloud database can't be loaded"), HasSubstr(name)));
        EXPECT_THROW(static_cast<void>(container->newSession()->record(platform::DatabaseScope::publicData, "token")),
                     CloudFailure);
    }
}

}  // namespace
}  // namespace quorvane
