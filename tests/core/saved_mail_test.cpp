#include "core/saved_agents.h"
#include "propertylist/binary_property_list.h"

#include <gmock/gmock.h>

#include <utility>

namespace plenzo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Dictionary mailAt(const std::string& uid, Instant start) {
    Dictionary reminder = relativeReminder(uid, 0, 2);
    reminder.set(keys::to, Array{"ana@example.org"});
    return event(uid, start, {reminder});
}

/// An agent whose mail waits, as it does while the client starts.
class MailAtTheEndOfASession : public testing::Test {
protected:
    MailAtTheEndOfASession() {
        desktop.mailer.waits = true;
        desktop.launch();
    }
    static Instant at(int hour, int minute = 0) { return utc(2026, 3, 10, hour, minute); }

    void fireAt(Instant now, const Array& eventDicts) {
        desktop.agent->alarmsUpdated(eventDicts, false);
        desktop.timers.advanceTo(now);
    }
    void endAgent() {
        desktop.agent->applicationWillTerminate();
        desktop.agent.reset();
        desktop.mailer.forget();
        desktop.mailer.waits = false;
    }
    /// Of what has been given to the mailer since this was asked last.
    std::vector<std::string> titles() {
        std::vector<std::string> texts;
        for (const MailMessage& message : std::exchange(desktop.mailer.sent, {})) {
            texts.push_back(message.subject.substr(message.subject.rfind(' ') + 1));
        }
        return texts;
    }
    /// What has been acknowledged since this was asked last.
    std::vector<std::string> acknowledged() {
        std::vector<std::string> texts;
        for (const std::string& url : std::exchange(desktop.workspace.opened, {})) {
            texts.push_back(url.substr(url.rfind('/') + 1));
        }
        return texts;
    }
    void leave(const Array& mailAlarms) {
        desktop.files.contents[desktop.pathOf("Mail.plist")] =
            writeBinaryPropertyList(Value(mailAlarms));
    }

    DesktopOfAgents desktop{at(7)};
};

TEST_F(MailAtTheEndOfASession, GoesOutInTheNextUnlessItHadBegun) {
    fireAt(at(7, 55),
           {mailAt("begun", at(7, 50)), mailAt("first", at(7, 51)), eventAt("shown", at(7, 52)),
            mailAt("second", at(7, 53)), mailAt("later", at(9, 30))});
    desktop.mailer.begin();
    EXPECT_THAT(acknowledged(), ElementsAre("begun"));
    desktop.powerNotices.shutDown();
    endAgent();
    EXPECT_THAT(titles(), ElementsAre("begun"));
    EXPECT_EQ(desktop.mailer.completionCount, 1);

    desktop.clock.set(at(9));
    desktop.launch();
    EXPECT_THAT(titles(), ElementsAre("first", "second"));
    EXPECT_THAT(acknowledged(), ElementsAre("first", "second"));
    EXPECT_THAT(desktop.deliveredTitles(), ElementsAre("shown")) << "it had been shown";
    EXPECT_THAT(desktop.pendingUIDs(), ElementsAre("later"));
    EXPECT_THAT(desktop.fileNames(), IsEmpty());
    desktop.agent->alarmsUpdated({mailAt("first", at(7, 51)), mailAt("second", at(7, 53))}, false);
    desktop.launchAgain();
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(MailAtTheEndOfASession, IsSavedForTheSessionAfterTheNextIfItHasToWaitAgain) {
    fireAt(at(7, 55), {mailAt("first", at(7, 50)), mailAt("second", at(7, 51))});
    for (int end = 0; end < 2; ++end) {
        desktop.powerNotices.shutDown();
        endAgent();
        desktop.mailer.waits = end == 0;
        desktop.launch();
    }
    EXPECT_THAT(titles(), ElementsAre("first", "first", "first", "second"))
        << "given to three mailers, the last of which took it";
    EXPECT_THAT(acknowledged(), ElementsAre("first", "second"));
}

TEST_F(MailAtTheEndOfASession, ThatStillGoesOutIsNotSentAgain) {
    fireAt(at(7, 55), {mailAt("first", at(7, 50)), mailAt("second", at(7, 51))});
    desktop.powerNotices.shutDown();
    desktop.mailer.begin();
    desktop.mailer.finish();
    endAgent();
    titles();
    desktop.launch();
    EXPECT_THAT(titles(), ElementsAre("second"));
}

TEST_F(MailAtTheEndOfASession, ThatStillGoesOutIsNotSentAgainFromAFullDisk) {
    fireAt(at(7, 55), {mailAt("first", at(7, 50))});
    desktop.powerNotices.shutDown();
    desktop.files.isFull = true;
    desktop.mailer.begin();
    endAgent();
    titles();
    desktop.launch();
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(MailAtTheEndOfASession, IsNotRepeatedWhileItsFileCannotBeRemoved) {
    fireAt(at(7, 55), {mailAt("first", at(7, 50))});
    desktop.powerNotices.shutDown();
    endAgent();
    titles();
    desktop.files.isReadOnly = true;
    desktop.launch();
    desktop.launchAgain();
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(MailAtTheEndOfASession, IsSavedOnlyThen) {
    fireAt(at(7, 55), {mailAt("first", at(7, 50))});
    desktop.powerNotices.shutDown();
    desktop.powerNotices.cancelShutdown();
    EXPECT_THAT(desktop.fileNames(), IsEmpty());
    endAgent();
    EXPECT_THAT(desktop.fileNames(), IsEmpty()) << "the host ended it";
    EXPECT_EQ(desktop.mailer.completionCount, 0);
}

TEST_F(MailAtTheEndOfASession, IsNotBelievedWhatItIs) {
    endAgent();
    desktop.clock.set(at(9));
    const Dictionary mail = mailAt("mail", at(7, 50));
    const Dictionary reminder = *mail.arrayForKey(keys::rem)->begin()->dictionary();
    const auto saved = [](const Value& date, const Value& eventDict, const Value& reminderDict) {
        return Dictionary{{keys::fireDate, date},
                          {keys::eventDict, eventDict},
                          {keys::reminderDict, reminderDict}};
    };
    const Value date(at(7, 50).date());
    const Value never(Date{1e300});
    leave({"text", Dictionary(), saved("text", mail, reminder), saved(date, 3, reminder),
           saved(date, mail, "text"), saved(never, mail, reminder),
           saved(date, eventAt("shown", at(7, 50)), relativeReminder("shown", 0)),
           saved(date, mail, reminder), saved(date, mail, reminder)});
    desktop.launch();
    EXPECT_THAT(titles(), ElementsAre("mail")) << "once";
    EXPECT_THAT(desktop.deliveredTitles(), IsEmpty());
}

} // namespace
} // namespace plenzo
