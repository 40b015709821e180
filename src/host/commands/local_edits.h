#pragma once

#include "host/edits/edit_targets.h"
#include "host/files/file_replacement.h"
#include "host/store/calendar_amendments.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
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
class LocalEdits final : public CalendarAmendments {
public:
    LocalEdits(FileReplacement& files, std::string path, CalendarZone zone);

    /// Takes up what a former run left in the file. Returns where one is now that is damaged and
    /// counts as empty; mostly that is nowhere.
    std::string load();

    /// In which floating times are meant from now on.
    void setZone(CalendarZone zone);

    /// Why the edit does not fit this text of its file, or an empty text.
    [[nodiscard]] std::string whyNotAdded(const LocalEdit& edit, std::string fileText) const;

    /// Returns why it could not be written down, or an empty text; it counts in any case.
    std::string add(LocalEdit edit);

    /// The edits of this file are in its text now. Returns why that could not be written down, or
    /// an empty text.
    std::string forget(const std::string& calendarFile);

    /// The text with the changes; those that do not fit any more are left out.
    [[nodiscard]] std::string amended(const std::string& calendarFile,
                                      std::string text) const override;
    [[nodiscard]] std::size_t version(const std::string& calendarFile) const override;

private:
    [[nodiscard]] EditResult applied(const LocalEdit& edit, std::string_view text) const;
    std::string save();
    void forgetOld(SystemSeconds now);
    void noteChange(const LocalEdit& edit);

    FileReplacement& m_files;
    std::string m_path;
    CalendarZone m_zone;
    std::vector<LocalEdit> m_edits;
    std::map<std::string, std::size_t> m_versions; // by the calendar file
};

/// Where they are kept: plenzohost/local-edits in the user's state folder; empty when the user has
/// none.
std::string localEditsPath();

} // namespace plenzo
