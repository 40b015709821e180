#include "mail_fixture.h"
#include "support/mail_items.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace plenzo {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(MailOfAnAgent, RunsTheScriptOnceForEachRecipientWithTheSixItems) {
    MailMessage message = messageTo({"ana@example.org", "bo@example.org", "cy@example.org"});
    message.attachment = "/tmp/plan.pdf";
    message.recipients[1].name = "Bo \"the\" Bear";
    mailAndWait(message);
    ASSERT_THAT(programs(), ElementsAre(agentScript("birdmail"), agentScript("birdmail"),
                                        agentScript("birdmail")));
    EXPECT_THAT(runner.calls[1].arguments,
                ElementsAre("mail_attachment", "Stand-up", "At 9:15", "/tmp/plan.pdf", "1",
                            "bo@example.org", "Bo \"the\" Bear"));
    EXPECT_THAT(runner.calls[1].environment,
                ElementsAre("PLENZO_MAIL_CLIENT=birdmail", "PLENZO_MAIL_PROGRAM="));
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org", "bo@example.org", "cy@example.org"));
    EXPECT_THAT(items(6), ElementsAre("", "Bo \"the\" Bear", ""));
    EXPECT_THAT(results, ElementsAre(true));

    message.delivery = MailMessage::Delivery::LeaveOpen;
    mailAndWait(message);
    EXPECT_EQ(items(4).back(), "0");
}

TEST_F(MailOfAnAgent, LaunchesAClientThatDoesNotRunAndGivesItFiveSeconds) {
    clients.running["birdmail"] = false;
    mailAndWait(messageTo({"ana@example.org"}));
    EXPECT_THAT(clients.launched, ElementsAre("birdmail"));
    delays.pass(4.99);
    later.run();
    EXPECT_THAT(runner.calls, IsEmpty());
    delays.pass(0.01);
    later.run();
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org"));
    mailAndWait(messageTo({"bo@example.org"}));
    EXPECT_EQ(addresses().size(), 2U) << "it runs by now";
    EXPECT_EQ(clients.launched.size(), 1U);
}

TEST_F(MailOfAnAgent, LaunchesNothingThatRunsOrThatIsOfTheTerminalOrForNobody) {
    mailAndWait(messageTo({"ana@example.org"}));
    clients.running.clear();
    mailAndWait(messageTo({}));
    clients.defaultClient->isOfTerminal = true;
    mailAndWait(messageTo({"bo@example.org"}));
    EXPECT_THAT(clients.launched, IsEmpty());
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org", "bo@example.org"));
    EXPECT_THAT(results, ElementsAre(true, true, true));
}

TEST_F(MailOfAnAgent, StopsWhenOneOfItsOwnScriptsFails) {
    runner.failing.insert(agentScript("birdmail"));
    mailAndWait(messageTo({"ana@example.org", "bo@example.org"}));
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org"));
    EXPECT_THAT(results, ElementsAre(false));
}

TEST_F(MailOfAnAgent, LeavesToTheUserWhatBecomesOfTheUsersScript) {
    runner.programs.insert(userScript("birdmail"));
    runner.failing.insert(userScript("birdmail"));
    mailAndWait(messageTo({"ana@example.org", "bo@example.org"}));
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org", "bo@example.org"));
    EXPECT_THAT(results, ElementsAre(true));
}

TEST_F(MailOfAnAgent, RunsOneScriptAtATimeWhateverHangs) {
    runner.programs.insert(userScript("birdmail"));
    runner.hanging.insert(userScript("birdmail"));
    mail(messageTo({"ana@example.org", "bo@example.org"}));
    mailAndWait(messageTo({"cy@example.org"}));
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org"));
    runner.passLimit();
    later.run();
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org", "bo@example.org"));
    runner.passLimit();
    later.run();
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org", "bo@example.org", "cy@example.org"));
    EXPECT_THAT(results, ElementsAre(true));
    runner.passLimit();
    EXPECT_THAT(results, ElementsAre(true, true));
}

TEST_F(MailOfAnAgent, RefusesMessagesBeyondAThousandThatWait) {
    for (int count = 0; count < 1002; ++count) {
        mail(messageTo({std::to_string(count) + "@example.org"}));
    }
    EXPECT_THAT(results, ElementsAre(false)) << "one is under way, a thousand wait";
    later.run();
    EXPECT_EQ(addresses().size(), 1001U);
    EXPECT_EQ(addresses().back(), "1000@example.org");
}

TEST_F(MailOfAnAgent, BeginsWithTheFirstScriptAndTellsBefore) {
    clients.running["birdmail"] = false;
    mailAndWait(messageTo({"", "ana@example.org", "bo@example.org"}));
    delays.pass(4.99);
    later.run();
    EXPECT_THAT(begun, IsEmpty()) << "the client gets its time";
    delays.pass(0.01);
    later.run();
    EXPECT_THAT(begun, ElementsAre(0U)) << "once";
    mailAndWait(messageTo({"cy@example.org"}));
    EXPECT_THAT(begun, ElementsAre(0U, 2U));
    mailAndWait(messageTo({""}));
    clients.defaultClient->id = "unknown";
    mailAndWait(messageTo({"ana@example.org"}));
    EXPECT_EQ(begun.size(), 2U) << "these never began";
    EXPECT_THAT(results, ElementsAre(true, true, true, false));
}

