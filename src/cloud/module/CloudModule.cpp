#include "cloud/module/CloudModule.h"

#include "cloud/module/ServiceFile.h"

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

}  // namespace

CloudService cloudService() {
    return {.isConfigured = [] { return postgresql::ServiceFile::hasService(serviceName); },
            .makeContainer = [] { return load(installedFile()); }};
}

std::filesystem::path installedFile() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (program.parent_path() / "../lib/quorvane/quorvane-postgresql.so").lexically_normal();
}

std::unique_ptr<RecordContainer> load(const std::filesystem::path& file) {
    // It stays loaded: what it has made may outlive everybody who could unload it.
    void* const module = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* const symbol = module != nullptr ? ::dlsym(module, entryName) : nullptr;
    if (symbol == nullptr) {
        const char* const reason = ::dlerror();
        return std::make_unique<FailingContainer>(fmt::format("the client of the cloud database can't be loaded: {}",
                                                              reason != nullptr ? reason : file.string()));
    }
    return std::unique_ptr<RecordContainer>(reinterpret_cast<Entry>(symbol)());
}

}  // namespace quorvane::CloudModule
