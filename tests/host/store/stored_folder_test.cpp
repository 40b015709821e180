#include "calendar_fixture.h"
#include "host/store/calendar_store.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>

using testing::ElementsAre;
using testing::Pair;

namespace plenzo {

namespace {

/// The uids of the calendars by the items' UIDs.
std::map<std::string, std::string> uidsByItems(const CalendarSet& set) {
    std::map<std::string, std::string> uids;
    for (const Calendar& calendar : set.calendars) {
        for (const FiledItem& filed : itemsOf(calendar)) {
            uids[filed.item->uid] = calendar.uid;
        }
    }
    return uids;
}

/// A folder whose files come and go, as a running host keeps up with it.
class AFolderOfCalendarFiles : public testing::Test {
protected:
    AFolderOfCalendarFiles() {
        m_store.bearWithAbsentFiles([this] { return m_now; });
        m_store.setSources({{{m_folder.path()}, {}, {}, false}});
    }

    void write(const std::string& name, const std::vector<std::string>& uids,
               const std::string& title = "") {
        std::string components = title.empty() ? "" : "NAME:" + title + "\n";
        for (const std::string& uid : uids) {
            components += "BEGIN:VEVENT\nUID:" + uid + "\nDTSTART:20260310T100000Z\nEND:VEVENT\n";
        }
        std::ofstream(m_folder.file(name)) << fileAround(components);
    }
    void remove(const std::string& name) { std::filesystem::remove(m_folder.file(name)); }

    std::map<std::string, std::string> freshUids() const {
        return uidsByItems(loadCalendars({m_folder.path()}));
    }

    std::map<std::string, std::string> uids() {
        m_store.update({true, {}});
        m_now += std::chrono::minutes(1);
        m_store.update({});
        return uidsByItems(m_store.calendars());
    }

    TemporaryFolder m_folder;
    SteadyTime m_now{};
    CalendarStore m_store;
};

} // namespace

TEST_F(AFolderOfCalendarFiles, GivesAFileThatIsNamedAfterItsItemOneIdentityWhateverLiesBesideIt) {
    write("a@host.ics", {"a@host"});
    const std::string uid = freshUids().at("a@host");
    write("b.ics", {"b"});
    EXPECT_THAT(freshUids(), ElementsAre(Pair("a@host", uid), Pair("b", uid)));
    write("other.ics", {"c"});
    EXPECT_THAT(freshUids(), ElementsAre(Pair("a@host", uid), Pair("b", uid), Pair("c", uid)));
    write("work.ics", {"d", "e"}, "Work");
    EXPECT_EQ(freshUids().at("a@host"), uid);
    EXPECT_EQ(freshUids().at("c"), uid);
    EXPECT_NE(freshUids().at("d"), uid);
    remove("work.ics");
    std::ofstream(m_folder.file("color")) << "#ff0000\n";
    EXPECT_EQ(freshUids().at("a@host"), uid);
}

TEST_F(AFolderOfCalendarFiles, LeavesALoneFileTheCalendarThatItWas) {
    write("work.ics", {"a"});
    const std::string alone = uids().at("a");
    write("x.ics", {"b"});
    const std::string folder = uids().at("b");
    EXPECT_NE(folder, alone);
    write("y.ics", {"c"});
    EXPECT_THAT(uids(), ElementsAre(Pair("a", alone), Pair("b", folder), Pair("c", folder)));
}

TEST_F(AFolderOfCalendarFiles, StaysOneCalendarWhateverBecomesOfItsFiles) {
    write("x.ics", {"a"});
    write("y.ics", {"b"});
    const std::string folder = uids().at("a");
    remove("y.ics");
    EXPECT_THAT(uids(), ElementsAre(Pair("a", folder)));
    write("x.ics", {"a", "c"});
    EXPECT_THAT(uids(), ElementsAre(Pair("a", folder), Pair("c", folder)));
    write("x.ics", {"a"}, "Named");
    write("work.ics", {"d"}, "Work");
    EXPECT_EQ(uids().at("a"), folder);
    EXPECT_NE(uids().at("d"), folder);
}

TEST_F(AFolderOfCalendarFiles, IsACollectionFromItsDescriptionOn) {
    write("work.ics", {"a", "b"}, "Work");
    const std::string alone = uids().at("a");
    write("displayname", {});
    const std::string folder = uids().at("a");
    EXPECT_NE(folder, alone);
    remove("displayname");
    EXPECT_EQ(uids().at("a"), folder);
    EXPECT_EQ(freshUids().at("a"), alone);
}

TEST_F(AFolderOfCalendarFiles, WaitsForTheEndOfAFileToKnowWhatItIs) {
    write("a.ics", {"a"});
    const std::string folder = uids().at("a");
    std::ofstream(m_folder.file("b.ics")) << "BEGIN:VCALENDAR\n";
    uids();
    write("b.ics", {"b"});
    EXPECT_THAT(uids(), ElementsAre(Pair("a", folder), Pair("b", folder)));
}

} // namespace plenzo
