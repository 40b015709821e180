#pragma once

#include <string>
#include <vector>

namespace plenzo {

/// The way that a path takes through links. Where links lead in a circle it ends somewhere in it.
struct PathWay {
    std::vector<std::string> links; // that are followed, each with no link before its name
    std::string place;              // where it ends, which need not exist; without links
};

/// Of a path from the root on.
PathWay wayOf(const std::string& path);

} // namespace plenzo
