#pragma once

#include "host/edits/edit_targets.h"
#include "host/files/file_replacement.h"

#include <functional>
#include <string>
#include <string_view>

namespace plenzo {

/// Gives the new text for a text; of a file that does not exist yet that is empty.
using TextEdit = std::function<EditResult(std::string_view text)>;

/// What became of a change to a file.
struct WriteResult {
    std::string error; // why nothing was changed; empty when it was done
    bool isForGood =
        false; // the edit cannot be made in this text; otherwise the file is in the way
};

/// Changes a calendar file as a whole: at every moment its path holds the old text or the new one,
/// also after a loss of power. A symbolic link stays one, and the mode, the group, access lists and
/// other extended attributes are kept; so is the owner where the user may give files away. Nothing
/// is written where somebody would lose access. Other names of the same file (hard links) stay with
/// the old text.
class CalendarWriter {
public:
    explicit CalendarWriter(FileReplacement& files) : m_files(files) {}

    /// Applies the edit to the file. Where the file changed meanwhile it is read and edited again,
    /// up to five times.
    WriteResult apply(const std::string& path, const TextEdit& edit);

    /// The same for a file that may not exist yet: then it is made.
    WriteResult applyOrCreate(const std::string& path, const TextEdit& edit);

private:
    enum class WhenMissing { Fail, Create };
    enum class Outcome { Done, Failed, ChangedMeanwhile };

    WriteResult applyTo(const std::string& path, const TextEdit& edit, WhenMissing whenMissing);
    Outcome replace(const std::string& path, const FoundFile& found, const std::string& text,
                    std::string& error);

    FileReplacement& m_files;
};

} // namespace plenzo
