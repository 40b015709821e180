#include "localization/interface_tables.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

namespace plenzo {

namespace {

const std::string english = "en";

/// With the language after each regional variant, and English at the end.
std::vector<std::string> withFallbacks(const std::vector<std::string>& languages) {
    std::vector<std::string> all;
    const auto add = [&all](const std::string& language) {
        // It becomes part of a path.
        const bool isName = !language.empty() && language.find('/') == std::string::npos;
        if (isName && std::ranges::find(all, language) == all.end()) {
            all.push_back(language);
        }
    };
    for (const std::string& language : languages) {
        add(language);
        add(language.substr(0, language.find_first_of("_-")));
    }
    add(english);
    return all;
}

} // namespace

InterfaceTables::InterfaceTables(std::string resourceFolder,
                                 const std::vector<std::string>& languages)
    : m_resourceFolder(std::move(resourceFolder)), m_languages(withFallbacks(languages)) {
    const auto isThere = [this](const std::string& language) {
        return QDir(QString::fromStdString(folder(language))).exists();
    };
    const auto first = std::ranges::find_if(m_languages, isThere);
    m_language = first != m_languages.end() ? *first : english;
}

std::string InterfaceTables::folder(const std::string& language) const {
    return m_resourceFolder + "/" + language + ".lproj";
}

std::string InterfaceTables::interfaceFile(const std::string& name) const {
    return m_resourceFolder + "/" + name + ".ui";
}

std::optional<StringTable> InterfaceTables::table(const std::string& name,
                                                  const std::string& language) const {
    QFile file(QString::fromStdString(folder(language) + "/" + name + ".strings"));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    return StringTable::fromBytes(
        std::as_bytes(std::span(bytes.data(), static_cast<std::size_t>(bytes.size()))));
}

InterfaceTables::Found InterfaceTables::translationDict(const std::string& name,
                                                        TranslationNeeded needed) const {
    for (const std::string& language : m_languages) {
        const auto texts = table(name, language);
        if (!texts) {
            continue;
        }
        if (language == english) {
            return {};
        }
        const auto englishTexts = table(name, english);
        Found found{std::nullopt, false};
        if (englishTexts) {
            found.dictionary.emplace(*englishTexts, *texts, needed);
        }
        return found;
    }
    return {};
}

} // namespace plenzo
