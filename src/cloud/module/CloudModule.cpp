#include "cloud/module/CloudModule.h"

#include "cloud/module/ServiceFile.h"

#include <cstdlib>
#include <dlfcn.h>
#include <fmt/format.h>
#include <system_error>

namespace quorvane::CloudModule {
namespace {

using namespace platform;

/// What stands in for the cloud where it can't be reached for a reason of ours.
class FailingSession final : public RecordSession {
public:
    explicit FailingSession(std::string reason) : reason_(std::move(reason)) {}

    AccountStatus accountStatus(std::string* reason) override {
        if (reason != nullptr) *reason = reason_;
        return AccountStatus::couldNotDetermine;
    }
    std::vector<SaveResult> modify(DatabaseScope, const std::vector<CloudRecord>&) override { fail(); }
    QueryPage query(DatabaseScope, const RecordQuery&) override { fail(); }
    std::size_t count(DatabaseScope, const std::string&) override { fail(); }
    std::optional<CloudRecord> record(DatabaseScope, const std::string&) override { fail(); }
    void deleteRecord(DatabaseScope, const std::string&) override { fail(); }
    void cancel() override {}

private:
    [[noreturn]] void fail() const { throw CloudFailure(CloudFailure::Kind::unreachable, reason_); }
    std::string reason_;
};

class FailingContainer final : public RecordContainer {
public:
    explicit FailingContainer(std::string reason) : reason_(std::move(reason)) {}
    std::shared_ptr<RecordSession> newSession() override { return std::make_shared<FailingSession>(reason_); }

private:
    std::string reason_;
};

/// Where an installation has it, and a build: ../lib/quorvane as seen from the program's folder.
std::filesystem::path installedModule() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (program.parent_path() / "../lib/quorvane/quorvane-postgresql.so").lexically_normal();
}

/// Throws `CloudFailure`.
const Door& doorOf(const std::filesystem::path& file) {
    // It stays loaded: what it has made may outlive everybody who could unload it.
    void* const module = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* const symbol = module != nullptr ? ::dlsym(module, doorName) : nullptr;
    if (symbol == nullptr) {
        const char* const reason = ::dlerror();
        throw CloudFailure(CloudFailure::Kind::unreachable,
                           fmt::format("The client of the cloud database can't be loaded: {}",
                                       reason != nullptr ? reason : file.string()));
    }
    return *reinterpret_cast<const Door* (*)()>(symbol)();
}

}  // namespace

CloudService cloudService() {
    return {.isConfigured = [] { return ServiceFile::hasService(serviceName); },
            .makeContainer = [] { return containerOf(installedModule()); }};
}

std::unique_ptr<RecordContainer> containerOf(const std::filesystem::path& module) {
    try {
        return doorOf(module).makeContainer();
    } catch (const CloudFailure& failure) {
        return std::make_unique<FailingContainer>(failure.what());
    }
}

std::unique_ptr<CloudAdministration> administration() {
    return doorOf(installedModule()).makeAdministration();
}

void verifyServersByDefault() {
    ::setenv("PGSSLMODE", "verify-full", 0);
}

}  // namespace quorvane::CloudModule
