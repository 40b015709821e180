#include "calendar_fixture.h"
#include "host/commands/host_command.h"

#include <gtest/gtest.h>

#include <tuple>

namespace plenzo {

using Kind = HostCommand::Kind;

TEST(AHostCommand, IsReadFromItsUrl) {
    const std::tuple<const char*, Kind, const char*> rows[] = {
        {"plenzoevent://snooze/r~1/600", Kind::Snooze, "r~1"},
        {"plenzoevent://acknowledge/r~1", Kind::Acknowledge, "r~1"},
        {"plenzoevent://edit/e~1/completed/NO", Kind::Complete, "e~1"},
        {"plenzoevent://show/e~1", Kind::Show, "e~1"},
        {"PlenzoEvent:info/e~1", Kind::Info, "e~1"},
        {"plenzoevent://prefs/general", Kind::Preferences, ""}};
    for (const auto& [url, kind, uid] : rows) {
        const auto command = readHostCommand(url);
        ASSERT_TRUE(command) << url;
        EXPECT_EQ(command->kind, kind) << url;
        EXPECT_EQ(command->uid, uid) << url;
    }
    EXPECT_EQ(readHostCommand(std::get<0>(rows[0]))->until, instant("2001-01-01T00:10:00Z"));
    EXPECT_EQ(readHostCommand("plenzoevent://snooze/r/99999999999999999999")->until,
              readHostCommand("plenzoevent://snooze/r/31622400000")->until); // the year 3003
    EXPECT_EQ(readHostCommand(std::get<0>(rows[2]))->completion, Completion::Undone);
}

TEST(AHostCommand, HasTheTextOfAQuickEntryWithoutItsEscapes) {
    const std::pair<const char*, const char*> rows[] = {{"Call%203%2F4%20at%205", "Call 3/4 at 5"},
                                                        {"caf%C3%a9/bar", "café/bar"},
                                                        {"100%", "100%"},
                                                        {"5%zz%4", "5%zz%4"}};
    for (const auto& [escaped, text] : rows) {
        EXPECT_EQ(readHostCommand(std::string("plenzoevent://new/") + escaped)->text, text);
    }
}

TEST(AHostCommand, IsNothingElse) {
    const std::string tooLong = "plenzoevent://new/" + std::string(70'000, 'x');
    const std::string longUid = "plenzoevent://show/" + std::string(3'000, 'x');
    for (const std::string& url :
         {std::string(), std::string("plenzoevent"), std::string("plenzoevent:"),
          std::string("plenzoevent://snooze/r"), std::string("plenzoevent://snooze/r/"),
          std::string("plenzoevent://snooze/r/1.5"), std::string("plenzoevent://snooze/r/-1"),
          std::string("plenzoevent://snooze/r/99999999999999999999x"),
          std::string("plenzoevent://acknowledge/"), std::string("plenzoevent://acknowledge/r/s"),
          std::string("plenzoevent://edit/e/title/YES"),
          std::string("plenzoevent://edit/e/completed/yes"),
          std::string("plenzoevent://new/%20%0A"), std::string("plenzoevent://prefs/all"),
          std::string("plenzoevent://delete/e"), std::string("file:///etc/passwd"), tooLong,
          longUid}) {
        EXPECT_FALSE(readHostCommand(url)) << url.substr(0, 60);
    }
}

TEST(AHostCommand, IsReplacedByALaterOneAboutTheSame) {
    const auto isReplaced = [](const char* earlier, const char* later) {
        const std::string scheme = "plenzoevent://";
        return isReplacedBy(*readHostCommand(scheme + earlier), *readHostCommand(scheme + later));
    };
    EXPECT_TRUE(isReplaced("snooze/r/600", "acknowledge/r"));
    EXPECT_TRUE(isReplaced("edit/e/completed/YES", "edit/e/completed/NO"));
    EXPECT_FALSE(isReplaced("snooze/r/600", "acknowledge/s"));
    EXPECT_FALSE(isReplaced("snooze/e/600", "edit/e/completed/NO"));
    EXPECT_FALSE(isReplaced("new/Tea", "new/Tea"));
}

} // namespace plenzo
