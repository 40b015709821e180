#include "calendar_fixture.h"
#include "host/configuration_check.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

using testing::ElementsAre;
using testing::StartsWith;

namespace plenzo {

namespace {

namespace fs = std::filesystem;

/// A configuration in a folder of the test's own, which is left out of what is said.
class ACheckedConfiguration : public testing::Test {
protected:
    void write(const std::string& name, const std::string& text) {
        fs::create_directories(fs::path(m_folder.file(name)).parent_path());
        std::ofstream(m_folder.file(name)) << text;
    }

    void writeCalendar(const std::string& name) {
        write(name,
              fileAround("NAME:" + name +
                         "\nBEGIN:VEVENT\nUID:event-1\nDTSTART:20260310T100000Z\nEND:VEVENT\n"));
    }

    /// The lines that are written; the last is "good" when nothing is wrong.
    std::vector<std::string> check(const std::string& text) {
        write("c", text);
        std::stringstream output;
        const bool isGood = checkConfiguration(m_folder.file("c"), output);
        std::vector<std::string> lines;
        for (std::string line; std::getline(output, line);) {
            lines.push_back(withoutFolder(std::move(line)));
        }
        if (isGood) {
            lines.emplace_back("good");
        }
        return lines;
    }

    std::string withoutFolder(std::string text) const {
        const std::string folder = m_folder.path().string() + "/";
        for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder)) {
            text.erase(at, folder.size());
        }
        return text;
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(ACheckedConfiguration, HasNothingWrong) {
    writeCalendar("a.ics");
    write("w", "{\"forecast\": []}");
    EXPECT_THAT(check("[[calendar]]\npath = \"a.ics\"\n[weather]\nfile = \"w\"\n"),
                ElementsAre("c: nothing is wrong; calendars: 1", "good"));
}

TEST_F(ACheckedConfiguration, IsNamedBeforeItsCalendarsAndTheWeather) {
    write("a.ics", fileAround("BEGIN:VEVENT\nUID:bad\nDTSTART:soon\nEND:VEVENT\n"));
    write("w", "{\"forecast\": [\n 1, 2]}");
    EXPECT_THAT(check("[[calendar]]\npath = \"a.ics\"\nx = 1\n[[calendar]]\npath = \"b.ics\"\n"
                      "[weather]\nfile = \"w\""),
                ElementsAre("c:3:1: unknown key \"x\" of a calendar",
                            "c:5:8: there is no file or folder \"b.ics\"",
                            StartsWith("a.ics:3: VEVENT"),
                            "a.ics:3: VEVENT: has no usable DTSTART; it is left out",
                            "w:2:2: a forecast has to be an object: { ... }",
                            "w:2:5: a forecast has to be an object: { ... }"));
}

TEST_F(ACheckedConfiguration, NamesPathsThatHoldNoCalendar) {
    fs::create_directories(m_folder.file("empty/inner/too deep"));
    writeCalendar("empty/inner/too deep/a.ics");
    writeCalendar("b.ics");
    EXPECT_THAT(check(R"([[calendar]]
path = "empty"
[[calendar]]
path = "/dev/null"
[[calendar]]
path = "b.ics"
[[calendar]]
color = "red"
path = "empty/../b.ics"
)"),
                ElementsAre("c:2:8: neither the folder \"empty\" nor a folder in it holds an .ics "
                            "file",
                            "c:4:8: \"/dev/null\" is neither a file nor a folder",
                            "c:9:8: \"empty/../b.ics\" is named in line 6 already, and shown as "
                            "that says"));
}

TEST_F(ACheckedConfiguration, NamesADefaultThatCannotBeWritten) {
    writeCalendar("a.ics");
    writeCalendar("locked.ics");
    fs::permissions(m_folder.file("locked.ics"), fs::perms::owner_read);
    EXPECT_THAT(check(R"([[calendar]]
path = "locked.ics"
default = true
[[calendar]]
path = "a.ics"
default = true
)"),
                ElementsAre("c:3:1: new items cannot be written: the default calendar "
                            "\"locked.ics\" is read-only",
                            "c:6:1: another calendar is the default already"));
}

TEST_F(ACheckedConfiguration, SaysWhatAFolderOfSeveralCalendarsDoes) {
    writeCalendar("f/a.ics");
    writeCalendar("f/b.ics");
    EXPECT_THAT(check("[[calendar]]\npath = \"f\"\nname = \"All\"\ndefault = true\n"),
                ElementsAre("c:2:8: the folder holds several calendars, which keep their names: "
                            "\"All\" is not used",
                            "c:4:1: the default is a folder with several calendars; new items go "
                            "to \"f/a.ics\""));
}

TEST_F(ACheckedConfiguration, MayHaveAnEmptyFolderForNewItems) {
    fs::create_directory(m_folder.file("new"));
    EXPECT_THAT(check("[[calendar]]\npath = \"new\"\ndefault = true\n"),
                ElementsAre("c: nothing is wrong; calendars: 0", "good"));
}

TEST_F(ACheckedConfiguration, NamesAWeatherFileThatCannotBeReadWhereItIsConfigured) {
    EXPECT_THAT(check("[weather]\nfile = \"w\""),
                ElementsAre("c:2:8: \"w\": No such file or directory"));
    fs::create_directory(m_folder.file("w"));
    EXPECT_THAT(check("[weather]\nfile = \"w\""), ElementsAre("c:2:8: \"w\": is no regular file"));
}

} // namespace plenzo
