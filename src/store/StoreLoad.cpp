#include "store/StoreLoad.h"

#include "base/Text.h"
#include "platform/Clock.h"
#include "store/JsonForm.h"
#include "store/JsonLine.h"
#include "store/Project.h"
#include "store/Schema.h"

#include <fmt/format.h>
#include <map>
#include <memory>
#include <optional>

namespace quorvane::StoreLoad {
namespace {

/// The statements of one entity, and how many of its rows came in.
struct Table {
    explicit Table(const EntityDescription& described);

    const EntityDescription& entity;
    std::string find;
    std::string insert;
    std::string replace;  ///< with the row as its last parameter
    std::size_t idIndex = 0;
    std::size_t count = 0;
};

Table::Table(const EntityDescription& described) : entity(described) {
    std::string places;
    std::string assignments;
    for (const auto& attribute : entity.attributes) {
        places += places.empty() ? "?" : ", ?";
        assignments += fmt::format("{}{} = ?", assignments.empty() ? "" : ", ", attribute.column());
    }
    find = fmt::format("SELECT pk FROM {} WHERE id = ? ORDER BY pk LIMIT 1", entity.table);
    insert = fmt::format("INSERT INTO {} ({}) VALUES ({})", entity.table, Schema::columnList(entity), places);
    replace = fmt::format("UPDATE {} SET {} WHERE pk = ?", entity.table, assignments);
    idIndex = static_cast<std::size_t>(entity.attribute("id") - entity.attributes.data());
}

/// A reference to a project that no line so far has brought.
struct Pending {
    std::size_t line;
    std::string update;
    std::int64_t row;
    Uuid target;
    bool isReplaced = false;  ///< a later line brought the same row anew: the target still has to exist
};

class Loader {
public:
    explicit Loader(Database& database);

    void take(std::string_view line, std::size_t number);
    void resolvePending();
    [[nodiscard]] Counts counts() const;

private:
    void checkSchema() const;
    void takeRow(Table& table);
    void resolve(const Table& table, std::vector<SqlValue>& values);
    std::int64_t store(Table& table, std::vector<SqlValue> values);
    void notePending(const Table& table, std::int64_t row);

    Database& database_;
    std::vector<Table> tables_;
    std::unordered_map<Uuid, std::int64_t> projects_;
    JsonLine line_;
    std::size_t number_ = 0;

    /// Of the line under way: the attribute whose target is still missing, and that target.
    std::optional<std::pair<const AttributeDescription*, Uuid>> missing_;
    std::vector<Pending> pending_;
    std::map<std::pair<const EntityDescription*, std::int64_t>, std::size_t> pendingOfRow_;
};

Loader::Loader(Database& database) : database_(database) {
    for (const auto* entity : allEntities())
        tables_.emplace_back(*entity);
    // Two projects may have one identifier; the older one is meant, as in `find`.
    database_.query("SELECT id, pk FROM project ORDER BY pk", {}, [&](const Row& row) {
        projects_.try_emplace(ValueTraits<Uuid>::fromSql(row.value(0)), row.integer(1));
        return true;
    });
}

void Loader::take(std::string_view line, std::size_t number) {
    number_ = number;
    line_.read(line);
    const auto* entity = line_.find("entity");
    if (entity == nullptr) throw JsonForm::Error("there is no \"entity\"");
    const auto* name = std::get_if<std::string>(entity);
    if (name == nullptr) throw JsonForm::Error("\"entity\" must be a text");
    if (*name == "Schema") return checkSchema();
    for (Table& table : tables_)
        if (table.entity.name == *name) return takeRow(table);
    throw JsonForm::Error(fmt::format("there is no entity {}", quotedForMessage(*name)));
}

void Loader::checkSchema() const {
    for (const auto& [key, value] : line_.members())
        if (key != "entity" && key != "version")
            throw JsonForm::Error(fmt::format("Schema has no {}", quotedForMessage(key)));
    const auto* value = line_.find("version");
    const auto* version = value != nullptr ? std::get_if<std::string>(value) : nullptr;
    if (version == nullptr) throw JsonForm::Error("\"version\" must be a text");
    if (*version != Schema::version)
        throw JsonForm::Error(fmt::format("the lines are of version {}; only \"{}\" can be loaded",
                                          quotedForMessage(*version), Schema::version));
}

void Loader::takeRow(Table& table) {
    missing_.reset();
    auto given = JsonForm::readObject(table.entity, line_);
    resolve(table, given);
    const Uuid id = ValueTraits<Uuid>::fromSql(given[table.idIndex]);
    const std::int64_t row = store(table, std::move(given));
    if (&table.entity == &Project::description()) projects_.try_emplace(id, row);
    if (missing_) notePending(table, row);
    ++table.count;
}

/// Puts rows in the place of the identifiers that references were written as.
void Loader::resolve(const Table& table, std::vector<SqlValue>& values) {
    const auto& attributes = table.entity.attributes;
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        if (attributes[i].kind != AttributeKind::reference || isNull(values[i])) continue;
        const Uuid target = ValueTraits<Uuid>::fromSql(values[i]);
        const auto project = projects_.find(target);
        values[i] = project == projects_.end() ? SqlValue{} : SqlValue{project->second};
        if (project == projects_.end()) missing_.emplace(&attributes[i], target);
    }
}

std::int64_t Loader::store(Table& table, std::vector<SqlValue> values) {
    std::int64_t row = 0;
    database_.query(table.find, {values[table.idIndex]}, [&](const Row& found) {
        row = found.integer(0);
        return false;
    });
    if (row == 0) {
        database_.execute(table.insert, values);
        return database_.lastInsertedRow();
    }
    values.emplace_back(row);
    database_.execute(table.replace, values);
    if (const auto earlier = pendingOfRow_.find({&table.entity, row}); earlier != pendingOfRow_.end())
        pending_[earlier->second].isReplaced = true;
    return row;
}

void Loader::notePending(const Table& table, std::int64_t row) {
    pendingOfRow_.insert_or_assign({&table.entity, row}, pending_.size());
    pending_.push_back(
        {.line = number_,
         .update = fmt::format("UPDATE {} SET {} = ? WHERE pk = ?", table.entity.table, missing_->first->column()),
         .row = row,
         .target = missing_->second});
}

void Loader::resolvePending() {
    for (const Pending& reference : pending_) {
        const auto project = projects_.find(reference.target);
        if (project == projects_.end())
            throw Error(reference.line, fmt::format("\"project_id\" names no project: {}", reference.target.string()));
        if (!reference.isReplaced) database_.execute(reference.update, {project->second, reference.row});
    }
}

Counts Loader::counts() const {
    Counts counts;
    for (const Table& table : tables_)
        if (table.count != 0) counts.emplace_back(table.entity.name, table.count);
    return counts;
}

}  // namespace

Counts read(Database& database, std::istream& input, const std::function<void(std::size_t)>& progress) {
    const platform::ClockOverride oneInstant([now = platform::currentDate()] { return now; });
    Counts counts;
    database.inTransaction([&] {
        Loader loader(database);
        JsonLines::forEach(input, [&](std::string_view line, std::size_t number) {
            loader.take(line, number);
            if (progress) progress(number);
        });
        loader.resolvePending();
        counts = loader.counts();
    });
    return counts;
}

}  // namespace quorvane::StoreLoad
