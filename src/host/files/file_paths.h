#pragma once

#include <string>
#include <string_view>

namespace plenzo {

/// The path from the root on, without ".", ".." and a slash at its end. Links are not followed.
std::string absolutePath(const std::string& path);

std::string pathIn(const std::string& folder, std::string_view name);

/// One spelling for every path to the same file: links are followed.
std::string canonicalPath(const std::string& path);

} // namespace plenzo
