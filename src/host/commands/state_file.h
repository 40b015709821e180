#pragma once

#include "host/files/file_replacement.h"
#include "host/ical/calendar_zone.h"
#include "propertylist/dictionary.h"

#include <optional>
#include <string>
#include <vector>

namespace plenzo {

/// What the host has to know in its next run: dictionaries in a file, as a binary property list.

struct StateFile {
    std::vector<Dictionary> dictionaries;
    std::string setAside; // the new path of a damaged file; empty for a sound one
};

/// Without dictionaries for a file that is not there or damaged; what is no dictionary is left out.
/// A damaged file gets a free name beside its old one: "NAME.damaged", "NAME.damaged-2", and so on.
StateFile readStateFile(FileReplacement& files, const std::string& path);

/// Replaces the file whole; without dictionaries it goes. Returns why it could not be written, or
/// an empty text.
std::string writeStateFile(FileReplacement& files, const std::string& path,
                           const std::vector<Dictionary>& dictionaries);

/// The date under that key in whole seconds; nothing for an absurd one.
std::optional<SystemSeconds> instantForKey(const Dictionary& dictionary, const char* key);

/// plenzohost/NAME in the user's state folder (XDG Base Directory Specification); empty when the
/// user has none.
std::string stateFilePath(const char* name);

} // namespace plenzo
