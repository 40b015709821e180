#include "support/mail_scripts.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace plenzo {

namespace {

constexpr std::size_t longestNameBytes = 255;
constexpr const char* entryEnding = ".desktop";

struct Family {
    /// Of an id in lower case.
    std::string_view beginning;
    std::string_view name;
};

/// Debian, Flatpak and Snap call one client by different names.
constexpr Family families[] = {
    {"thunderbird", "thunderbird"},
    {"org.mozilla.thunderbird", "thunderbird"},
    {"net.thunderbird.", "thunderbird"},
    {"mozilla-thunderbird", "thunderbird"},
    {"betterbird", "thunderbird"},
    {"eu.betterbird.", "thunderbird"},
    {"icedove", "thunderbird"},
    {"evolution", "evolution"},
    {"org.gnome.evolution", "evolution"},
    {"kmail", "kmail"},
    {"kmail2", "kmail"},
    {"org.kde.kmail", "kmail"},
    {"org.kde.kmail2", "kmail"},
    {"geary", "geary"},
    {"org.gnome.geary", "geary"},
    {"claws-mail", "claws-mail"},
    {"org.claws_mail.", "claws-mail"},
    {"sylpheed", "sylpheed"},
    {"neomutt", "neomutt"},
    {"org.neomutt.", "neomutt"},
    {"mutt", "mutt"},
    {"org.mutt.", "mutt"},
    {"s-nail", "s-nail"},
    {"mailx", "s-nail"},
};

/// Ids tell their capitals apart, families do not. The letters are ASCII in every locale.
std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

bool isFileName(const std::string& name) {
    return !name.empty() && name.size() <= longestNameBytes && !name.starts_with('.') &&
           name.find('/') == std::string::npos && name.find("..") == std::string::npos &&
           name.find('\0') == std::string::npos;
}

} // namespace

std::string mailClientFamily(const std::string& clientName) {
    const std::string id = lowerCase(clientName);
    // "thunderbird2go" is somebody else.
    const auto isOf = [&id](const Family& family) {
        const bool isWhole =
            family.beginning.ends_with('.') || id.size() == family.beginning.size();
        return id.starts_with(family.beginning) &&
               (isWhole || std::string_view("-_.").find(id[family.beginning.size()]) !=
                               std::string_view::npos);
    };
    const auto* family = std::ranges::find_if(families, isOf);
    return family != std::end(families) ? std::string(family->name) : std::string();
}

std::optional<MailScript> MailScripts::scriptOfClient(const MailClient& client) const {
    const std::string& clientId = client.id;
    if (!isFileName(clientId)) {
        return std::nullopt;
    }
    if (auto found = script(MailScript::Origin::User, clientId)) {
        return found;
    }
    if (auto found = script(MailScript::Origin::User, clientId + entryEnding)) {
        return found;
    }
    if (auto found = script(MailScript::Origin::Agent, clientId)) {
        return found;
    }
    return scriptOfFamily(client);
}

std::optional<MailScript> MailScripts::scriptOfFamily(const MailClient& client) const {
    const std::string family = mailClientFamily(client.id);
    if (!family.empty()) {
        return script(MailScript::Origin::Agent, family);
    }
    const std::string programName = client.program.substr(client.program.rfind('/') + 1);
    auto found = script(MailScript::Origin::Agent, mailClientFamily(programName));
    if (found) {
        found->clientProgram = client.program;
    }
    return found;
}

std::optional<MailScript> MailScripts::script(MailScript::Origin origin,
                                              const std::string& name) const {
    const bool isOfUser = origin == MailScript::Origin::User;
    const std::string& folder = isOfUser ? m_folders.ofUser : m_folders.ofAgent;
    const std::string path = folder + "/" + name;
    if (folder.empty() || name.empty() || !m_runner.canRun(path)) {
        return std::nullopt;
    }
    return MailScript{.path = path, .origin = origin};
}

} // namespace plenzo
