#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

/// What nearly every test names: googletest, its commonest matchers by their names alone, and what tables are made of.
namespace quorvane {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::MatchesRegex;
using testing::Not;
using testing::Optional;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

}  // namespace quorvane
