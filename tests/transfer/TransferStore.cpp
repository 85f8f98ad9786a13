#include "transfer/TransferStore.h"

#include "store/EntityDescription.h"
#include "store/StoreDump.h"
#include "support/Matching.h"

#include <sstream>

namespace quorvane {

StoreLoad::Counts TransferStore::load(const std::string& lines) {
    std::istringstream input(lines);
    return StoreLoad::read(database_, input);
}

std::string TransferStore::refusalOf(const std::string& lines) {
    try {
        static_cast<void>(load(lines));
    } catch (const StoreLoad::Error& error) {
        return error.what();
    }
    ADD_FAILURE() << "was loaded: " << lines;
    return {};
}

std::string TransferStore::dump() {
    std::string out;
    StoreDump::write(database_, [&](std::string_view piece, std::size_t) { out += piece; });
    return out;
}

std::size_t TransferStore::rowCount() {
    std::size_t count = 0;
    for (const auto* entity : allEntities())
        database_.query("SELECT count(*) FROM " + entity->table, {}, [&](const Row& row) {
            count += static_cast<std::size_t>(row.integer(0));
            return true;
        });
    return count;
}

}  // namespace quorvane
