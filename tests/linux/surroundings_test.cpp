#include "linux/main_string_table.h"
#include "linux/regional_settings_of_system.h"
#include "linux/xdg_folders.h"
#include "support/environment_variable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace plenzo {
namespace {

TEST(TheFoldersOfTheUser, ComeFromTheEnvironmentOrLieBelowHome) {
    const EnvironmentVariable home("HOME", "/home/ana");
    const XdgFolders folders;
    {
        const EnvironmentVariable data("XDG_DATA_HOME", "/data");
        const EnvironmentVariable configuration("XDG_CONFIG_HOME", "/settings");
        EXPECT_EQ(folders.applicationSupport(), "/data");
        EXPECT_EQ(XdgFolders::configuration(), "/settings");
    }
    for (const char* invalid : {static_cast<const char*>(nullptr), "", "relative/path"}) {
        const EnvironmentVariable data("XDG_DATA_HOME", invalid);
        const EnvironmentVariable configuration("XDG_CONFIG_HOME", invalid);
        EXPECT_EQ(folders.applicationSupport(), "/home/ana/.local/share");
        EXPECT_EQ(XdgFolders::configuration(), "/home/ana/.config");
    }
}

TEST(TheZoneOfTheSystem, IsThatOfTZWhenItNamesOne) {
    const auto zoneName = [](const char* value) {
        const EnvironmentVariable environment("TZ", value);
        return RegionalSettingsOfSystem().timeZone().name();
    };
    EXPECT_EQ(zoneName("Europe/Berlin"), "Europe/Berlin");
    EXPECT_EQ(zoneName(":Asia/Tokyo"), "Asia/Tokyo");
    EXPECT_EQ(zoneName("/usr/share/zoneinfo/Asia/Tokyo"), "Asia/Tokyo");
}

TEST(TheNameOfAZone, IsWhatFollowsTheDatabaseInAPath) {
    EXPECT_EQ(zoneNameOfPath("/usr/share/zoneinfo/America/Argentina/Ushuaia"),
              "America/Argentina/Ushuaia");
    EXPECT_EQ(zoneNameOfPath("/usr/share/zoneinfo/posix/Europe/Berlin"), "Europe/Berlin");
    EXPECT_EQ(zoneNameOfPath("/etc/localtime"), "");
}

TEST(TheLocaleOfTheSystem, HasAnIcuName) {
    EXPECT_EQ(icuLocaleOfPosixLocale("de_DE.UTF-8@euro"), "de_DE");
    EXPECT_EQ(icuLocaleOfPosixLocale("sr_RS@latin"), "sr_RS");
    EXPECT_EQ(icuLocaleOfPosixLocale("pt"), "pt");
    for (const char* name : {"", "C", "POSIX", "C.UTF-8"}) {
        EXPECT_EQ(icuLocaleOfPosixLocale(name), "en_US") << name;
    }
}

TEST(TheLanguagesOfTheUser, AreThoseOfTheListOrTheLocaleAndEnglishAtLast) {
    using Languages = std::vector<std::string>;
    const auto languages = [](const char* list, const char* locale) {
        const EnvironmentVariable all("LC_ALL", locale);
        const EnvironmentVariable language("LANGUAGE", list);
        return languagesOfUser();
    };
    EXPECT_EQ(languages("de_AT:fr", "en_US.UTF-8"), (Languages{"de_AT", "de", "fr", "en"}));
    EXPECT_EQ(languages("", "pt_BR.UTF-8"), (Languages{"pt_BR", "pt", "en"}));
    EXPECT_EQ(languages("de", "C.UTF-8"), (Languages{"en"}));
    EXPECT_EQ(languages("../../etc:nl", "en_US"), (Languages{"nl", "en"}));
}

TEST(TheMainStringTable, HasATextForEveryKeyInEveryLanguage) {
    const std::string resources = PLENZO_RESOURCES;
    for (const char* language : {"en", "de", "fr", "es", "ja", "ar"}) {
        const MainStringTable table(resources, {language});
        // scripts/check-translations compares the keys.
        for (const char* key : {"Today", "Snooze", "%@: File Access Required",
                                "%@ requires permission to access \"%@\".\n"
                                "Please click the Allow button."}) {
            EXPECT_NE(table.string(key), "") << language << ": " << key;
        }
    }
    EXPECT_EQ(MainStringTable(resources, {"de"}).string("%@ (%C%CS)"), "%@ (Strg+Umschalt+S)");
    EXPECT_EQ(MainStringTable(resources, {"fr"}).string("%@: File Access Required"),
              "%@\u00A0: accès à un fichier requis");
    EXPECT_EQ(MainStringTable(resources, {"de"}).string("%@\n\n%@\n\n%@"), "%@\n\n%@\n\n%@");
}

TEST(TheMainStringTable, IsThatOfTheFirstLanguageThereIs) {
    const std::string resources = PLENZO_RESOURCES;
    EXPECT_EQ(MainStringTable(resources, {"xx", "de", "en"}).string("Tomorrow"), "Morgen");
    EXPECT_EQ(MainStringTable(resources, {"en"}).string("%1$@ at %2$@"), "%1$@ at %2$@");
    EXPECT_EQ(MainStringTable(resources, {"de"}).string("no such key"), "");
    EXPECT_EQ(MainStringTable("/nowhere", {"de"}).string("Tomorrow"), "");
}

} // namespace
} // namespace plenzo
