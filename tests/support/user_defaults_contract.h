#pragma once

#include "platform/user_defaults.h"

#include <gtest/gtest.h>

namespace plenzo {

/// What every implementation of UserDefaults keeps to, beginning with an empty store.
inline void keepsToTheContractOfUserDefaults(UserDefaults& defaults) {
    EXPECT_TRUE(defaults.valueForKey("missing").isNothing());
    EXPECT_EQ(defaults.integerForKey("missing"), 0);

    defaults.registerDefaults({{Key("a"), 1}, {Key("b"), "two"}});
    defaults.registerDefaults({{Key("b"), "2"}});
    EXPECT_EQ(defaults.integerForKey("a"), 1);
    EXPECT_EQ(defaults.integerForKey("b"), 2) << "the later default counts";

    defaults.setValues({{Key("a"), false}, {Key("c"), Array{1, 2}}});
    defaults.registerDefaults({{Key("a"), 5}, {Key("c"), 5}});
    EXPECT_EQ(defaults.valueForKey("a"), Value(false)) << "a stored value wins";
    EXPECT_EQ(defaults.valueForKey("c"), Value(Array{1, 2}));
    EXPECT_FALSE(defaults.boolForKey("a"));

    defaults.setValues({{Key("a"), true}});
    EXPECT_TRUE(defaults.boolForKey("a"));
    EXPECT_EQ(defaults.valueForKey("c"), Value(Array{1, 2})) << "other keys stay";
    EXPECT_TRUE(defaults.synchronize());
}

} // namespace plenzo
