#include "cloud/module/CloudModule.h"
#include "cloud/postgresql/PostgresContainer.h"

/// The module's only door; `CloudModule` comes in by it.
extern "C" [[gnu::visibility("default")]] quorvane::platform::RecordContainer* quorvaneMakeRecordContainer() {
    return std::make_unique<quorvane::postgresql::PostgresContainer>().release();
}
