#pragma once

#include <gmock/gmock.h>

namespace pacelet::testing {

// The matchers in use on the program's tests.
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

} // namespace pacelet::testing
