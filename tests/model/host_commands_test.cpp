#include "model/host_commands.h"
#include "model/uri_syntax.h"
#include "support/fake_workspace.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <string>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HostCommandsTest : public testing::Test {
protected:
    Alarm alarm() const {
        Alarm result;
        result.eventDict = std::make_shared<Dictionary>(Dictionary{{keys::uid, "E1-20260310"}});
        result.reminderDict = Dictionary{{keys::uid, "R-1"}};
        return result;
    }

    FakeWorkspace workspace;
    HostCommands commands{workspace};
};

TEST_F(HostCommandsTest, LeaveTheHostWhereItIsForWhatTheUserDecides) {
    commands.snoozeReminderWithUID("R-1", 600.9);
    commands.snoozeReminderWithUID("R-1", -600.9);
    commands.sendSnoozeToPlenzo(alarm(), Instant(795484800.5));
    commands.acknowledgeReminderWithUID("R-1");
    commands.sendAcknowledgedToPlenzo(alarm());
    const Alarm toDo = alarm();
    commands.sendCompletedChangeToPlenzo(toDo);
    toDo.eventDict->set(keys::completed, true);
    commands.sendCompletedChangeToPlenzo(toDo);
    EXPECT_THAT(workspace.opened,
                ElementsAre("open quietly plenzoevent://snooze/R-1/600",
                            "open quietly plenzoevent://snooze/R-1/-600",
                            "open quietly plenzoevent://snooze/R-1/795484800",
                            "open quietly plenzoevent://acknowledge/R-1",
                            "open quietly plenzoevent://acknowledge/R-1",
                            "open quietly plenzoevent://edit/E1-20260310/completed/NO",
                            "open quietly plenzoevent://edit/E1-20260310/completed/YES"));
}

TEST_F(HostCommandsTest, BringTheHostForwardForWhatTheUserWantsToSee) {
    commands.showAlarmInPlenzo(alarm(), HostCommands::InfoPanel::Show);
    commands.showEventWithUIDPlusDay("E2", HostCommands::InfoPanel::Hide);
    commands.showPreferences();
    commands.newEvent("Lunch%20with%20Ana?");
    EXPECT_THAT(workspace.opened,
                ElementsAre("open plenzoevent://info/E1-20260310", "open plenzoevent://show/E2",
                            "open plenzoevent://prefs/general",
                            "open plenzoevent://new/Lunch%20with%20Ana?"));
}

TEST_F(HostCommandsTest, AreNotSentWhenTheyAreNoURLs) {
    for (const char* uid :
         {"a b", "a\nb", "é", "50%", "%zz", "a\"b", "<a>", "a\\b", "{a}", "a^b"}) {
        commands.acknowledgeReminderWithUID(uid);
        commands.showEventWithUIDPlusDay(uid, HostCommands::InfoPanel::Show);
    }
    commands.snoozeReminderWithUID("R", std::numeric_limits<double>::quiet_NaN());
    commands.snoozeReminderWithUID("R", std::numeric_limits<double>::infinity());
    commands.snoozeReminderWithUID("R", 1e300);
    EXPECT_THAT(workspace.opened, IsEmpty());
}

TEST_F(HostCommandsTest, CarryAnEmptyValueForWhatIsMissing) {
    commands.sendAcknowledgedToPlenzo(Alarm());
    commands.showAlarmInPlenzo(Alarm(), HostCommands::InfoPanel::Hide);
    EXPECT_THAT(workspace.opened,
                ElementsAre("open quietly plenzoevent://acknowledge/", "open plenzoevent://show/"));
}

TEST(AURI, HasTheSyntaxOfItsStandard) {
    const std::string valid[] = {
        "a:",
        "A1+-.:",
        "ftp://ftp.is.co.za/rfc/rfc1808.txt",
        "urn:oasis:names:docbook:4.1.2",
        "ldap://[2001:db8::7]/c=GB?objectClass?one",
        "mailto:John.Doe@example.com",
        "telnet://192.0.2.16:80/",
        "tel:+1-816-555-1212",
        "http://a:b@h:80/p;x=1/?q=?/#f/?",
        "file:///etc/hosts",
        "x://h:",
        "x://[::]",
        "x://[::1]:5",
        "x://[1:2:3:4:5:6:7:8]",
        "x://[1::8]",
        "x://[::ffff:192.0.2.1]",
        "x://[v1.a:b]",
        "x:/%41%ff",
        "x://%41.b",
    };
    for (const auto& text : valid) {
        EXPECT_TRUE(isValidURI(text)) << text;
    }
    const std::string invalid[] = {
        "",
        ":",
        "1a:",
        "a b:",
        "no scheme",
        "/path",
        "x:a b",
        "x:%",
        "x:%4",
        "x:%4g",
        "x:a%",
        "x:[",
        "x:a#b#c",
        "x:?a b",
        "x://h:8a",
        "x://[",
        "x://[1:2:3:4:5:6:7]",
        "x://[1::2::3]",
        "x://[12345::]",
        "x://[::256.0.0.1]",
        "x://[::1.2.3]",
        "x://[1:2:3:4:5:6:7:8:9]",
        "x://[v.a]",
        "x://[::1]a",
        "x://a@b@c",
        "x:\x7f",
        "x:é",
        std::string("x:\0", 3),
        "x://h<i>",
        "x://[1:]",
        "x://[:1]",
        "x://[1:2:3:4:5:6:7::8]",
    };
    for (const auto& text : invalid) {
        EXPECT_FALSE(isValidURI(text)) << text;
    }
}

} // namespace
} // namespace plenzo
