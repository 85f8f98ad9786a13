#pragma once

#include "base/Signal.h"
#include "base/Weak.h"
#include "store/Database.h"
#include "store/Predicate.h"

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace quorvane {

/// What happened to an object of a context, whether saved yet or not.
struct EntityChange {
    enum class Kind { inserted, updated, removed };
    Kind kind;
    std::shared_ptr<Entity> entity;
};

/// A unit of work on the store. It hands out one object for each row, notes every change, and writes all of them at
/// once with `save()`. Fetches see the unsaved changes. It belongs to one thread; the main context to the main thread.
class ModelContext {
public:
    explicit ModelContext(std::unique_ptr<Database> database);
    ModelContext(const ModelContext&) = delete;
    ModelContext& operator=(const ModelContext&) = delete;
    ~ModelContext();

    /// The objects that the descriptor asks for. Throws `StoreError`.
    template <class E>
    [[nodiscard]] std::vector<std::shared_ptr<E>> fetch(const FetchDescriptor<E>& descriptor = {}) {
        std::vector<std::shared_ptr<E>> typed;
        for (auto& entity :
             fetchAny(E::description(), descriptor.predicate.node.get(), descriptor.sort, descriptor.limit))
            typed.push_back(std::static_pointer_cast<E>(std::move(entity)));
        return typed;
    }

    /// How many objects that would be, without making them.
    template <class E>
    [[nodiscard]] std::size_t count(const Predicate<E>& predicate = {}) {
        return countAny(E::description(), predicate.node.get());
    }

    /// Makes a free object part of the context, with what its relationships lead to; `save()` writes them. One that is
    /// part of a context already, or that was removed, stays as it is.
    void insert(const std::shared_ptr<Entity>& entity);

    /// Takes the object out of the store with the next `save()`, and clears the relationships that lead to it. One that
    /// is no part of this context stays as it is.
    void remove(const std::shared_ptr<Entity>& entity);

    /// Writes all changes in one transaction, or throws `StoreError`: then every change is still pending and goes with
    /// the next save.
    void save();

    [[nodiscard]] bool hasChanges() const;

    /// Reads stored rows without making objects of them, for passes over many: calls `visit` for each saved row, with
    /// the asked attributes as columns in their order (a reference as the row of its target), until it returns false.
    /// The attribute "pk" is the row itself, for `object`.
    template <class E>
    void scan(const FetchDescriptor<E>& descriptor, const std::vector<std::string>& attributes,
              const std::function<bool(const Row&)>& visit) {
        scanAny(E::description(), descriptor.predicate.node.get(), descriptor.sort, descriptor.limit, attributes,
                visit);
    }

    /// The object of a row; none if there is no such row. Throws `StoreError`.
    [[nodiscard]] std::shared_ptr<Entity> object(const EntityDescription& description, std::int64_t rowId);

    /// What the program has noted of the file under the key, past all objects; `setNote` writes at once. Throws
    /// `StoreError`.
    [[nodiscard]] std::optional<std::string> note(const std::string& key);
    void setNote(const std::string& key, const std::string& value);

    /// Has another connection changed the file since the last call?
    [[nodiscard]] bool hasForeignChanges();

    /// Sent at once for each insertion, removal and change of an attribute.
    Signal<const EntityChange&> didChange;

    [[nodiscard]] WeakHandle<ModelContext> weak() const { return weak_.handle(); }

private:
    friend class Entity;

    using Objects = std::unordered_map<std::int64_t, std::weak_ptr<Entity>>;

    std::vector<std::shared_ptr<Entity>> fetchAny(const EntityDescription&, const PredicateNode*,
                                                  const std::vector<SortOrder>&, std::optional<std::size_t> limit);
    std::size_t countAny(const EntityDescription&, const PredicateNode*);
    void scanAny(const EntityDescription&, const PredicateNode*, const std::vector<SortOrder>&,
                 std::optional<std::size_t> limit, const std::vector<std::string>& attributes,
                 const std::function<bool(const Row&)>& visit);

    void noteChange(Entity& entity, bool isFirst);
    void forget(const Entity& entity);
    [[nodiscard]] SqlCondition conditionOf(const PredicateNode*) const;
    [[nodiscard]] std::pair<std::string, std::vector<SqlValue>>
    selection(const std::string& columns, const EntityDescription&, const PredicateNode*, const std::vector<SortOrder>&,
              std::optional<std::size_t> limit) const;
    [[nodiscard]] std::vector<std::shared_ptr<Entity>> unsaved(const EntityDescription&, const PredicateNode*) const;
    [[nodiscard]] std::size_t hiddenRows(const EntityDescription&) const;
    [[nodiscard]] bool isRemoved(const EntityDescription&, std::int64_t rowId) const;
    [[nodiscard]] std::shared_ptr<Entity> known(const EntityDescription&, std::int64_t rowId) const;
    [[nodiscard]] bool isHidden(const EntityDescription&, std::int64_t rowId) const;
    void attach(const std::shared_ptr<Entity>& entity, const EntityDescription&, std::int64_t rowId);
    void detach(Entity& entity);
    std::shared_ptr<Entity> adopt(const EntityDescription&, const Row&);
    void clearReferencesTo(const Entity& target);
    void writeRemovals();
    void writeInsertions();
    void writeUpdates();
    [[nodiscard]] SqlValue stored(const AttributeDescription&, const Entity&) const;
    void settle();
    void sendRefreshed();

    std::unique_ptr<Database> database_;
    std::unordered_map<const EntityDescription*, Objects> objects_;
    RemovedRows removedRows_;
    std::vector<std::shared_ptr<Entity>> inserted_;
    std::vector<std::shared_ptr<Entity>> updated_;
    std::vector<std::shared_ptr<Entity>> refreshed_;  ///< found changed by another connection during a fetch
    std::vector<std::shared_ptr<Entity>> vanished_;   ///< their update met no row: another connection removed it
    std::map<std::int64_t, std::int64_t> savedRows_;  ///< of a save under way: temporary row to row of the table
    std::int64_t nextTemporaryRow_ = -1;
    std::int64_t seenDataVersion_ = 0;
    WeakSource<ModelContext> weak_{*this};
};

}  // namespace quorvane
