#pragma once

#include "store/ModelContext.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <unordered_set>

namespace quorvane {

/// What changed in the results of a live query: objects that came, went, or stayed with other values.
template <class E>
struct QueryChange {
    std::vector<std::shared_ptr<E>> inserted;
    std::vector<std::shared_ptr<E>> removed;
    std::vector<std::shared_ptr<E>> updated;
};

/// The results of a fetch that follow the context: they are fetched once and then kept by looking at each changed
/// object alone. The context must outlive it.
template <class E>
class LiveQuery {
public:
    /// The descriptor has no limit: what moves up when an object goes can't be told without a fetch.
    LiveQuery(ModelContext& context, FetchDescriptor<E> descriptor)
        : context_(context), descriptor_(std::move(descriptor)) {
        assert(!descriptor_.limit);
        take(context_.fetch(descriptor_));
        subscription_ = context_.didChange.subscribe([this](const EntityChange& change) { follow(change); });
    }

    [[nodiscard]] const std::vector<std::shared_ptr<E>>& results() const { return results_; }

    /// Sent after the results have changed.
    Signal<const QueryChange<E>&> didChange;

    /// Fetches anew, for changes that another program made, and tells what they were. Throws `StoreError`.
    void refresh() {
        auto fetched = context_.fetch(descriptor_);  // what other values changed has been followed when it returns
        const QueryChange<E> change{.inserted = without(fetched, results_), .removed = without(results_, fetched)};
        take(std::move(fetched));
        if (!change.inserted.empty() || !change.removed.empty()) didChange.send(change);
    }

private:
    using List = std::vector<std::shared_ptr<E>>;
    using Key = std::vector<SqlValue>;

    static List without(const List& list, const List& others) {
        const std::unordered_set<std::shared_ptr<E>> left(others.begin(), others.end());
        List rest;
        std::copy_if(list.begin(), list.end(), std::back_inserter(rest),
                     [&](const auto& entity) { return !left.contains(entity); });
        return rest;
    }

    void take(List fetched) {
        results_ = std::move(fetched);
        keys_.clear();
        for (const auto& entity : results_)
            keys_.push_back(keyOf(*entity));
    }

    void follow(const EntityChange& change) {
        if (&change.entity->entityDescription() != &E::description()) return;
        const auto entity = std::static_pointer_cast<E>(change.entity);
        const auto at = std::find(results_.begin(), results_.end(), entity) - results_.begin();
        const bool was = at < std::ssize(results_);
        const bool is = change.kind != EntityChange::Kind::removed && descriptor_.predicate.matches(*entity);
        if (!was && !is) return;
        if (was) {
            results_.erase(results_.begin() + at);
            keys_.erase(keys_.begin() + at);
        }
        if (is) place(entity);
        QueryChange<E> told;
        (was && is ? told.updated : is ? told.inserted : told.removed).push_back(entity);
        didChange.send(told);
    }

    void place(const std::shared_ptr<E>& entity) {
        Key key = keyOf(*entity);
        std::ptrdiff_t first = 0;
        for (std::ptrdiff_t end = std::ssize(results_); first < end;) {
            const auto middle = first + (end - first) / 2;
            if (comesBeforeAt(*entity, key, static_cast<std::size_t>(middle)))
                end = middle;
            else
                first = middle + 1;
        }
        results_.insert(results_.begin() + first, entity);
        keys_.insert(keys_.begin() + first, std::move(key));
    }

    bool comesBeforeAt(const E& entity, const Key& key, std::size_t index) const {
        for (std::size_t i = 0; i < key.size(); ++i)
            if (const int order = compare(key[i], keys_[index][i]); order != 0)
                return descriptor_.sort[i].isAscending ? order < 0 : order > 0;
        return comesBefore(entity, *results_[index], {});
    }

    Key keyOf(const E& entity) const {
        Key key;
        for (const SortOrder& order : descriptor_.sort)
            key.push_back(order.attribute->get(entity));
        return key;
    }

    ModelContext& context_;
    FetchDescriptor<E> descriptor_;
    List results_;
    std::vector<Key> keys_;  ///< by which each result stands where it stands; its object may have other values already
    Subscription subscription_;
};

}  // namespace quorvane
