#include "store/Entity.h"

#include "store/ActivityShare.h"
#include "store/AppPreference.h"
#include "store/AppSettings.h"
#include "store/ProjectTimeAnnotation.h"
#include "store/Rule.h"
#include "support/Builders.h"
#include "support/Mapped.h"
#include "support/Matching.h"
#include "support/TemporaryStore.h"

namespace quorvane {
namespace {

/// A value that no default has; `row` is what a relationship may lead to.
SqlValue unusual(const AttributeDescription& attribute, const Entity& sample, std::int64_t row) {
    switch (attribute.kind) {
    case AttributeKind::uuid: return ValueTraits<Uuid>::toSql(Uuid::random());
    case AttributeKind::date: return std::int64_t{-1234567890123456};  // before 1970, and to the microsecond
    case AttributeKind::text: return std::string("zero \0, 😀, not \xFF UTF-8: ", 27) + attribute.name;
    case AttributeKind::real: return -1234.5678;
    case AttributeKind::integer: return std::int64_t{-42};
    case AttributeKind::boolean: return std::int64_t{attribute.get(sample) == SqlValue{std::int64_t{0}}};
    case AttributeKind::uuidList: return ValueTraits<std::vector<Uuid>>::toSql({Uuid::random(), Uuid::random()});
    case AttributeKind::reference: return row;
    }
    return {};
}

template <class E>
class EntityTest : public testing::Test {
protected:
    TemporaryStore store;
    const EntityDescription& description = E::description();

    static std::vector<SqlValue> valuesOf(const E& entity) {
        return mapped(E::description().attributes, [&](const auto& attribute) { return attribute.get(entity); });
    }
};

using Entities =
    testing::Types<ActivityRecord, Project, Rule, AppPreference, AppSettings, ProjectTimeAnnotation, ActivityShare>;
TYPED_TEST_SUITE(EntityTest, Entities);

TYPED_TEST(EntityTest, EveryAttributeIsStoredAndReadAgain) {
    const auto project = insertProject(this->store.context(), "Website");
    const auto plain = std::make_shared<TypeParam>();
    const auto filled = std::make_shared<TypeParam>();
    this->store.context().save();
    for (const auto& attribute : this->description.attributes)
        attribute.set(*filled, unusual(attribute, *plain, project->objectId()));
    for (const auto& entity : {plain, filled})
        this->store.context().insert(entity);
    this->store.context().save();
    const std::vector<SqlValue> expected[] = {this->valuesOf(*plain), this->valuesOf(*filled)};

    this->store.reopen();
    auto found = this->store.context().template fetch<TypeParam>();
    if (std::is_same_v<TypeParam, Project>) found.erase(found.begin());
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_TRUE(this->valuesOf(*found[0]) == expected[0]);
    EXPECT_TRUE(this->valuesOf(*found[1]) == expected[1]);
    for (std::size_t i = 0; i < expected[0].size(); ++i)
        EXPECT_FALSE(expected[0][i] == expected[1][i]) << this->description.attributes[i].name;
}

}  // namespace
}  // namespace quorvane
