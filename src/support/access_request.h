#pragma once

#include "platform/file_references.h"
#include "platform/localized_strings.h"
#include "platform/open_panel.h"

#include <string>
#include <string_view>

namespace plenzo {

/// How the user is asked for access to one path: for the file or folder itself or, when nothing is
/// there, for the folder that it is to be created in.
struct AccessRequest {
    OpenPanelRequest panel;
    /// The only path that may be chosen.
    std::string target;
};

/// The kind is that of what is at the path; the name is the program's.
[[nodiscard]] AccessRequest accessRequest(const std::string& path, FileKind kind,
                                          std::string_view programName,
                                          const LocalizedStrings& strings);

/// Whether both paths are the same but for the case of their letters.
[[nodiscard]] bool isSamePathIgnoringCase(std::string_view left, std::string_view right);

} // namespace plenzo
