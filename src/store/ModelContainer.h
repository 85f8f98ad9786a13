#pragma once

#include "store/ModelConfiguration.h"
#include "store/ModelContext.h"

#include <memory>

namespace quorvane {

/// An open store: its main context, and further ones for background work.
class ModelContainer {
public:
    /// Opens the store; throws `StoreError`.
    explicit ModelContainer(ModelConfiguration configuration);

    [[nodiscard]] const ModelConfiguration& configuration() const { return configuration_; }

    /// The context of the main thread.
    [[nodiscard]] ModelContext& mainContext() { return *mainContext_; }

    /// A context with a connection of its own, for the thread that asks. It sees what the others have saved.
    [[nodiscard]] std::unique_ptr<ModelContext> newContext() const;

private:
    ModelConfiguration configuration_;
    std::unique_ptr<ModelContext> mainContext_;
};

}  // namespace quorvane
