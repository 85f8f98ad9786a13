#pragma once

#include "cloud/postgresql/PostgresConnection.h"
#include "platform/RecordContainer.h"

#include <memory>

namespace quorvane::postgresql {

/// The records of the user whom a service's settings name.
class PostgresContainer : public platform::RecordContainer {
public:
    explicit PostgresContainer(ConnectionSettings settings = {}) : settings_(std::move(settings)) {}
    std::shared_ptr<platform::RecordSession> newSession() override;

private:
    ConnectionSettings settings_;
};

}  // namespace quorvane::postgresql
