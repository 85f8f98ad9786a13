#pragma once

#include "cloud/module/CloudAdministration.h"

namespace quorvane::postgresql {

/// Each call connects anew, with the keyring's password where no file has one.
class PostgresAdministration final : public CloudAdministration {
public:
    Installation install(const std::string& service, const std::vector<std::string>& users) override;
    std::string script(const std::vector<std::string>& users) override;
    CloudDescription describe(const std::string& service) override;
    Examination examine(const std::string& service) override;
};

}  // namespace quorvane::postgresql
