#include "store/EntityDescription.h"

#include "store/ActivityRecord.h"
#include "store/ActivityShare.h"
#include "store/AppPreference.h"
#include "store/AppSettings.h"
#include "store/Project.h"
#include "store/ProjectTimeAnnotation.h"
#include "store/Rule.h"

#include <algorithm>

namespace quorvane {

std::string AttributeDescription::column() const {
    return kind == AttributeKind::reference ? name.substr(0, name.size() - 3) : name;
}

const AttributeDescription* EntityDescription::attribute(std::string_view attributeName) const {
    const auto found =
        std::find_if(attributes.begin(), attributes.end(), [&](const auto& one) { return one.name == attributeName; });
    return found == attributes.end() ? nullptr : &*found;
}

const AttributeDescription& EntityDescription::attributeAt(const Entity& entity, const void* address) const {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& one) { return one.address(entity) == address; });
    assert(found != attributes.end());
    return *found;
}

void AttributeAccess::load(ReferenceBase& reference, const SqlValue& value) {
    reference.setRowId(ValueTraits<std::int64_t>::fromSql(value));
}

SqlValue AttributeAccess::value(const ReferenceBase& reference) {
    const std::int64_t rowId = reference.rowId();
    return rowId == 0 ? SqlValue{} : SqlValue{rowId};
}

const std::vector<const EntityDescription*>& allEntities() {
    static const std::vector<const EntityDescription*> entities{
        &ActivityRecord::description(), &Project::description(),     &Rule::description(),
        &AppPreference::description(),  &AppSettings::description(), &ProjectTimeAnnotation::description(),
        &ActivityShare::description()};
    return entities;
}

}  // namespace quorvane
