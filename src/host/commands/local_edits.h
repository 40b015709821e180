#pragma once

#include "host/edit_targets.h"
#include "host/file_replacement.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

/// What the user did with an alarm of a calendar that is not to be written.
struct LocalEdit {
    AlarmTarget target;
    std::optional<SystemSeconds> until; // snoozed until then; nothing: acknowledged
    SystemSeconds made;
};

/// The snoozes and acknowledgements of read-only calendars, kept beside them in a file (a binary
/// property list): what is read of such a calendar is its text with these changes, whoever replaces
/// it meanwhile. They go two days after they were of use.
class LocalEdits {
public:
    /// With what a former run left in the file. A file that is damaged counts as empty.
    LocalEdits(FileReplacement& files, std::string path);

    /// Returns why it could not be written down, or an empty text; it counts in any case.
    std::string add(LocalEdit edit);

    /// Whether a text of that file is changed.
    [[nodiscard]] bool concern(std::string_view calendarFile) const;

    /// The text of that file with the changes; those that do not fit any more are left out.
    [[nodiscard]] std::string appliedTo(std::string_view calendarFile, std::string text,
                                        const CalendarZone& zone) const;

private:
    void load();
    std::string save();
    void forgetOld(SystemSeconds now);

    FileReplacement& m_files;
    std::string m_path;
    std::vector<LocalEdit> m_edits;
};

/// Where they are kept: plenzohost/local-edits in the user's state folder; empty when the user has
/// none.
std::string localEditsPath();

} // namespace plenzo
