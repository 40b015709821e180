#include "host/store/calendar_file.h"

#include "host/files/file_text.h"
#include "host/ical/calendar_text.h"
#include "host/ical/identifiers.h"
#include "host/store/shared_work.h"

#include <strings.h>

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

namespace plenzo {

namespace {

/// The file system's clock goes in steps: two changes within one leave the same stamp.
constexpr std::int64_t clockStepNanoseconds = 20'000'000;

std::string problemText(const std::string& path, const FileProblem& problem) {
    const std::string place = problem.line > 0 ? ":" + std::to_string(problem.line) : "";
    return path + place + ": " + problem.text;
}

bool haveOneUid(const std::vector<CalendarItem>& items) {
    return !items.empty() && std::all_of(items.begin(), items.end(), [&](const CalendarItem& item) {
        return item.uid == items.front().uid;
    });
}

bool isNamedAfter(const std::string& uid, const std::string& path) {
    const std::string name = std::filesystem::path(path).stem().string();
    const std::string safe = urlSafe(uid);
    return !uid.empty() && (name == uid || name == safe || name == "_" + safe);
}

/// A file that is still being written, or could not be written to its end, is cut short.
bool endsCalendar(std::string_view text) {
    constexpr std::string_view end = "END:VCALENDAR";
    text = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
    return text.size() >= end.size() &&
           strncasecmp(text.data() + text.size() - end.size(), end.data(), end.size()) == 0;
}

void take(CalendarText text, CalendarFile& file) {
    file.isCalendar = true;
    for (const FileProblem& problem : text.problems) {
        file.problems.push_back(problemText(file.path, problem));
        file.isCalendar = file.isCalendar && (problem.line > 0 || !text.items.empty());
    }
    file.holdsOneItem = text.title.empty() && haveOneUid(text.items);
    file.isNamedAfterItem = file.holdsOneItem && isNamedAfter(text.items.front().uid, file.path);
    file.title = std::move(text.title);
    file.color = text.color;
    file.items = std::move(text.items);
}

timespec fileSystemTime() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return now;
}

/// Whether a change after this moment leaves another stamp.
bool isLasting(const FileStamp& stamp, const timespec& moment) {
    constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
    const std::int64_t seconds = moment.tv_sec - stamp.changedSeconds;
    const std::int64_t rest = moment.tv_nsec - stamp.changedNanoseconds;
    const bool isNear = seconds >= -1 && seconds <= 1;
    return !isNear || seconds * nanosecondsPerSecond + rest > clockStepNanoseconds;
}

std::size_t versionOf(const std::string& path, const CalendarAmendments* amendments) {
    return amendments == nullptr ? 0 : amendments->version(path);
}

CalendarFilePointer readWith(FileRights& rights, const std::string& path,
                             const CalendarAmendments* amendments) {
    const auto file = std::make_shared<CalendarFile>();
    const timespec before = fileSystemTime();
    FileText read = readFileText(path, largestFileBytes, rights);
    file->path = path;
    file->stamp = read.stamp;
    file->hasLastingStamp = isLasting(read.stamp, before);
    file->isWritable = read.isWritable;
    if (read.error.empty()) {
        file->isWhole = endsCalendar(read.text);
        file->amendmentVersion = versionOf(path, amendments);
        take(readCalendarText(amendments == nullptr
                                  ? read.text
                                  : amendments->amended(path, std::move(read.text))),
             *file);
    } else {
        file->problems.push_back(path + ": " + read.error);
    }
    return file;
}

CalendarFilePointer currentWith(FileRights& rights, const std::string& path,
                                const CalendarFilePointer& known,
                                const CalendarAmendments* amendments) {
    const auto found =
        known && known->hasLastingStamp ? fileStatusAt(path) : std::optional<FileStatus>();
    const bool isSame =
        found && fileStamp(found->status) == known->stamp &&
        known->amendmentVersion == versionOf(path, amendments) &&
        (!known->isCalendar || rights.isWritable(path, *found) == known->isWritable);
    return isSame ? known : readWith(rights, path, amendments);
}

} // namespace

CalendarFilePointer readCalendarFile(const std::string& path,
                                     const CalendarAmendments* amendments) {
    FileRights rights;
    return readWith(rights, path, amendments);
}

CalendarFilePointer currentCalendarFile(const std::string& path, const CalendarFilePointer& known,
                                        const CalendarAmendments* amendments) {
    FileRights rights;
    return currentWith(rights, path, known, amendments);
}

std::vector<CalendarFilePointer> currentCalendarFiles(const std::vector<WantedFile>& wanted,
                                                      const CalendarAmendments* amendments) {
    constexpr std::size_t worthAThread = 200;
    std::vector<CalendarFilePointer> files(wanted.size());
    SharedWork work(wanted.size());
    work.run(worthAThread, [&] {
        FileRights rights;
        while (const auto index = work.take()) {
            files[*index] =
                currentWith(rights, wanted[*index].path, wanted[*index].known, amendments);
        }
    });
    return files;
}

} // namespace plenzo
