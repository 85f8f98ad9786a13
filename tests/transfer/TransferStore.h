#pragma once

#include "store/Database.h"
#include "store/StoreLoad.h"
#include "support/TemporaryFolder.h"

#include <string>
#include <string_view>

namespace quorvane {

/// A store of its own that is filled and read as text.
class TransferStore {
public:
    [[nodiscard]] std::filesystem::path file() const { return folder_ / "store.sqlite"; }
    [[nodiscard]] Database& database() { return database_; }

    StoreLoad::Counts load(const std::string& lines);

    /// What the load throws as a bad line; it fails the test if nothing is.
    [[nodiscard]] std::string refusalOf(const std::string& lines);

    [[nodiscard]] std::string dump();

    /// The rows of all tables.
    [[nodiscard]] std::size_t rowCount();

private:
    TemporaryFolder folder_;
    Database database_{{.file = file()}};
};

}  // namespace quorvane
