#include "cloud/postgresql/PostgresContainer.h"

#include "cloud/postgresql/PostgresSession.h"

namespace quorvane::postgresql {

std::shared_ptr<platform::RecordSession> PostgresContainer::newSession() {
    return std::make_shared<PostgresSession>(settings_);
}

}  // namespace quorvane::postgresql
