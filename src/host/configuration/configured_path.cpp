#include "host/configuration/configured_path.h"

#include <string_view>

namespace plenzo {

namespace {

std::string inQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string whyNoPath(const std::string& text, const PathOrigin& origin) {
    if (text.find('\0') != std::string::npos) {
        return "a path has no zero byte";
    }
    if (text.find("://") != std::string::npos) {
        return inQuotes(text) + " is no path: only files and folders can be read";
    }
    const std::string_view first = std::string_view(text).substr(0, text.find('/'));
    if (first == "~" && origin.home.empty()) {
        return "\"~\" stands for nothing: HOME is not set";
    }
    if (first.starts_with('$') || (first.starts_with('~') && first != "~")) {
        return inQuotes(first) + " stands for nothing: only \"~\" does, for your home folder; a " +
               "file of that name is " + inQuotes("./" + text);
    }
    return {};
}

std::string meantPath(const std::string& text, const PathOrigin& origin) {
    if (text == "~" || text.starts_with("~/")) {
        return origin.home + text.substr(1);
    }
    return text.starts_with('/') || origin.folder.empty() ? text : origin.folder + "/" + text;
}

} // namespace

ConfiguredPath pathFromText(const std::string& text, const PathOrigin& origin) {
    std::string error = whyNoPath(text, origin);
    return error.empty() ? ConfiguredPath{meantPath(text, origin), {}}
                         : ConfiguredPath{{}, std::move(error)};
}

} // namespace plenzo
