#pragma once

#include "cli/CommandContext.h"
#include "store/ModelContext.h"

#include <fmt/format.h>

namespace quorvane::cli {

/// The stored object that a command names; of several the oldest. Throws `CommandError` if there is none.
template <class E>
[[nodiscard]] std::shared_ptr<E> objectById(ModelContext& store, const Uuid& id) {
    const auto found = store.fetch<E>({.predicate = field(&E::id) == id, .limit = 1});
    if (found.empty())
        throw CommandError(ExitStatus::failed, fmt::format("there is no {} {}", E::description().table, id.string()));
    return found.front();
}

}  // namespace quorvane::cli
