#pragma once

#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quorvane {

// What expectations are made of, by its bare name; tables are made of what stands above.
using testing::AllOf;
using testing::Contains;
using testing::ContainsRegex;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Lt;
using testing::MatchesRegex;
using testing::Not;
using testing::Optional;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

}  // namespace quorvane
