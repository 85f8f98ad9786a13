#include "store/ModelContainer.h"

namespace quorvane {

ModelContainer::ModelContainer(ModelConfiguration configuration)
    : configuration_(std::move(configuration)), mainContext_(newContext()) {}

std::unique_ptr<ModelContext> ModelContainer::newContext() const {
    return std::make_unique<ModelContext>(std::make_unique<Database>(configuration_));
}

}  // namespace quorvane
