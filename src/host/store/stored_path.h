#pragma once

#include "host/ical/calendar.h"
#include "host/store/calendar_amendments.h"
#include "host/store/calendar_folder.h"
#include "host/store/file_grace.h"
#include "host/store/stored_folder.h"

#include <set>
#include <string>
#include <vector>

namespace plenzo {

/// A path of the configuration with everything that was read there. Reads a file again only when it
/// may have changed, and keeps the others, also those that are away for a moment.
/// Where these are borne with, a file also stays what it was taken for: a calendar of its own, or
/// an item of its folder.
class StoredPath {
public:
    /// The amendments, which may be null, outlive it.
    StoredPath(const std::string& path, const CalendarAmendments* amendments);

    /// Looks at every folder and every file: at first, and when anything may have changed.
    void lookAtEverything(SteadyTime now);

    /// Reads the files at these absolute paths again, those that are of this path.
    void lookAt(const std::set<std::string>& absolutePaths, SteadyTime now);

    /// Where the path names a file; else of no file.
    const StoredFile& file() const { return m_file; }
    const std::vector<StoredFolder>& folders() const { return m_folders; }

    /// What was wrong with what was read since the last time.
    std::vector<std::string> takeProblems();

    /// The files that have come since the last time.
    std::vector<CalendarFilePointer> takeNewFiles();

    /// What is away and counts all the same.
    FileGrace& grace() { return m_grace; }
    [[nodiscard]] const FileGrace& grace() const { return m_grace; }

private:
    StoredFile counting(const std::string& path, const StoredFile& known,
                        const CalendarFilePointer& found);
    StoredFile currentFile(const std::string& path, const StoredFile& known);
    void decideKinds(StoredFolder& folder) const;
    void lookAtFolders(std::vector<CalendarFolder> found);
    StoredFolder storedFolder(CalendarFolder folder);
    void keepMissingFiles(const std::vector<StoredFile>& known, std::vector<StoredFile>& files);
    const StoredFolder* knownFolder(const std::string& path) const;
    [[nodiscard]] bool mayLeadElsewhere() const;
    bool lookAtFile(const std::string& absolutePath);
    bool lookAtFileIn(StoredFolder& folder, const std::string& name);

    const CalendarAmendments* m_amendments;
    std::string m_path;
    std::string m_absolutePath;
    StoredFile m_file;
    std::vector<StoredFolder> m_folders;
    FileGrace m_grace;
    SteadyTime m_now{}; // of the look that goes on
    std::vector<std::string> m_problems;
    std::vector<CalendarFilePointer> m_newFiles;
};

} // namespace plenzo
