#include "cloud/postgresql/RecordUpload.h"

#include "cloud/postgresql/PostgresFailure.h"
#include "cloud/postgresql/RecordJson.h"
#include "cloud/postgresql/RecordStatements.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace quorvane::postgresql {

namespace {

using platform::CloudRecord;
using platform::SaveResult;
using PostgresFailure::Blame;

/// How often a batch is sent again when others were at work on the same rows.
constexpr int retries = 3;

using Indices = std::vector<std::size_t>;

/// Records as the parameters of the statement.
Parameters parameters(const std::vector<CloudRecord>& records, const Indices& indices) {
    std::vector<std::string> names;
    std::vector<std::string> types;
    std::vector<std::string> fields;
    names.reserve(indices.size());
    types.reserve(indices.size());
    fields.reserve(indices.size());
    for (const std::size_t index : indices) {
        names.push_back(records[index].recordName);
        types.push_back(records[index].recordType);
        fields.push_back(RecordJson::text(records[index].values));
    }
    return {RecordJson::array(names), RecordJson::array(types), RecordJson::array(fields)};
}

class Upload {
public:
    Upload(PostgresConnection& connection, platform::DatabaseScope scope, const std::vector<CloudRecord>& records)
        : connection_(connection), sql_(RecordStatements::save(scope)), records_(records) {
        results_.reserve(records.size());
        for (const CloudRecord& record : records)
            results_.push_back({record.recordName, std::nullopt});
    }

    std::vector<SaveResult> run() {
        Indices indices;
        indices.reserve(records_.size());
        for (std::size_t index = 0; index < records_.size(); ++index) {
            if (canBeSent(records_[index]))
                indices.push_back(index);
            else
                results_[index].error = PostgresFailure::refusal("22021");  // the server's code for it
        }
        if (!indices.empty() && !saveTogether(indices)) saveOneByOne(indices);
        return std::move(results_);
    }

private:
    /// A parameter ends at U+0000.
    static bool canBeSent(const CloudRecord& record) {
        return record.recordName.find('\0') == std::string::npos && record.recordType.find('\0') == std::string::npos;
    }

    /// False if the server blames a record.
    bool saveTogether(const Indices& indices) {
        const Parameters together = parameters(records_, indices);
        for (int attempt = 0;; ++attempt) {
            try {
                noteSaved(connection_.execute(sql_.c_str(), together), indices);
                return true;
            } catch (const PostgresError& error) {
                const Blame blamed = PostgresFailure::blame(error);
                if (blamed == Blame::records) return false;
                if (blamed == Blame::batch || attempt == retries) throw;
            }
        }
    }

    void noteSaved(const PostgresResult& result, const Indices& indices) {
        std::set<std::string_view> saved;
        for (int row = 0; row < result.rowCount(); ++row)
            saved.insert(result.row(row).text(0));
        for (const std::size_t index : indices) {
            results_[index].error.reset();
            if (!saved.contains(records_[index].recordName))
                results_[index].error = "the name belongs to a record of another type";
        }
    }

    void saveOneByOne(Indices indices) {
        for (int attempt = 0; !indices.empty(); ++attempt) {
            std::vector<Parameters> sets;
            sets.reserve(indices.size());
            for (const std::size_t index : indices)
                sets.push_back(parameters(records_, {index}));
            const auto answers = connection_.executeEach(sql_.c_str(), sets);
            throwIfNoneMayBeWritten(answers);
            Indices again;
            for (std::size_t i = 0; i < answers.size(); ++i) {
                if (note(answers[i], indices[i], attempt)) again.push_back(indices[i]);
            }
            indices = std::move(again);
        }
    }

    /// True if the record has to be sent again.
    bool note(const std::variant<PostgresResult, PostgresError>& answer, std::size_t index, int attempt) {
        if (const auto* result = std::get_if<PostgresResult>(&answer)) {
            noteSaved(*result, {index});
            return false;
        }
        const auto& error = std::get<PostgresError>(answer);
        const Blame blamed = PostgresFailure::blame(error);
        if (blamed == Blame::batch) throw PostgresError(error);
        if (blamed == Blame::nobody && attempt < retries) return true;
        results_[index].error = PostgresFailure::refusal(error.sqlState());
        return false;
    }

    /// If that holds for each record, it is the role that has no right, and not a record that belongs to others.
    static void throwIfNoneMayBeWritten(const std::vector<std::variant<PostgresResult, PostgresError>>& answers) {
        const auto isForbidden = [](const auto& answer) {
            const auto* error = std::get_if<PostgresError>(&answer);
            return error && error->sqlState() == "42501";
        };
        if (std::all_of(answers.begin(), answers.end(), isForbidden))
            throw PostgresError(std::get<PostgresError>(answers.front()));
    }

    PostgresConnection& connection_;
    const std::string& sql_;
    const std::vector<CloudRecord>& records_;
    std::vector<SaveResult> results_;
};

}  // namespace

std::vector<SaveResult> upload(PostgresConnection& connection, platform::DatabaseScope scope,
                               const std::vector<CloudRecord>& records) {
    return Upload(connection, scope, records).run();
}

}  // namespace quorvane::postgresql
