#pragma once

#include "platform/sounds.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace plenzo {

/// What every implementation of Sounds keeps to. A subclass installs sounds, and tells the names of
/// those that were played.
class SoundsContract {
public:
    SoundsContract() = default;
    SoundsContract(const SoundsContract&) = delete;
    SoundsContract& operator=(const SoundsContract&) = delete;
    virtual ~SoundsContract() = default;

    virtual Sounds& sounds() = 0;
    virtual void install(const std::string& name) = 0;
    virtual std::vector<std::string> played() = 0;

    void areThereAndArePlayedByTheirNames() {
        install("Ding");
        install("Größe 2");
        for (const char* name : {"Ding", "Größe 2", "Ding"}) {
            EXPECT_TRUE(sounds().hasSound(name)) << name;
            sounds().play(name);
        }
        EXPECT_THAT(played(), testing::ElementsAre("Ding", "Größe 2", "Ding"));
    }

    void areNoPathsAndNothingElse() {
        install("Ding");
        for (const std::string name :
             {"", ".", "..", "Dong", "ding", "./Ding", "/Ding", "Ding/", "Ding.wav", " Ding"}) {
            EXPECT_FALSE(sounds().hasSound(name)) << name;
        }
    }
};

} // namespace plenzo
