#pragma once

#include "store/EntityDescription.h"

#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quorvane {

/// Rows that were removed from a context and still stand in their tables until it is saved.
using RemovedRows = std::unordered_map<const EntityDescription*, std::unordered_set<std::int64_t>>;

/// A statement's condition with the values of its parameters, in order. A relationship that leads to a removed row
/// counts as none.
struct SqlCondition {
    const RemovedRows& removed;
    std::string text;
    std::vector<SqlValue> parameters{};
};

/// A condition that runs as SQL on the stored rows and in memory on objects with unsaved changes, with one outcome.
class PredicateNode {
public:
    virtual ~PredicateNode() = default;
    virtual void appendTo(SqlCondition& condition) const = 0;
    [[nodiscard]] virtual bool matches(const Entity& entity) const = 0;
};

/// A condition on objects of the class `E`; an empty one holds for all. Comparisons with an attribute that is none are
/// false, but for `!=` and `isNone()`.
template <class E>
struct Predicate {
    std::shared_ptr<const PredicateNode> node;
    [[nodiscard]] bool matches(const E& entity) const { return !node || node->matches(entity); }
};

enum class Comparison { equal, notEqual, less, lessOrEqual, greater, greaterOrEqual };

namespace detail {

std::shared_ptr<const PredicateNode> compareNode(const AttributeDescription&, Comparison, SqlValue, bool indexed);
std::shared_ptr<const PredicateNode> noneNode(const AttributeDescription&, bool isNone);
std::shared_ptr<const PredicateNode> referenceNode(const AttributeDescription&, std::shared_ptr<const Entity> target);
std::shared_ptr<const PredicateNode> joinNode(bool conjunction, std::shared_ptr<const PredicateNode>,
                                              std::shared_ptr<const PredicateNode>);

template <class T>
struct Unwrapped {
    using type = T;
};
template <class T>
struct Unwrapped<std::optional<T>> {
    using type = T;
};

}  // namespace detail

/// An attribute in a condition: `field(&ActivityRecord::startTime) >= day.start`.
template <class E, class T>
class Field {
public:
    using Value = typename detail::Unwrapped<T>::type;

    explicit Field(const AttributeDescription& attribute, bool indexed = true)
        : attribute_(&attribute), indexed_(indexed) {}

    /// The same attribute, for a condition that must not choose the index: SQLite's planner has no statistics here and
    /// can't know that of two ranges this one spans the history. A sort order chooses an index as well, and `||` often
    /// keeps it from using any: so ask what overlaps a range in two fetches, `endTime > start` sorted by the end and
    /// `endTime` none, both with the start unindexed.
    [[nodiscard]] Field unindexed() const { return Field(*attribute_, false); }

    friend Predicate<E> operator==(Field f, const Value& value) { return f.compare(Comparison::equal, value); }
    friend Predicate<E> operator!=(Field f, const Value& value) { return f.compare(Comparison::notEqual, value); }
    friend Predicate<E> operator<(Field f, const Value& value) { return f.compare(Comparison::less, value); }
    friend Predicate<E> operator<=(Field f, const Value& value) { return f.compare(Comparison::lessOrEqual, value); }
    friend Predicate<E> operator>(Field f, const Value& value) { return f.compare(Comparison::greater, value); }
    friend Predicate<E> operator>=(Field f, const Value& value) { return f.compare(Comparison::greaterOrEqual, value); }

    [[nodiscard]] Predicate<E> isNone() const { return {detail::noneNode(*attribute_, true)}; }
    [[nodiscard]] Predicate<E> isPresent() const { return {detail::noneNode(*attribute_, false)}; }

private:
    Predicate<E> compare(Comparison comparison, const Value& value) const {
        return {detail::compareNode(*attribute_, comparison, ValueTraits<Value>::toSql(value), indexed_)};
    }
    const AttributeDescription* attribute_;
    bool indexed_;
};

template <class E, class T>
[[nodiscard]] Field<E, T> field(Attribute<T> E::*member) {
    return Field<E, T>(attributeOf(member));
}

/// The objects whose relationship leads to `target`, which must have been inserted; none once it has been removed.
template <class E, class T>
[[nodiscard]] Predicate<E> refersTo(Reference<T> E::*member, const T& target) {
    return {detail::referenceNode(attributeOf(member), target.shared_from_this())};
}

/// The objects whose relationship leads nowhere.
template <class E, class T>
[[nodiscard]] Predicate<E> refersToNone(Reference<T> E::*member) {
    return {detail::noneNode(attributeOf(member), true)};
}

template <class E>
[[nodiscard]] Predicate<E> operator&&(const Predicate<E>& a, const Predicate<E>& b) {
    if (!a.node) return b;
    if (!b.node) return a;
    return {detail::joinNode(true, a.node, b.node)};
}

template <class E>
[[nodiscard]] Predicate<E> operator||(const Predicate<E>& a, const Predicate<E>& b) {
    if (!a.node || !b.node) return {};
    return {detail::joinNode(false, a.node, b.node)};
}

/// One sort order.
struct SortOrder {
    const AttributeDescription* attribute = nullptr;
    bool isAscending = true;
};

template <class E, class T>
[[nodiscard]] SortOrder ascending(Attribute<T> E::*member) {
    return {&attributeOf(member), true};
}
template <class E, class T>
[[nodiscard]] SortOrder descending(Attribute<T> E::*member) {
    return {&attributeOf(member), false};
}

/// Does `a` stand before `b`? Among equals the order of insertion decides, and what isn't saved yet comes last.
[[nodiscard]] bool comesBefore(const Entity& a, const Entity& b, const std::vector<SortOrder>& sort);

/// What to fetch. Without sort orders, and among equals, objects come in the order of their insertion.
template <class E>
struct FetchDescriptor {
    Predicate<E> predicate{};
    std::vector<SortOrder> sort{};
    std::optional<std::size_t> limit{};
};

}  // namespace quorvane
