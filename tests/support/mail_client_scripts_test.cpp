#include "mail_fixture.h"

#include <gmock/gmock.h>

namespace plenzo {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(MailOfAnAgent, FailsWithoutAScriptForTheClient) {
    for (const char* id : {"unknown", "", ".", "..", "../birdmail", "a/../birdmail", "/birdmail",
                           "birdmail..", ".hidden"}) {
        runner.programs.insert(agentScript(id));
        runner.programs.insert(userScript(id));
        runner.programs.erase(agentScript("unknown"));
        runner.programs.erase(userScript("unknown"));
        clients.defaultClient->id = id;
        mailAndWait(messageTo({"ana@example.org"}));
    }
    EXPECT_THAT(results, testing::AllOf(testing::SizeIs(9), Each(false)));
    EXPECT_THAT(runner.calls, IsEmpty());
    EXPECT_THAT(clients.launched, IsEmpty());
}

TEST_F(MailOfAnAgent, PrefersTheScriptsOfTheUser) {
    clients.defaultClient->id = "thunderbird-esr";
    runner.programs = {userScript("thunderbird-esr"), userScript("thunderbird-esr.desktop"),
                       userScript("thunderbird"), agentScript("thunderbird-esr"),
                       agentScript("thunderbird")};
    for (const std::string& script :
         {userScript("thunderbird-esr"), userScript("thunderbird-esr.desktop"),
          agentScript("thunderbird-esr"), agentScript("thunderbird")}) {
        clients.running["thunderbird-esr"] = true;
        mailAndWait(messageTo({"ana@example.org"}));
        EXPECT_EQ(programs().back(), script);
        runner.programs.erase(script);
    }
    mailAndWait(messageTo({"ana@example.org"}));
    EXPECT_FALSE(results.back()) << "the user's script of another client is not this one's";
}

TEST_F(MailOfAnAgent, KnowsTheVariantsOfAClient) {
    const std::pair<const char*, const char*> families[] = {
        {"thunderbird", "thunderbird"},
        {"thunderbird-esr", "thunderbird"},
        {"org.mozilla.Thunderbird", "thunderbird"},
        {"org.mozilla.thunderbird_esr", "thunderbird"},
        {"thunderbird_thunderbird", "thunderbird"},
        {"eu.betterbird.Betterbird", "thunderbird"},
        {"org.gnome.Evolution", "evolution"},
        {"org.kde.kmail2", "kmail"},
        {"KMail2", "kmail"},
        {"org.claws_mail.Claws-Mail", "claws-mail"},
        {"org.gnome.Geary", "geary"},
        {"neomutt", "neomutt"},
        {"thunderbirds-are-go", ""},
        {"org.mozilla.Thunder", ""},
        {"commutt", ""},
        {"", ""}};
    for (const auto& [id, family] : families) {
        EXPECT_EQ(mailClientFamily(id), family) << id;
    }
}

TEST_F(MailOfAnAgent, KnowsAClientByItsProgramWhereItsEntryHasANameOfItsOwn) {
    clients.running = {{"userapp-Thunderbird-7AB1C2", true}, {"org.gnome.Evolution", true}};
    runner.programs = {agentScript("thunderbird"), agentScript("evolution")};
    clients.defaultClient = {.id = "userapp-Thunderbird-7AB1C2",
                             .program = "/opt/thunderbird/thunderbird-bin"};
    mailAndWait(messageTo({"ana@example.org"}));
    ASSERT_THAT(programs(), ElementsAre(agentScript("thunderbird")));
    EXPECT_EQ(runner.calls[0].environment[1],
              "PLENZO_MAIL_PROGRAM=/opt/thunderbird/thunderbird-bin");
    clients.defaultClient = {.id = "org.gnome.Evolution", .program = "/usr/bin/thunderbird"};
    mailAndWait(messageTo({"ana@example.org"}));
    EXPECT_EQ(programs().back(), agentScript("evolution")) << "the id says it";
    EXPECT_EQ(runner.calls.back().environment[1], "PLENZO_MAIL_PROGRAM=");
    for (const char* program :
         {"/usr/bin/flatpak", "/opt/thunderbird/start", "", "/", "evolution/"}) {
        clients.defaultClient = {.id = "userapp-Thunderbird-7AB1C2", .program = program};
        mailAndWait(messageTo({"ana@example.org"}));
        EXPECT_FALSE(results.back()) << program;
    }
    runner.programs.insert(userScript("userapp-Thunderbird-7AB1C2"));
    mailAndWait(messageTo({"ana@example.org"}));
    EXPECT_EQ(programs().back(), userScript("userapp-Thunderbird-7AB1C2"));
}

TEST_F(MailOfAnAgent, GoesByTheUsersDefaultScriptWhereNoClientIsTheDefault) {
    clients.defaultClient.reset();
    mailAndWait(messageTo({"ana@example.org"}));
    runner.programs.insert(userScript("default"));
    mailAndWait(messageTo({"ana@example.org"}));
    EXPECT_THAT(results, ElementsAre(false, true));
    EXPECT_THAT(programs(), ElementsAre(userScript("default")));
    EXPECT_THAT(clients.launched, IsEmpty());
}

} // namespace
} // namespace plenzo
