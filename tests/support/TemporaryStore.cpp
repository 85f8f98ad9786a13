#include "support/TemporaryStore.h"

namespace quorvane {

TemporaryStore::TemporaryStore() {
    reopen();
}

void TemporaryStore::reopen() {
    close();
    container_ = std::make_unique<ModelContainer>(ModelConfiguration{.file = file()});
}

}  // namespace quorvane
