#include "host/calendar_set.h"

#include "host/calendar_folder.h"
#include "host/calendar_text.h"
#include "host/color_names.h"
#include "host/file_text.h"
#include "host/identifiers.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>

namespace plenzo {

namespace {

/// A file that was read.
struct ReadCalendar {
    std::string path;
    CalendarText text;
    bool isWritable = false;
};

std::string problemText(const std::string& path, const FileProblem& problem) {
    const std::string place = problem.line > 0 ? ":" + std::to_string(problem.line) : "";
    return path + place + ": " + problem.text;
}

bool holdsOneItem(const ReadCalendar& file) {
    const auto& items = file.text.items;
    return file.text.title.empty() && !items.empty() &&
           std::all_of(items.begin(), items.end(),
                       [&](const CalendarItem& item) { return item.uid == items.front().uid; });
}

void moveItems(ReadCalendar& file, Calendar& calendar) {
    for (CalendarItem& item : file.text.items) {
        item.file = static_cast<int>(calendar.files.size());
        calendar.items.push_back(std::move(item));
    }
    calendar.files.push_back(file.path);
}

Calendar emptyCalendar(const std::string& path, const std::string& title,
                       const std::optional<std::uint32_t>& color) {
    Calendar calendar;
    calendar.uid = "cal-" + stableHashText(canonicalPath(path));
    calendar.title = title;
    calendar.color = color.value_or(colorForName(title));
    return calendar;
}

/// Reads the paths one after the other into a set.
class Loader {
public:
    void load(const std::string& path) {
        const CalendarPaths paths = calendarPathsOf(path);
        append(m_set.problems, paths.problems);
        for (const std::string& file : paths.files) {
            addAlone(readFiles({file}));
        }
        for (const CalendarFolder& folder : paths.folders) {
            addFolder(folder);
        }
    }

    CalendarSet take() { return std::move(m_set); }

private:
    static void append(std::vector<std::string>& to, const std::vector<std::string>& from) {
        to.insert(to.end(), from.begin(), from.end());
    }

    std::vector<ReadCalendar> readFiles(const std::vector<std::string>& paths) {
        std::vector<ReadCalendar> files;
        for (const std::string& path : paths) {
            if (m_known.insert(canonicalPath(path)).second) {
                readFile(path, files);
            }
        }
        return files;
    }

    void readFile(const std::string& path, std::vector<ReadCalendar>& files) {
        const FileText file = readFileText(path);
        if (!file.error.empty()) {
            m_set.problems.push_back(path + ": " + file.error);
            return;
        }
        ReadCalendar read{path, readCalendarText(file.text), file.isWritable};
        bool isCalendar = true;
        for (const FileProblem& problem : read.text.problems) {
            m_set.problems.push_back(problemText(path, problem));
            isCalendar = isCalendar && (problem.line > 0 || !read.text.items.empty());
        }
        if (isCalendar) {
            files.push_back(std::move(read));
        }
    }

    void addFolder(const CalendarFolder& folder) {
        std::vector<ReadCalendar> files = readFiles(folder.files);
        const bool areSingles =
            files.size() > 1 && std::all_of(files.begin(), files.end(), holdsOneItem);
        if (folder.isCollection() || areSingles) {
            addTogether(folder, std::move(files));
        } else {
            addAlone(std::move(files));
        }
    }

    void addAlone(std::vector<ReadCalendar> files) {
        for (ReadCalendar& file : files) {
            const std::string title = file.text.title.empty()
                                          ? std::filesystem::path(file.path).stem().string()
                                          : file.text.title;
            Calendar calendar = emptyCalendar(file.path, title, file.text.color);
            calendar.isReadOnly = !file.isWritable;
            moveItems(file, calendar);
            m_set.calendars.push_back(std::move(calendar));
        }
    }

    void addTogether(const CalendarFolder& folder, std::vector<ReadCalendar> files) {
        const std::string name = std::filesystem::path(canonicalPath(folder.path)).filename();
        Calendar calendar =
            emptyCalendar(folder.path, folder.displayName.empty() ? name : folder.displayName,
                          colorFromText(folder.color));
        for (ReadCalendar& file : files) {
            calendar.isReadOnly = calendar.isReadOnly || !file.isWritable;
            moveItems(file, calendar);
        }
        m_set.calendars.push_back(std::move(calendar));
    }

    CalendarSet m_set;
    std::set<std::string> m_known;
};

} // namespace

CalendarSet loadCalendars(const std::vector<std::string>& paths) {
    Loader loader;
    for (const std::string& path : paths) {
        loader.load(path);
    }
    return loader.take();
}

} // namespace plenzo
