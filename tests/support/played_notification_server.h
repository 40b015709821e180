#pragma once

#include "support/served_bus.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

/// The notification server's part. It answers at once, or, while it is told to hold its answers,
/// when the test lets it.
class PlayedNotificationServer {
public:
    struct Shown {
        std::string summary;
        std::string body;
        std::vector<std::string> actions;
        std::map<std::string, sdbus::Variant> hints;
        std::uint32_t replaces = 0;
        std::int32_t expiry = -1;
    };

    PlayedNotificationServer(ServedBus& bus, std::vector<std::string> capabilities)
        : m_bus(bus), m_service(bus, interface, "/org/freedesktop/Notifications") {
        serve("GetCapabilities", "", "as", [capabilities](sdbus::MethodCall& /*call*/) {
            return [capabilities](sdbus::MethodReply& reply) { reply << capabilities; };
        });
        serve("Notify", "susssasa{sv}i", "u",
              [this](sdbus::MethodCall& call) { return notify(call); });
        serve("CloseNotification", "u", "", [this](sdbus::MethodCall& call) {
            std::uint32_t number = 0;
            call >> number;
            closed.push_back(number);
            return [](sdbus::MethodReply& /*reply*/) {};
        });
        m_service.begin();
    }

    template <typename... Arguments>
    void tell(const char* signal, const Arguments&... arguments) {
        m_service.send(interface, signal, {}, arguments...);
    }
    void roundTrip() { m_bus.roundTrip(m_service.connection()); }

    /// Answers everything that waits, the latest first if so wanted, and what comes later at once.
    void release(bool latestFirst = false) {
        holdsAnswers = false;
        if (latestFirst) {
            std::ranges::reverse(m_held);
        }
        for (const auto& answer : std::exchange(m_held, {})) {
            answer();
        }
        roundTrip();
    }

    static constexpr std::uint32_t expired = 1;
    static constexpr std::uint32_t dismissed = 2;
    static constexpr std::uint32_t closedByCall = 3;
    /// Closes it, as the user or time does, unless it is closed already.
    void close(std::uint32_t number, std::uint32_t reason) {
        if (std::ranges::find(closed, number) == closed.end()) {
            closed.push_back(number);
            tell("NotificationClosed", number, reason);
        }
    }

    /// Every summary that was ever shown.
    [[nodiscard]] std::vector<std::string> summaries() const {
        std::vector<std::string> texts;
        for (const Shown& one : shown) {
            texts.push_back(one.summary);
        }
        return texts;
    }
    /// Of the latest with this summary.
    [[nodiscard]] std::uint32_t numberOf(const std::string& summary) const {
        const auto found = std::find_if(shown.rbegin(), shown.rend(), [&summary](const Shown& one) {
            return one.summary == summary;
        });
        return static_cast<std::uint32_t>(shown.rend() - found);
    }
    /// The summaries of what is not closed.
    [[nodiscard]] std::vector<std::string> onScreen() const {
        std::vector<std::string> texts;
        for (std::uint32_t number = 1; number <= shown.size(); ++number) {
            if (std::ranges::find(closed, number) == closed.end()) {
                texts.push_back(shown[number - 1].summary);
            }
        }
        return texts;
    }

    /// Every Notify that was not refused; the first one has the number 1.
    std::vector<Shown> shown;
    std::vector<std::uint32_t> closed;
    bool holdsAnswers = false;
    bool refuses = false;
    /// Answers 0, which is no number.
    bool numbersNone = false;

private:
    static constexpr const char* interface = "org.freedesktop.Notifications";

    using Write = std::function<void(sdbus::MethodReply&)>;

    void serve(const char* name, const char* input, const char* output,
               std::function<Write(sdbus::MethodCall&)> note) {
        m_service.object().registerMethod(
            interface, name, input, output, [this, note = std::move(note)](sdbus::MethodCall call) {
                auto answer = [call, write = note(call), refused = refuses] {
                    if (refused) {
                        call.createErrorReply(sdbus::Error("org.test.Refused", "")).send();
                        return;
                    }
                    auto reply = call.createReply();
                    write(reply);
                    reply.send();
                };
                if (holdsAnswers) {
                    m_held.emplace_back(std::move(answer));
                } else {
                    answer();
                }
            });
    }

    Write notify(sdbus::MethodCall& call) {
        std::string application;
        std::string icon;
        Shown one;
        call >> application >> one.replaces >> icon >> one.summary >> one.body >> one.actions >>
            one.hints >> one.expiry;
        if (!refuses) {
            shown.push_back(one);
        }
        const auto number = numbersNone ? 0U : static_cast<std::uint32_t>(shown.size());
        return [number](sdbus::MethodReply& reply) { reply << number; };
    }

    ServedBus& m_bus;
    PlayedService m_service;
    std::vector<std::function<void()>> m_held;
};

} // namespace plenzo
