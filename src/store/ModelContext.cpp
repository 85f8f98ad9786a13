#include "store/ModelContext.h"

#include "base/Text.h"
#include "store/Schema.h"

#include <algorithm>
#include <fmt/format.h>
#include <tuple>

namespace quorvane {
namespace {

constexpr std::string_view keyColumn = "pk";
constexpr int firstAttributeColumn = 1;  // after the row's key

std::string orderBy(const std::vector<SortOrder>& sort, bool hasCondition) {
    std::string out = " ORDER BY ";
    for (const SortOrder& order : sort)
        out += fmt::format("{} {}, ", order.attribute->column(), order.isAscending ? "ASC" : "DESC");
    // The planner has no statistics: it would rather walk the whole table in the order of its keys than sort the few
    // rows that an index finds. The plus takes that way from it.
    return out + (sort.empty() && hasCondition ? "+pk" : "pk");
}

bool hasReferences(const EntityDescription& description) {
    return std::any_of(description.attributes.begin(), description.attributes.end(),
                       [](const auto& attribute) { return attribute.kind == AttributeKind::reference; });
}

void eraseFrom(std::vector<std::shared_ptr<Entity>>& list, const std::shared_ptr<Entity>& entity) {
    list.erase(std::remove(list.begin(), list.end(), entity), list.end());
}

/// A place for the attribute's value in a statement. A relationship whose target another program has removed meanwhile
/// is stored as none: the statement must not fail for it, now and at each later save.
std::string place(const AttributeDescription& attribute) {
    if (attribute.kind != AttributeKind::reference) return "?";
    return fmt::format("(SELECT pk FROM {} WHERE pk = ?)", attribute.target().table);
}

}  // namespace

ModelContext::ModelContext(std::unique_ptr<Database> database)
    : database_(std::move(database)), seenDataVersion_(database_->dataVersion()) {}

ModelContext::~ModelContext() {
    for (auto& [description, objects] : objects_)
        for (auto& [row, object] : objects)
            if (const auto entity = object.lock()) entity->context_ = nullptr;
}

// --- Identity -----------------------------------------------------------------------------------------------------

void ModelContext::attach(const std::shared_ptr<Entity>& entity, const EntityDescription& description,
                          std::int64_t rowId) {
    entity->context_ = this;
    entity->description_ = &description;
    entity->rowId_ = rowId;
    objects_[&description][rowId] = entity;
}

void ModelContext::detach(Entity& entity) {
    // What it leads to stays readable with it.
    for (const auto& attribute : entity.description_->attributes) {
        try {
            if (const auto* reference = attribute.reference(entity))
                std::ignore = reference->target(attribute.target());
        } catch (const StoreError&) {
            // Where the store can't be read, the relationship of the removed object reads as none.
        }
    }
    forget(entity);
    entity.context_ = nullptr;
    entity.isDeleted_ = true;
    entity.changedAttributes_.clear();
}

void ModelContext::forget(const Entity& entity) {
    objects_[entity.description_].erase(entity.rowId_);
}

bool ModelContext::isRemoved(const EntityDescription& description, std::int64_t rowId) const {
    const auto removed = removedRows_.find(&description);
    return removed != removedRows_.end() && removed->second.contains(rowId);
}

/// The object of the row, if somebody holds it.
std::shared_ptr<Entity> ModelContext::known(const EntityDescription& description, std::int64_t rowId) const {
    const auto objects = objects_.find(&description);
    if (objects == objects_.end()) return nullptr;
    const auto object = objects->second.find(rowId);
    return object == objects->second.end() ? nullptr : object->second.lock();
}

/// Does the row stand in the table otherwise than the context has it?
bool ModelContext::isHidden(const EntityDescription& description, std::int64_t rowId) const {
    const auto entity = known(description, rowId);
    return entity ? !entity->changedAttributes_.empty() : isRemoved(description, rowId);
}

std::shared_ptr<Entity> ModelContext::adopt(const EntityDescription& description, const Row& row) {
    const std::int64_t rowId = row.integer(0);
    auto entity = known(description, rowId);
    const bool isKnown = entity != nullptr;
    if (!isKnown) {
        entity = description.make();
        attach(entity, description, rowId);
    }
    bool differs = false;
    for (std::size_t i = 0; i < description.attributes.size(); ++i) {
        const auto& attribute = description.attributes[i];
        SqlValue value = row.value(static_cast<int>(i) + firstAttributeColumn);
        if (attribute.kind == AttributeKind::reference && !isNull(value) &&
            isRemoved(attribute.target(), std::get<std::int64_t>(value)))
            value = SqlValue{};
        if (isKnown && compare(attribute.get(*entity), value) == 0) continue;
        attribute.set(*entity, value);
        differs = true;
    }
    if (isKnown && differs) refreshed_.push_back(entity);
    return entity;
}

std::shared_ptr<Entity> ModelContext::object(const EntityDescription& description, std::int64_t rowId) {
    auto entity = known(description, rowId);
    if (entity || rowId <= 0 || isRemoved(description, rowId)) return entity;
    database_->query(
        fmt::format("SELECT pk, {} FROM {} WHERE pk = ?", Schema::columnList(description), description.table), {rowId},
        [&](const Row& row) {
            entity = adopt(description, row);
            return false;
        });
    return entity;
}

std::optional<std::string> ModelContext::note(const std::string& key) {
    std::optional<std::string> value;
    database_->query(fmt::format("SELECT value FROM {} WHERE key = ?", Schema::noteTable), {key}, [&](const Row& row) {
        value = row.text(0);
        return false;
    });
    return value;
}

void ModelContext::setNote(const std::string& key, const std::string& value) {
    database_->execute(fmt::format("INSERT OR REPLACE INTO {} VALUES (?, ?)", Schema::noteTable), {key, value});
}

bool ModelContext::hasForeignChanges() {
    const std::int64_t version = database_->dataVersion();
    return std::exchange(seenDataVersion_, version) != version;
}

// --- Reading ------------------------------------------------------------------------------------------------------

SqlCondition ModelContext::conditionOf(const PredicateNode* predicate) const {
    SqlCondition condition{.removed = removedRows_};
    if (predicate == nullptr) return condition;
    condition.text = " WHERE ";
    predicate->appendTo(condition);
    return condition;
}

std::pair<std::string, std::vector<SqlValue>> ModelContext::selection(const std::string& columns,
                                                                      const EntityDescription& description,
                                                                      const PredicateNode* predicate,
                                                                      const std::vector<SortOrder>& sort,
                                                                      std::optional<std::size_t> limit) const {
    SqlCondition condition = conditionOf(predicate);
    std::string sql = fmt::format("SELECT {} FROM {}{}{}", columns, description.table, condition.text,
                                  orderBy(sort, predicate != nullptr));
    if (limit) {
        sql += " LIMIT ?";
        condition.parameters.emplace_back(static_cast<std::int64_t>(*limit));
    }
    return {std::move(sql), std::move(condition.parameters)};
}

std::vector<std::shared_ptr<Entity>> ModelContext::unsaved(const EntityDescription& description,
                                                           const PredicateNode* predicate) const {
    std::vector<std::shared_ptr<Entity>> found;
    for (const auto* list : {&updated_, &inserted_})
        for (const auto& entity : *list)
            if (entity->description_ == &description && (predicate == nullptr || predicate->matches(*entity)))
                found.push_back(entity);
    return found;
}

/// How many rows of the table a fetch may meet and has to pass over.
std::size_t ModelContext::hiddenRows(const EntityDescription& description) const {
    const auto removed = removedRows_.find(&description);
    return updated_.size() + (removed == removedRows_.end() ? 0 : removed->second.size());
}

std::vector<std::shared_ptr<Entity>> ModelContext::fetchAny(const EntityDescription& description,
                                                            const PredicateNode* predicate,
                                                            const std::vector<SortOrder>& sort,
                                                            std::optional<std::size_t> limit) {
    auto fetchLimit = limit;
    if (limit) *fetchLimit += hiddenRows(description);
    const auto [sql, parameters] =
        selection("pk, " + Schema::columnList(description), description, predicate, sort, fetchLimit);
    std::vector<std::shared_ptr<Entity>> found;
    database_->query(sql, parameters, [&](const Row& row) {
        if (!isHidden(description, row.integer(0))) found.push_back(adopt(description, row));
        return true;
    });
    const auto changed = unsaved(description, predicate);
    if (!changed.empty()) {
        found.insert(found.end(), changed.begin(), changed.end());
        std::sort(found.begin(), found.end(), [&](const auto& a, const auto& b) { return comesBefore(*a, *b, sort); });
    }
    if (limit && found.size() > *limit) found.resize(*limit);
    sendRefreshed();
    return found;
}

std::size_t ModelContext::countAny(const EntityDescription& description, const PredicateNode* predicate) {
    const SqlCondition condition = conditionOf(predicate);
    const bool isPlain = !hasChanges();  // then the database counts faster
    std::size_t count = unsaved(description, predicate).size();
    database_->query(fmt::format("SELECT {} FROM {}{}", isPlain ? "count(*)" : "pk", description.table, condition.text),
                     condition.parameters, [&](const Row& row) {
                         if (isPlain)
                             count = static_cast<std::size_t>(row.integer(0));
                         else if (!isHidden(description, row.integer(0)))
                             ++count;
                         return true;
                     });
    return count;
}

void ModelContext::scanAny(const EntityDescription& description, const PredicateNode* predicate,
                           const std::vector<SortOrder>& sort, std::optional<std::size_t> limit,
                           const std::vector<std::string>& attributes, const std::function<bool(const Row&)>& visit) {
    std::vector<std::string> columns;
    columns.reserve(attributes.size());
    for (const std::string& name : attributes)
        columns.push_back(name == keyColumn ? name : description.attribute(name)->column());
    const auto [sql, parameters] = selection(text::joined(columns, ", "), description, predicate, sort, limit);
    database_->query(sql, parameters, visit);
}

void ModelContext::sendRefreshed() {
    for (const auto& entity : std::exchange(refreshed_, {})) {
        entity->changed.send();
        didChange.send({EntityChange::Kind::updated, entity});
    }
}

// --- Changes ------------------------------------------------------------------------------------------------------

bool ModelContext::hasChanges() const {
    return !inserted_.empty() || !updated_.empty() ||
           std::any_of(removedRows_.begin(), removedRows_.end(), [](const auto& rows) { return !rows.second.empty(); });
}

void ModelContext::insert(const std::shared_ptr<Entity>& entity) {
    if (entity->context_ != nullptr || entity->rowId_ > 0 || entity->isDeleted_) return;
    attach(entity, entity->entityDescription(), nextTemporaryRow_--);
    inserted_.push_back(entity);
    for (const auto& attribute : entity->description_->attributes) {
        auto* reference = attribute.reference(*entity);
        if (reference == nullptr || !reference->loaded_) continue;
        if (reference->loaded_->isDeleted_)
            reference->setTarget(nullptr);
        else
            insert(reference->loaded_);
    }
    didChange.send({EntityChange::Kind::inserted, entity});
}

void ModelContext::remove(const std::shared_ptr<Entity>& entity) {
    if (entity->context_ != this) return;
    clearReferencesTo(*entity);
    if (entity->context_ != this) return;  // who heard of a cleared relationship was quicker
    if (entity->rowId_ > 0) removedRows_[entity->description_].insert(entity->rowId_);
    if (entity->rowId_ < 0)
        eraseFrom(inserted_, entity);
    else if (!entity->changedAttributes_.empty())
        eraseFrom(updated_, entity);
    detach(*entity);
    didChange.send({EntityChange::Kind::removed, entity});
}

void ModelContext::noteChange(Entity& entity, bool isFirst) {
    auto shared = entity.shared_from_this();
    if (isFirst && entity.rowId_ > 0) updated_.push_back(shared);  // an inserted one stands in its own list
    didChange.send({EntityChange::Kind::updated, shared});
}

void ModelContext::clearReferencesTo(const Entity& target) {
    // All are found before the first is changed: who hears of that may fetch further objects.
    std::vector<std::pair<std::shared_ptr<Entity>, ReferenceBase*>> leading;
    for (const auto& [description, objects] : objects_)
        for (const auto& attribute : description->attributes) {
            if (attribute.kind != AttributeKind::reference || &attribute.target() != target.description_) continue;
            for (const auto& [row, object] : objects)
                if (auto entity = object.lock())
                    if (auto* reference = attribute.reference(*entity); reference->rowId() == target.rowId_)
                        leading.emplace_back(std::move(entity), reference);
        }
    for (const auto& [entity, reference] : leading)
        if (reference->rowId() == target.rowId_) reference->setTarget(nullptr);
}

// --- Saving -------------------------------------------------------------------------------------------------------

void ModelContext::save() {
    if (!hasChanges()) return;
    database_->inTransaction([this] {
        savedRows_.clear();
        vanished_.clear();
        writeRemovals();
        writeInsertions();
        writeUpdates();
    });
    settle();
}

void ModelContext::writeRemovals() {
    for (const auto& [description, rows] : removedRows_) {
        const std::string sql = fmt::format("DELETE FROM {} WHERE pk = ?", description->table);
        for (const std::int64_t row : rows)
            database_->execute(sql, {row});
    }
}

SqlValue ModelContext::stored(const AttributeDescription& attribute, const Entity& entity) const {
    SqlValue value = attribute.get(entity);
    if (attribute.kind != AttributeKind::reference || isNull(value)) return value;
    const auto saved = savedRows_.find(std::get<std::int64_t>(value));
    return saved == savedRows_.end() ? value : SqlValue{saved->second};
}

void ModelContext::writeInsertions() {
    for (const bool withReferences : {false, true}) {
        for (const auto& entity : inserted_) {
            const auto& description = *entity->description_;
            if (hasReferences(description) != withReferences) continue;
            std::vector<SqlValue> values;
            std::string places;
            for (const auto& attribute : description.attributes) {
                values.push_back(stored(attribute, *entity));
                places += (places.empty() ? "" : ", ") + place(attribute);
            }
            database_->execute(fmt::format("INSERT INTO {} ({}) VALUES ({})", description.table,
                                           Schema::columnList(description), places),
                               values);
            savedRows_[entity->rowId_] = database_->lastInsertedRow();
        }
    }
}

void ModelContext::writeUpdates() {
    for (const auto& entity : updated_) {
        const auto& description = *entity->description_;
        std::vector<SqlValue> values;
        std::string assignments;
        for (const void* address : entity->changedAttributes_) {
            const auto& attribute = description.attributeAt(*entity, address);
            assignments +=
                fmt::format("{}{} = {}", assignments.empty() ? "" : ", ", attribute.column(), place(attribute));
            values.push_back(stored(attribute, *entity));
        }
        values.emplace_back(entity->rowId_);
        if (database_->execute(fmt::format("UPDATE {} SET {} WHERE pk = ?", description.table, assignments), values) ==
            0)
            vanished_.push_back(entity);
    }
}

void ModelContext::settle() {
    removedRows_.clear();
    for (const auto& entity : std::exchange(updated_, {}))
        entity->changedAttributes_.clear();
    for (const auto& entity : std::exchange(inserted_, {})) {
        entity->changedAttributes_.clear();
        const auto& description = *entity->description_;
        forget(*entity);
        attach(entity, description, savedRows_.at(entity->rowId_));
    }
    savedRows_.clear();
    for (const auto& entity : std::exchange(vanished_, {})) {
        detach(*entity);
        didChange.send({EntityChange::Kind::removed, entity});
    }
}

}  // namespace quorvane
