#include "store/Predicate.h"

#include <fmt/format.h>

namespace quorvane {
namespace {

constexpr std::string_view symbol(Comparison comparison) {
    switch (comparison) {
    case Comparison::equal: return "=";
    case Comparison::notEqual: return "IS NOT";
    case Comparison::less: return "<";
    case Comparison::lessOrEqual: return "<=";
    case Comparison::greater: return ">";
    case Comparison::greaterOrEqual: return ">=";
    }
    return "=";
}

bool holds(Comparison comparison, int order) {
    switch (comparison) {
    case Comparison::equal: return order == 0;
    case Comparison::notEqual: return order != 0;
    case Comparison::less: return order < 0;
    case Comparison::lessOrEqual: return order <= 0;
    case Comparison::greater: return order > 0;
    case Comparison::greaterOrEqual: return order >= 0;
    }
    return false;
}

class CompareNode final : public PredicateNode {
public:
    CompareNode(const AttributeDescription& attribute, Comparison comparison, SqlValue value, bool indexed)
        : attribute_(attribute), comparison_(comparison), value_(std::move(value)), indexed_(indexed) {}

    void appendTo(SqlCondition& condition) const override {
        condition.text += fmt::format("{}{} {} ?", indexed_ ? "" : "+", attribute_.column(), symbol(comparison_));
        condition.parameters.push_back(value_);
    }

    bool matches(const Entity& entity) const override {
        const SqlValue held = attribute_.get(entity);
        if (isNull(held)) return comparison_ == Comparison::notEqual;
        return holds(comparison_, compare(held, value_));
    }

private:
    const AttributeDescription& attribute_;
    Comparison comparison_;
    SqlValue value_;
    bool indexed_;
};

class NoneNode final : public PredicateNode {
public:
    NoneNode(const AttributeDescription& attribute, bool isNone) : attribute_(attribute), isNone_(isNone) {}

    void appendTo(SqlCondition& condition) const override {
        const std::string column = attribute_.column();
        const std::string removed = removedTargets(condition.removed);
        if (removed.empty())
            condition.text += column + (isNone_ ? " IS NULL" : " IS NOT NULL");
        else if (isNone_)
            condition.text += fmt::format("({0} IS NULL OR {0} IN ({1}))", column, removed);
        else
            condition.text += fmt::format("({0} IS NOT NULL AND {0} NOT IN ({1}))", column, removed);
    }
    bool matches(const Entity& entity) const override { return isNull(attribute_.get(entity)) == isNone_; }

private:
    /// "5, 7": the removed rows that a relationship may lead to.
    [[nodiscard]] std::string removedTargets(const RemovedRows& removed) const {
        if (attribute_.kind != AttributeKind::reference) return {};
        const auto rows = removed.find(&attribute_.target());
        return rows == removed.end() ? std::string() : fmt::format("{}", fmt::join(rows->second, ", "));
    }

    const AttributeDescription& attribute_;
    bool isNone_;
};

class ReferenceNode final : public PredicateNode {
public:
    ReferenceNode(const AttributeDescription& attribute, std::shared_ptr<const Entity> target)
        : attribute_(attribute), target_(std::move(target)) {}

    void appendTo(SqlCondition& condition) const override {
        condition.text += attribute_.column() + " = ?";
        condition.parameters.push_back(wanted());
    }
    bool matches(const Entity& entity) const override {
        const SqlValue held = attribute_.get(entity);
        return !isNull(held) && compare(held, wanted()) == 0;
    }

private:
    /// The target's row, which it gets when it is saved: so it is asked for at each use. A removed one equals nothing.
    [[nodiscard]] SqlValue wanted() const { return target_->isDeleted() ? SqlValue{} : SqlValue{target_->objectId()}; }

    const AttributeDescription& attribute_;
    std::shared_ptr<const Entity> target_;
};

class JoinNode final : public PredicateNode {
public:
    JoinNode(bool conjunction, std::shared_ptr<const PredicateNode> a, std::shared_ptr<const PredicateNode> b)
        : conjunction_(conjunction), a_(std::move(a)), b_(std::move(b)) {}

    void appendTo(SqlCondition& condition) const override {
        condition.text += '(';
        a_->appendTo(condition);
        condition.text += conjunction_ ? " AND " : " OR ";
        b_->appendTo(condition);
        condition.text += ')';
    }
    bool matches(const Entity& entity) const override {
        return conjunction_ ? a_->matches(entity) && b_->matches(entity) : a_->matches(entity) || b_->matches(entity);
    }

private:
    bool conjunction_;
    std::shared_ptr<const PredicateNode> a_;
    std::shared_ptr<const PredicateNode> b_;
};

/// Temporary rows count downwards from -1.
std::pair<bool, std::int64_t> rank(const Entity& entity) {
    const std::int64_t row = entity.objectId();
    return {row < 0, row < 0 ? -row : row};
}

}  // namespace

bool comesBefore(const Entity& a, const Entity& b, const std::vector<SortOrder>& sort) {
    for (const SortOrder& order : sort) {
        const int result = compare(order.attribute->get(a), order.attribute->get(b));
        if (result != 0) return order.isAscending ? result < 0 : result > 0;
    }
    return rank(a) < rank(b);
}

namespace detail {

std::shared_ptr<const PredicateNode> compareNode(const AttributeDescription& attribute, Comparison comparison,
                                                 SqlValue value, bool indexed) {
    return std::make_shared<CompareNode>(attribute, comparison, std::move(value), indexed);
}

std::shared_ptr<const PredicateNode> noneNode(const AttributeDescription& attribute, bool isNone) {
    return std::make_shared<NoneNode>(attribute, isNone);
}

std::shared_ptr<const PredicateNode> referenceNode(const AttributeDescription& attribute,
                                                   std::shared_ptr<const Entity> target) {
    return std::make_shared<ReferenceNode>(attribute, std::move(target));
}

std::shared_ptr<const PredicateNode> joinNode(bool conjunction, std::shared_ptr<const PredicateNode> a,
                                              std::shared_ptr<const PredicateNode> b) {
    return std::make_shared<JoinNode>(conjunction, std::move(a), std::move(b));
}

}  // namespace detail
}  // namespace quorvane
