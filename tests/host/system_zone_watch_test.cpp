#include "host/system_zone_watch.h"
#include "support/temporary_folder.h"
#include "support/zone_link.h"

#include <gtest/gtest.h>

namespace plenzo {

TEST(ASystemZoneWatch, TellsEachOtherZoneThatIsKnown) {
    const TemporaryFolder folder;
    const ZoneLink link(folder.file("localtime"), "Europe/Berlin");
    std::string name = "Europe/Berlin";
    SystemZoneWatch watch(link.path(), [&name] { return name; });
    EXPECT_EQ(watch.readChange(), std::nullopt);
    const auto replaceBy = [&](const char* newName) {
        name = newName;
        link.replace("America/New_York");
        return watch.readChange();
    };
    EXPECT_EQ(replaceBy("America/New_York"), "America/New_York");
    EXPECT_EQ(replaceBy("America/New_York"), std::nullopt);
    EXPECT_EQ(replaceBy(""), std::nullopt);
    EXPECT_EQ(replaceBy("Europe/Berlin"), "Europe/Berlin");
    name = "Asia/Tokyo"; // without a word of the system's
    EXPECT_EQ(watch.readChange(), std::nullopt);
}

} // namespace plenzo
