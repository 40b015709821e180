#include "breakable_files.h"
#include "host/edits/calendar_writer.h"
#include "host/files/file_text.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>

namespace fs = std::filesystem;

namespace plenzo {

namespace {

class ACalendarWriter : public testing::Test {
protected:
    ACalendarWriter() {
        std::string pattern = (fs::temp_directory_path() / "plenzo-writer-XXXXXX").string();
        m_folder = mkdtemp(pattern.data());
        path = (m_folder / "c.ics").string();
        put("old");
    }
    ~ACalendarWriter() override { fs::remove_all(m_folder); }

    void put(const std::string& text) const {
        std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
    }
    std::string text() const { return readFileText(path).text; }

    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(m_folder)) {
            all.push_back(entry.path().filename().string());
        }
        return all;
    }

    static EditResult appendNew(std::string_view text) { return {std::string(text) + "+new", {}}; }

    fs::path m_folder;
    std::string path;
};

} // namespace

TEST_F(ACalendarWriter, ReplacesTheFileAndKeepsItsModeAndItsLink) {
    chmod(path.c_str(), 0640);
    const std::string link = (m_folder / "link.ics").string();
    fs::create_symlink("c.ics", link);
    BreakableFiles files;
    EXPECT_EQ(CalendarWriter(files).apply(link, appendNew).error, "");
    EXPECT_EQ(text(), "old+new");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(static_cast<unsigned>(fs::status(path).permissions()), 0640U);
    EXPECT_EQ(names().size(), 2U);
}

TEST_F(ACalendarWriter, MakesTheFileThatALinkIsToLeadTo) {
    const std::string link = (m_folder / "link.ics").string();
    fs::create_symlink("../" + m_folder.filename().string() + "/made.ics", link);
    BreakableFiles files;
    EXPECT_EQ(CalendarWriter(files).applyOrCreate(link, appendNew).error, "");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_THAT(names(), testing::UnorderedElementsAre("c.ics", "link.ics", "made.ics"));
}

TEST_F(ACalendarWriter, LeavesTheOldTextOrTheNewOneWhereverThePowerIsCut) {
    for (int step = -1; step < 3; ++step) {
        put("old");
        BreakableFiles files;
        files.lastStep = step;
        CalendarWriter(files).apply(path, appendNew);
        EXPECT_EQ(text(), step < 1 ? "old" : "old+new") << step;
        // What is left over stands in nobody's way.
        BreakableFiles whole;
        EXPECT_EQ(CalendarWriter(whole).apply(path, appendNew).error, "");
        EXPECT_EQ(text(), step < 1 ? "old+new" : "old+new+new") << step;
        EXPECT_THAT(names(), testing::ElementsAre("c.ics"));
    }
}

TEST_F(ACalendarWriter, UsesNoNameOfAnotherProcessAndRemovesWhatEndedOnesLeft) {
    const pid_t child = fork();
    if (child == 0) {
        BreakableFiles files;
        files.lastStep = 0; // it dies before it moves the file
        CalendarWriter(files).apply(path, appendNew);
        _exit(0);
    }
    siginfo_t info{};
    waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT); // there until it is reaped
    BreakableFiles files;
    EXPECT_EQ(CalendarWriter(files).apply(path, appendNew).error, "");
    EXPECT_EQ(names().size(), 2U);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(CalendarWriter(files).apply(path, appendNew).error, "");
    EXPECT_EQ(text(), "old+new+new");
    EXPECT_THAT(names(), testing::ElementsAre("c.ics"));
}

TEST_F(ACalendarWriter, SaysWhyAndKeepsTheOldFileWhereAStepFails) {
    const std::pair<int, const char*> rows[] = {{0, "No space left on device"},
                                                {1, "Input/output error"}};
    for (const auto& [step, error] : rows) {
        BreakableFiles files;
        files.failingStep = step;
        const WriteResult result = CalendarWriter(files).apply(path, appendNew);
        EXPECT_EQ(result.error, error);
        EXPECT_FALSE(result.isForGood);
        EXPECT_EQ(text(), "old");
        EXPECT_THAT(names(), testing::ElementsAre("c.ics"));
    }
}

TEST_F(ACalendarWriter, AppliesTheEditAgainToAFileThatChangedMeanwhile) {
    for (const bool isReplacedWhole : {false, true}) {
        put("old");
        BreakableFiles files;
        int changes = 2;
        files.beforeStamp = [&] {
            if (changes-- > 0) {
                const std::string both = text() + "+theirs";
                if (isReplacedWhole) {
                    fs::remove(path);
                }
                put(both);
            }
        };
        EXPECT_EQ(CalendarWriter(files).apply(path, appendNew).error, "");
        EXPECT_EQ(text(), "old+theirs+theirs+new");
    }
}

TEST_F(ACalendarWriter, GivesUpOnAFileThatKeepsChanging) {
    BreakableFiles files;
    files.beforeStamp = [&] { put(text() + "!"); };
    EXPECT_EQ(CalendarWriter(files).apply(path, appendNew).error, "the file keeps changing");
    EXPECT_EQ(text(), "old!!!!!");
    EXPECT_THAT(names(), testing::ElementsAre("c.ics"));
}

TEST_F(ACalendarWriter, WritesToNoReadOnlyAndNoMissingFile) {
    BreakableFiles files;
    CalendarWriter writer(files);
    chmod(path.c_str(), 0444);
    EXPECT_EQ(writer.apply(path, appendNew).error, "is read-only");
    EXPECT_EQ(text(), "old");
    EXPECT_NE(writer.apply(path + ".gone", appendNew).error, "");
    EXPECT_NE(writer.apply(m_folder.string(), appendNew).error, "");
    EXPECT_THAT(names(), testing::ElementsAre("c.ics"));
}

TEST_F(ACalendarWriter, WritesNothingWhenTheEditFailsOrChangesNothing) {
    BreakableFiles files;
    CalendarWriter writer(files);
    const FileStamp stamp = files.stamp(path);
    const WriteResult refused = writer.apply(path, [](auto) { return EditResult::failed("no"); });
    EXPECT_EQ(refused.error, "no");
    EXPECT_TRUE(refused.isForGood);
    const auto keepAll = [](std::string_view text) { return EditResult{std::string(text), {}}; };
    EXPECT_EQ(writer.apply(path, keepAll).error, "");
    EXPECT_EQ(files.stamp(path), stamp);
}

TEST_F(ACalendarWriter, ReplacesAFileWithTheLongestName) {
    path = (m_folder / (std::string(251, 'n') + ".ics")).string();
    put("old");
    BreakableFiles files;
    EXPECT_EQ(CalendarWriter(files).apply(path, appendNew).error, "");
    EXPECT_EQ(text(), "old+new");
}

TEST_F(ACalendarWriter, MakesANewFileButNeverOverOneThatAppeared) {
    const std::string fresh = (m_folder / "new.ics").string();
    BreakableFiles files;
    EXPECT_EQ(CalendarWriter(files).applyOrCreate(fresh, appendNew).error, "");
    EXPECT_EQ(readFileText(fresh).text, "+new");
    fs::remove(path);
    int appearances = 1;
    files.beforeStamp = [&] {
        if (appearances-- > 0) {
            put("theirs");
        }
    };
    EXPECT_EQ(CalendarWriter(files).applyOrCreate(path, appendNew).error, "");
    EXPECT_EQ(text(), "theirs+new");
}

} // namespace plenzo
