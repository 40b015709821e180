#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <system_error>

namespace plenzo {

struct FolderEntry {
    std::string_view name;
    bool isLink = false;
    bool leadsToFolder = false; // is one, or a link to one
};

/// Visits what a folder holds, in any order, without "." and "..". Asks the system about single
/// entries only where the list of names leaves open what they are. Returns why not all were seen.
std::error_code visitFolder(const std::string& path,
                            const std::function<void(const FolderEntry&)>& visit);

} // namespace plenzo
