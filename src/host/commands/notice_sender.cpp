#include "host/commands/notice_sender.h"

#include "linux/wire/bus_text.h"

#include <sdbus-c++/sdbus-c++.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace plenzo {

namespace {

constexpr const char* notificationsName = "org.freedesktop.Notifications";
constexpr std::size_t longestText = 2'000;

std::string markedUp(const std::string& text) {
    std::string body;
    for (const char letter : text) {
        const bool isSpecial = letter == '<' || letter == '>' || letter == '&';
        body += isSpecial ? (letter == '<'   ? "&lt;"
                             : letter == '>' ? "&gt;"
                                             : "&amp;")
                          : std::string(1, letter);
    }
    return body;
}

/// Cut between characters.
std::string shortened(std::string text) {
    if (text.size() <= longestText) {
        return text;
    }
    std::size_t end = longestText;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    return text.substr(0, end) + "…";
}

} // namespace

NoticeSender::NoticeSender(sdbus::IConnection& connection)
    : m_server(
          sdbus::createProxy(connection, notificationsName, "/org/freedesktop/Notifications")) {}

NoticeSender::~NoticeSender() = default;

void NoticeSender::send(const Notice& notice) {
    try {
        m_server->callMethodAsync("GetCapabilities")
            .onInterface(notificationsName)
            .uponReplyInvoke([this, notice](const sdbus::Error* error,
                                            const std::vector<std::string>& capabilities) {
                if (error == nullptr) {
                    deliver(notice, std::find(capabilities.begin(), capabilities.end(),
                                              "body-markup") != capabilities.end());
                }
            });
    } catch (const sdbus::Error&) {
        // There is no server.
    }
}

void NoticeSender::deliver(const Notice& notice, bool hasMarkup) {
    const std::string body = busText(shortened(notice.body));
    const std::map<std::string, sdbus::Variant> hints{
        {"desktop-entry", sdbus::Variant(std::string("org.plenzo.PlenzoHost"))}};
    try {
        m_server->callMethodAsync("Notify")
            .onInterface(notificationsName)
            .withArguments(std::string("Plenzo"), std::uint32_t{0},
                           std::string("org.plenzo.PlenzoAlarm"),
                           busText(shortened(notice.summary)), hasMarkup ? markedUp(body) : body,
                           std::vector<std::string>(), hints, std::int32_t{-1})
            .uponReplyInvoke([](const sdbus::Error*, std::uint32_t) {});
    } catch (const sdbus::Error&) {
        // It has just gone.
    }
}

} // namespace plenzo
