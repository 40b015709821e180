#include "host/commands/state_file.h"

#include "host/records/agent_date.h"
#include "propertylist/array.h"
#include "propertylist/binary_property_list.h"

#include <sys/stat.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <system_error>

namespace plenzo {

namespace {

namespace fs = std::filesystem;

constexpr mode_t ofUserAlone = S_IRUSR | S_IWUSR;
constexpr double farthestSeconds = 1e11;

std::string makeFolderOf(const std::string& path) {
    std::error_code error;
    const fs::path folder = fs::path(path).parent_path();
    if (fs::create_directories(folder, error)) {
        fs::permissions(folder, fs::perms::owner_all, error);
    }
    return error ? error.message() : std::string();
}

/// The new path; empty when there is none.
std::string setAside(FileReplacement& files, const std::string& path) {
    constexpr int mostDamagedFiles = 100;
    std::string aside = path + ".damaged";
    for (int number = 2; number <= mostDamagedFiles; ++number) {
        if (files.moveTo(path, aside, true).empty()) {
            return aside;
        }
        aside = path + ".damaged-" + std::to_string(number);
    }
    return {};
}

fs::path folderFrom(const char* variable, const char* below) {
    const char* value = std::getenv(variable);
    const bool isSet = value != nullptr && fs::path(value).is_absolute();
    return isSet ? fs::path(value) / below : fs::path();
}

} // namespace

StateFile readStateFile(FileReplacement& files, const std::string& path) {
    const FoundFile found = path.empty() ? FoundFile() : files.read(path);
    const auto value = readBinaryPropertyList(std::as_bytes(std::span(found.text)));
    const Array* all = value ? value->array() : nullptr;
    if (all == nullptr) {
        const bool isDamaged = !found.text.empty() || (found.stamp.exists && !found.error.empty());
        return {{}, isDamaged ? setAside(files, path) : std::string()};
    }
    StateFile result;
    for (const Value& entry : *all) {
        if (const Dictionary* dictionary = entry.dictionary()) {
            result.dictionaries.push_back(*dictionary);
        }
    }
    return result;
}

std::string writeStateFile(FileReplacement& files, const std::string& path,
                           const std::vector<Dictionary>& dictionaries) {
    if (path.empty()) {
        return "there is no folder for it";
    }
    if (dictionaries.empty()) {
        files.remove(path);
        return {};
    }
    std::string error = makeFolderOf(path);
    if (!error.empty()) {
        return error;
    }
    Array all;
    for (const Dictionary& dictionary : dictionaries) {
        all.append(dictionary);
    }
    const auto bytes = writeBinaryPropertyList(all);
    const std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::string beside = files.pathForNew(path);
    error = files.writeThrough(beside, text, {ofUserAlone});
    error = error.empty() ? files.moveTo(beside, path, false) : error;
    if (!error.empty()) {
        files.remove(beside);
    }
    return error;
}

std::optional<SystemSeconds> instantForKey(const Dictionary& dictionary, const char* key) {
    const auto date = dictionary.dateForKey(key);
    const bool isSound = date && std::fabs(date->secondsSinceReferenceDate) < farthestSeconds;
    return isSound ? std::optional(instantFromAgentSeconds(
                         static_cast<std::int64_t>(date->secondsSinceReferenceDate)))
                   : std::nullopt;
}

std::string stateFilePath(const char* name) {
    const fs::path ofState = folderFrom("XDG_STATE_HOME", "plenzohost");
    const fs::path folder =
        ofState.empty() ? folderFrom("HOME", ".local/state/plenzohost") : ofState;
    return folder.empty() ? std::string() : (folder / name).string();
}

} // namespace plenzo
