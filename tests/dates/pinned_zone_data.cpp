#include <gtest/gtest.h>

#include <cstdlib>

namespace {

/// Makes the program read the zones under tests/data, however it is started.
class PinnedZoneData : public testing::Environment {
public:
    void SetUp() override { ASSERT_EQ(0, setenv("TZDIR", PLENZO_TEST_DATA "/zoneinfo", 1)); }
};

[[maybe_unused]] const auto* const pinned = testing::AddGlobalTestEnvironment(new PinnedZoneData);

} // namespace
