#pragma once

#include "host/ical/calendar.h"
#include "host/store/calendar_amendments.h"
#include "host/store/calendar_folder.h"

#include <set>
#include <string>
#include <vector>

namespace plenzo {

/// A folder with what was read of its files: `folder.files` is empty, `files` are in its place.
struct StoredFolder {
    CalendarFolder folder;
    std::string absolutePath;
    std::vector<CalendarFilePointer> files; // by their paths
};

/// A path of the configuration with everything that was read there. Reads a file again only when it
/// may have changed, and keeps the others.
class StoredPath {
public:
    /// The amendments, which may be null, outlive it.
    StoredPath(const std::string& path, const CalendarAmendments* amendments);

    /// Looks at every folder and every file: at first, and when anything may have changed.
    void lookAtEverything();

    /// Reads the files at these absolute paths again, those that are of this path.
    void lookAt(const std::set<std::string>& absolutePaths);

    /// Where the path names a file; else null.
    const CalendarFilePointer& file() const { return m_file; }
    const std::vector<StoredFolder>& folders() const { return m_folders; }

    /// What was wrong with what was read since the last time.
    std::vector<std::string> takeProblems();

private:
    CalendarFilePointer currentFile(const std::string& path, const CalendarFilePointer& known);
    void noteProblems(const CalendarFilePointer& file, const CalendarFilePointer& known);
    StoredFolder storedFolder(CalendarFolder folder);
    const StoredFolder* knownFolder(const std::string& path) const;
    [[nodiscard]] bool mayLeadElsewhere() const;
    bool lookAtFile(const std::string& absolutePath);
    bool lookAtFileIn(StoredFolder& folder, const std::string& name);

    const CalendarAmendments* m_amendments;
    std::string m_path;
    std::string m_absolutePath;
    CalendarFilePointer m_file;
    std::vector<StoredFolder> m_folders;
    std::vector<std::string> m_problems;
};

} // namespace plenzo
