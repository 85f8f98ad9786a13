#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// Who talks to whom.
struct CloudDescription {
    std::string host;  ///< name, address or folder of the socket
    std::string database;
    std::string serverVersion;  ///< "15.18"
    std::string tls;            ///< "TLSv1.3"; empty: not encrypted
    std::string role;
    std::optional<std::string> unboundBecause;  ///< why row-level security does not bind the role; none: it does
    std::optional<int> schemaVersion;           ///< none: not installed, or not for this role
};

/// Sets up and examines the database that records are synced with. Services are sections of libpq's service files.
/// Every call blocks, and throws `platform::CloudFailure` in words that say what and why.
class CloudAdministration {
public:
    virtual ~CloudAdministration() = default;

    /// Versions of the schema; 0: there was none.
    struct Installation {
        int before = 0;
        int now = 0;
    };

    /// As the database's owner: takes the steps that the schema lacks, and makes existing roles users. A role that the
    /// policies would not bind is refused before anything is done.
    virtual Installation install(const std::string& service, const std::vector<std::string>& users) = 0;

    /// The same as input for psql, for those who would rather read it first. Asks nobody.
    [[nodiscard]] virtual std::string script(const std::vector<std::string>& users) = 0;

    [[nodiscard]] virtual CloudDescription describe(const std::string& service) = 0;

    struct Examination {
        CloudDescription description;
        std::vector<std::string> findings;  ///< a line for each thing that is not as it should be
    };

    /// Looks at role, encryption, schema, policies and grants, and takes a record there and back, of which nothing
    /// stays behind.
    [[nodiscard]] virtual Examination examine(const std::string& service) = 0;
};

}  // namespace quorvane
