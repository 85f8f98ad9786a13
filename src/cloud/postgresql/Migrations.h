#pragma once

#include "cloud/postgresql/SchemaVersion.h"

#include <array>
#include <string_view>

namespace quorvane::postgresql {

/// One step of the cloud database's schema: a script that is one transaction, from BEGIN to COMMIT.
struct Migration {
    int number;  ///< what quorvane.version() answers afterwards
    std::string_view sql;
};

/// All steps, the first one first. A step that was taken already fails when it is run again, and changes nothing.
extern const std::array<Migration, schemaVersion> migrations;

}  // namespace quorvane::postgresql
