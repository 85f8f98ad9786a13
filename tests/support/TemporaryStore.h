#pragma once

#include "store/ModelContainer.h"
#include "support/TemporaryFolder.h"

#include <memory>

namespace quorvane {

/// A store on a real file in a folder of its own.
class TemporaryStore {
public:
    TemporaryStore();

    [[nodiscard]] std::filesystem::path file() const { return folder_ / "store.sqlite"; }
    [[nodiscard]] ModelContainer& container() { return *container_; }

    /// The main context.
    [[nodiscard]] ModelContext& context() { return container_->mainContext(); }

    /// A further connection to the same file: what another program would have.
    [[nodiscard]] std::unique_ptr<ModelContext> anotherContext() const { return container_->newContext(); }

    /// Ends the connection and opens the file again. Objects of the old context live on without one.
    void reopen();

    /// Ends the connection.
    void close() { container_.reset(); }

private:
    TemporaryFolder folder_;
    std::unique_ptr<ModelContainer> container_;
};

}  // namespace quorvane
