#pragma once

#include "cli/CommandContext.h"
#include "store/Database.h"

#include <filesystem>
#include <memory>
#include <string>

namespace quorvane::cli {

/// A store that is filled beside its place and takes that place once it is whole. Until then, and for good when filling
/// it fails, nothing stands there.
class NewStore {
public:
    /// Throws `CommandError`, as opening a store does.
    explicit NewStore(std::filesystem::path place);
    NewStore(const NewStore&) = delete;
    NewStore& operator=(const NewStore&) = delete;
    ~NewStore();

    [[nodiscard]] Database& database() { return *database_; }

    /// Moves it to its place. Throws `StoreError`, or `CommandError` when somebody else has taken the place meanwhile.
    void takePlace();

    /// A message about it, with the name of its place in the stead of the one that it has now.
    [[nodiscard]] std::string named(std::string message) const;

private:
    void removeFiles() const;

    std::filesystem::path place_;
    std::filesystem::path file_;
    std::unique_ptr<Database> database_;
};

}  // namespace quorvane::cli
