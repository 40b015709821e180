#include "core/simulation/world.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace plenzo::simulation {
namespace {

/// PLENZO_SIMULATION_SEEDS is "FIRST COUNT", for a longer run or for one year that failed.
struct Seeds {
    std::uint32_t first = 1;
    std::uint32_t count = 100;
};

Seeds seeds() {
    Seeds seeds;
    if (const char* wanted = std::getenv("PLENZO_SIMULATION_SEEDS")) {
        char* rest = nullptr;
        seeds.first = static_cast<std::uint32_t>(std::strtoul(wanted, &rest, 10));
        seeds.count = static_cast<std::uint32_t>(std::strtoul(rest, nullptr, 10));
    }
    return seeds;
}

TEST(ASimulatedYear, MissesNothingAndTellsNothingTwiceOrLate) {
    std::size_t firedCount = 0;
    const Seeds wanted = seeds();
    ASSERT_GT(wanted.count, 0U);
    for (std::uint32_t seed = wanted.first; seed < wanted.first + wanted.count; ++seed) {
        World world(seed);
        world.liveAYear();
        EXPECT_EQ(world.fault(), "") << "seed " << seed;
        EXPECT_GT(world.firedCount(), 300U) << "seed " << seed;
        firedCount += world.firedCount();
    }
    RecordProperty("fired", std::to_string(firedCount));
}

} // namespace
} // namespace plenzo::simulation
