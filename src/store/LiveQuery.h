#pragma once

#include "store/ModelContext.h"

#include <algorithm>

namespace quorvane {

/// What changed in the results of a live query: objects that came, went, or stayed with other values.
template <class E>
struct QueryChange {
    std::vector<std::shared_ptr<E>> inserted;
    std::vector<std::shared_ptr<E>> removed;
    std::vector<std::shared_ptr<E>> updated;
};

/// The results of a fetch that follow the context: they are fetched once and then kept by looking at each changed object
/// alone. Only a query with a limit asks the store again when an object goes. The context must outlive it.
template <class E>
class LiveQuery {
public:
    LiveQuery(ModelContext& context, FetchDescriptor<E> descriptor)
        : context_(context), descriptor_(std::move(descriptor)), results_(context.fetch(descriptor_)),
          subscription_(context.didChange.subscribe([this](const EntityChange& change) { follow(change); })) {}

    [[nodiscard]] const std::vector<std::shared_ptr<E>>& results() const { return results_; }

    /// Sent after the results have changed.
    Signal<const QueryChange<E>&> didChange;

    /// Fetches anew, for changes that another program made, and tells what they were.
    void refresh() {
        auto before = std::exchange(results_, context_.fetch(descriptor_));
        QueryChange<E> change;
        for (const auto& entity : results_)
            if (!contains(before, entity)) change.inserted.push_back(entity);
        for (const auto& entity : before)
            if (!contains(results_, entity)) change.removed.push_back(entity);
        if (!change.inserted.empty() || !change.removed.empty()) didChange.send(change);
    }

private:
    using List = std::vector<std::shared_ptr<E>>;

    static bool contains(const List& list, const std::shared_ptr<E>& entity) {
        return std::find(list.begin(), list.end(), entity) != list.end();
    }

    void follow(const EntityChange& change) {
        if (&change.entity->entityDescription() != &E::description()) return;
        const auto entity = std::static_pointer_cast<E>(change.entity);
        const auto found = std::find(results_.begin(), results_.end(), entity);
        const bool was = found != results_.end();
        const bool is = change.kind != EntityChange::Kind::removed && descriptor_.predicate.matches(*entity);
        if (!was && !is) return;
        if (descriptor_.limit && was != is) return refresh();
        if (was) results_.erase(found);
        if (is) results_.insert(std::upper_bound(results_.begin(), results_.end(), entity, order()), entity);
        QueryChange<E> told;
        (was && is ? told.updated : is ? told.inserted : told.removed).push_back(entity);
        didChange.send(told);
    }

    auto order() const {
        return [this](const std::shared_ptr<E>& a, const std::shared_ptr<E>& b) {
            return comesBefore(*a, *b, descriptor_.sort);
        };
    }

    ModelContext& context_;
    FetchDescriptor<E> descriptor_;
    List results_;
    Subscription subscription_;
};

}  // namespace quorvane
