#include "core/simulation/world.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <string>

namespace plenzo::simulation {
namespace {

/// Parts, so that they run side by side.
constexpr std::uint32_t partCount = 4;

/// PLENZO_SIMULATION_SEEDS is "FIRST COUNT", for a longer run or for one year that failed.
struct Seeds {
    std::uint32_t first = 1;
    std::uint32_t count = 100;
};

Seeds wantedSeeds() {
    Seeds seeds;
    if (const char* wanted = std::getenv("PLENZO_SIMULATION_SEEDS")) {
        char* rest = nullptr;
        seeds.first = static_cast<std::uint32_t>(std::strtoul(wanted, &rest, 10));
        seeds.count = static_cast<std::uint32_t>(std::strtoul(rest, nullptr, 10));
    }
    return seeds;
}

class ASimulatedYear : public testing::TestWithParam<std::uint32_t> {};

TEST_P(ASimulatedYear, MissesNothingAndTellsNothingTwiceOrLate) {
    const Seeds seeds = wantedSeeds();
    ASSERT_GT(seeds.count, 0U);
    std::size_t firedCount = 0;
    for (std::uint32_t number = GetParam(); number < seeds.count; number += partCount) {
        World world(seeds.first + number);
        world.liveAYear();
        EXPECT_EQ(world.fault(), "") << "seed " << seeds.first + number;
        EXPECT_GT(world.firedCount(), 100U) << "seed " << seeds.first + number;
        firedCount += world.firedCount();
    }
    RecordProperty("fired", std::to_string(firedCount));
}

INSTANTIATE_TEST_SUITE_P(Part, ASimulatedYear, testing::Range(0U, partCount));

} // namespace
} // namespace plenzo::simulation
