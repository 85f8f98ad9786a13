#pragma once

#include "store/Entity.h"

#include <cassert>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

namespace quorvane {

/// One attribute of an entity, as table, JSON and context see it.
struct AttributeDescription {
    std::string name;  ///< in snake case: the key in JSON; a reference's column is named without its "_id"
    AttributeKind kind = AttributeKind::text;
    bool isOptional = false;
    const EntityDescription& (*target)() = nullptr;  ///< of a reference
    SqlValue (*get)(const Entity&) = nullptr;
    void (*set)(Entity&, const SqlValue&) = nullptr;  ///< as a load does: no change is noted
    const void* (*address)(const Entity&) = nullptr;
    ReferenceBase* (*reference)(Entity&) = nullptr;  ///< of a reference

    [[nodiscard]] std::string column() const;
};

/// An index of those rows alone for which a condition holds.
struct PartialIndex {
    std::string name;
    std::vector<std::string> columns;
    std::string condition;  ///< as the statements that use it say it
};

/// An entity: the one list from which table, statements, dump and load follow.
struct EntityDescription {
    std::string name;   ///< "ActivityRecord"
    std::string table;  ///< "activity_record"
    std::vector<AttributeDescription> attributes;
    std::vector<std::vector<std::string>> indexes;  ///< columns of each index
    std::vector<PartialIndex> partialIndexes{};
    std::shared_ptr<Entity> (*make)() = nullptr;  ///< with all defaults

    [[nodiscard]] const AttributeDescription* attribute(std::string_view attributeName) const;
    [[nodiscard]] const AttributeDescription& attributeAt(const Entity& entity, const void* address) const;
};

/// The seven entities in the order of the schema.
[[nodiscard]] const std::vector<const EntityDescription*>& allEntities();

/// Reads and writes attributes past the notice of changes.
struct AttributeAccess {
    template <class T>
    static void load(Attribute<T>& attribute, const SqlValue& value) {
        attribute.value_ = ValueTraits<T>::fromSql(value);
    }
    static void load(ReferenceBase& reference, const SqlValue& value);
    template <class T>
    static SqlValue value(const Attribute<T>& attribute) {
        return ValueTraits<T>::toSql(attribute.value_);
    }
    static SqlValue value(const ReferenceBase& reference);
};

namespace detail {

template <class M>
struct MemberPointer;
template <class E, class A>
struct MemberPointer<A E::*> {
    using Owner = E;
    using Member = A;
};

template <class A>
struct KindOf {
    static constexpr auto kind = ValueTraits<typename A::Value>::kind;
    static constexpr bool isOptional = ValueTraits<typename A::Value>::isOptional;
    static constexpr const EntityDescription& (*target)() = nullptr;
    static constexpr bool isReference = false;
};
template <class E>
struct KindOf<Reference<E>> {
    static constexpr auto kind = AttributeKind::reference;
    static constexpr bool isOptional = true;
    static constexpr const EntityDescription& (*target)() = &E::description;
    static constexpr bool isReference = true;
};

}  // namespace detail

/// The description of one member: `attribute<&ActivityRecord::startTime>("start_time")`.
template <auto member>
AttributeDescription attribute(const char* name) {
    using Owner = typename detail::MemberPointer<decltype(member)>::Owner;
    using Kind = detail::KindOf<typename detail::MemberPointer<decltype(member)>::Member>;
    return {
        .name = name,
        .kind = Kind::kind,
        .isOptional = Kind::isOptional,
        .target = Kind::target,
        .get = [](const Entity& entity) { return AttributeAccess::value(static_cast<const Owner&>(entity).*member); },
        .set = [](Entity& entity,
                  const SqlValue& value) { AttributeAccess::load(static_cast<Owner&>(entity).*member, value); },
        .address = [](const Entity& entity) -> const void* { return &(static_cast<const Owner&>(entity).*member); },
        .reference = [](Entity& entity) -> ReferenceBase* {
            if constexpr (Kind::isReference) return &(static_cast<Owner&>(entity).*member);
            return nullptr;
        }};
}

/// The description of an attribute that is known by its member: `attributeOf(&ActivityRecord::startTime)`.
template <class E, class A>
const AttributeDescription& attributeOf(A E::*member) {
    static const E sample;
    return E::description().attributeAt(sample, &(sample.*member));
}

}  // namespace quorvane