TEST_F(MailOfAnAgent, CompletesAtItsEndWhatHasBegun) {
    runner.hanging.insert(agentScript("birdmail"));
    mail(messageTo({"ana@example.org", "", "-x", "bo@example.org", "cy@example.org"}));
    mail(messageTo({"dan@example.org"}));
    mailer->completeAtOnce();
    EXPECT_THAT(runner.calls, IsEmpty()) << "nothing has begun";
    later.run();
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org"));
    mailer->completeAtOnce();
    mailer->completeAtOnce();
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org", "bo@example.org", "cy@example.org"));
    EXPECT_EQ(begun.size(), 1U);
    mailer.reset();
    runner.passLimit();
    later.run();
    EXPECT_EQ(addresses().size(), 3U);
}

TEST_F(MailOfAnAgent, StartsNoFloodOfScriptsAtItsEnd) {
    runner.hanging.insert(agentScript("birdmail"));
    mailAndWait(messageTo(Strings(1000, "ana@example.org")));
    mailer->completeAtOnce();
    EXPECT_EQ(addresses().size(), 51U);
}

TEST_F(MailOfAnAgent, PassesOverRecipientsWithoutAnAddress) {
    mailAndWait(messageTo({"", "ana@example.org", ""}));
    mailAndWait(messageTo({"", ""}));
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org"));
    EXPECT_THAT(results, ElementsAre(true, true));
}

TEST_F(MailOfAnAgent, FailsForAddressesThatAClientCouldMistakeAndSparesTheOthers) {
    const Strings bad = {"-oQ/tmp@example.org",
                         "--help",
                         "a@b\nBcc: c@d",
                         "a@b\r",
                         "a\x1b[2J@b",
                         std::string("a\0b@c", 5),
                         std::string(400, 'a') + "@b"};
    for (const std::string& address : bad) {
        mailAndWait(messageTo({address, "ana@example.org"}));
    }
    EXPECT_THAT(results, testing::AllOf(testing::SizeIs(bad.size()), Each(false)));
    EXPECT_THAT(addresses(), testing::AllOf(testing::SizeIs(bad.size()), Each("ana@example.org")));
}

TEST_F(MailOfAnAgent, HandsOverHostileTextsAsTheyStand) {
    for (const std::string text : {"$(touch x)", "`touch x`;'\"\\", "a\nb\r\n\tc", "-s", "--",
                                   "\u202Etxt.\u200F", "%00 %s", "\U0001F426 für Ümläute"}) {
        MailMessage message = messageTo({"ana@example.org"});
        message.subject = message.body = text;
        mailAndWait(message);
        EXPECT_EQ(items(1).back(), text);
        EXPECT_EQ(items(2).back(), text);
    }
}

TEST_F(MailOfAnAgent, RefusesTextsWithNulAndPathsThatAreNone) {
    const std::string withNul("a\0b", 3);
    MailMessage message = messageTo({"ana@example.org"});
    message.subject = withNul;
    mailAndWait(message);
    message = messageTo({"ana@example.org"});
    message.body = withNul;
    mailAndWait(message);
    for (const std::string& path :
         {withNul, std::string("plan.pdf"), std::string("-a"), "/" + std::string(5000, 'a')}) {
        message = messageTo({"ana@example.org"});
        message.attachment = path;
        mailAndWait(message);
    }
    EXPECT_THAT(results, testing::AllOf(testing::SizeIs(6), Each(false)));
    EXPECT_THAT(runner.calls, IsEmpty());
}

TEST_F(MailOfAnAgent, MakesTextsValidAndShortensThemBetweenCharacters) {
    MailMessage message = messageTo({"ana@example.org"});
    message.subject = "a\xFF\xC3(";
    // Three bytes a character after the first, so that the limit falls within one.
    message.body = "x";
    for (int count = 0; count < 400'000; ++count) {
        message.body += "\u20AC";
    }
    mailAndWait(message);
    EXPECT_EQ(items(1).back(), "a\uFFFD\uFFFD(");
    const std::string body = items(2).back();
    EXPECT_LE(body.size(), longestItemBytes);
    EXPECT_GT(body.size(), longestItemBytes - 4);
    EXPECT_EQ((body.size() - 1) % 3, 0U);
    EXPECT_TRUE(body.ends_with("\u20AC\u2026"));

    message.body = std::string(longestItemBytes, 'a');
    mailAndWait(message);
    EXPECT_EQ(items(2).back(), message.body);
}

TEST_F(MailOfAnAgent, MayEndAtAnyStep) {
    clients.running["birdmail"] = false;
    mail(messageTo({"ana@example.org"}));
    mail(messageTo({"bo@example.org"}));
    later.run();
    mailer.reset();
    delays.pass(10);
    later.run();
    EXPECT_THAT(runner.calls, IsEmpty());
    EXPECT_THAT(results, IsEmpty());
}

TEST_F(MailOfAnAgent, MayEndInItsAnswer) {
    mailer->mail(messageTo({"ana@example.org"}),
                 {.begins = [] {}, .finished = [this](bool /*isTaken*/) { mailer.reset(); }});
    mail(messageTo({"bo@example.org"}));
    later.run();
    EXPECT_THAT(addresses(), ElementsAre("ana@example.org"));
    EXPECT_THAT(results, IsEmpty());
}

} // namespace
} // namespace plenzo
