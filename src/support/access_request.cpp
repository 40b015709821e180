#include "support/access_request.h"

#include "propertylist/format_string.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstddef>
#include <initializer_list>
#include <utility>

namespace plenzo {

namespace {

std::string_view withoutTrailingSlashes(std::string_view path) {
    const std::size_t last = path.find_last_not_of('/');
    return last == std::string_view::npos ? path.substr(0, 1) : path.substr(0, last + 1);
}

std::string_view lastComponent(std::string_view path) {
    const std::string_view trimmed = withoutTrailingSlashes(path);
    return trimmed == "/" ? trimmed : trimmed.substr(trimmed.rfind('/') + 1);
}

std::string_view folderOf(std::string_view path) {
    const std::string_view trimmed = withoutTrailingSlashes(path);
    return withoutTrailingSlashes(trimmed.substr(0, trimmed.rfind('/') + 1));
}

/// Without its dot. The name of a hidden file is none.
std::string_view extension(std::string_view path) {
    const std::string_view name = lastComponent(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

/// The texts of the user's language with their places filled.
class Texts {
public:
    explicit Texts(const LocalizedStrings& strings) : m_strings(strings) {}

    std::string operator()(std::string_view key,
                           std::initializer_list<std::string_view> texts = {}) const {
        return filledFormat(m_strings.string(key), texts);
    }

private:
    const LocalizedStrings& m_strings;
};

OpenPanelRequest fileRequest(const std::string& target, std::string_view program,
                             const Texts& texts) {
    return {.title = texts("%@: File Access Required", {program}),
            .message = texts("%@ requires permission to access \"%@\".\n"
                             "Please select the file below and click the Allow button.",
                             {program, lastComponent(target)}),
            .prompt = texts("Allow"),
            .mode = OpenPanelMode::File,
            .directory = std::string(folderOf(target)),
            .allowedFileType = std::string(extension(target)),
            .shouldEnable = {}};
}

std::string folderMessage(const std::string& path, FileKind kind, std::string_view program,
                          const Texts& texts) {
    if (kind == FileKind::None) {
        return texts("%@ requires permission to create \"%@\" in the folder \"%@\".\n"
                     "Please click the Allow button.",
                     {program, lastComponent(path), lastComponent(folderOf(path))});
    }
    return texts("%@ requires permission to access \"%@\".\nPlease click the Allow button.",
                 {program, lastComponent(path)});
}

OpenPanelRequest folderRequest(const std::string& target, std::string_view program,
                               const Texts& texts, std::string message) {
    return {.title = texts("%@: Folder Access Required", {program}),
            .message = std::move(message),
            .prompt = texts("Allow"),
            .mode = OpenPanelMode::Folder,
            .directory = target,
            .allowedFileType = {},
            .shouldEnable = {}};
}

} // namespace

AccessRequest accessRequest(const std::string& path, FileKind kind, std::string_view programName,
                            const LocalizedStrings& strings) {
    const Texts texts(strings);
    const std::string target(kind == FileKind::None ? folderOf(path)
                                                    : withoutTrailingSlashes(path));
    AccessRequest request{.panel =
                              kind == FileKind::File
                                  ? fileRequest(target, programName, texts)
                                  : folderRequest(target, programName, texts,
                                                  folderMessage(path, kind, programName, texts)),
                          .target = target};
    request.panel.shouldEnable = [target](const std::string& chosen) {
        return isSamePathIgnoringCase(chosen, target);
    };
    return request;
}

bool isSamePathIgnoringCase(std::string_view left, std::string_view right) {
    const auto text = [](std::string_view path) {
        return icu::UnicodeString::fromUTF8(withoutTrailingSlashes(path));
    };
    return text(left).caseCompare(text(right), U_FOLD_CASE_DEFAULT) == 0;
}

} // namespace plenzo
