#include "linux/freedesktop_notifications.h"

#include "linux/activation_token.h"

#include <algorithm>
#include <utility>

namespace plenzo {

namespace {

/// A burst of alarms goes out in pieces, so that the main loop is not held for long. The bus, too,
/// may refuse more than 128 calls that wait for their replies.
constexpr int mostOnTheirWay = 32;

} // namespace

FreedesktopNotifications::FreedesktopNotifications(MainLoop& loop, BusOnMainLoop& bus,
                                                   const Clock& clock)
    : FreedesktopNotifications(loop, bus, clock, Delays()) {}

FreedesktopNotifications::FreedesktopNotifications(MainLoop& loop, BusOnMainLoop& bus,
                                                   const Clock& clock, Delays delays)
    : m_loop(loop), m_clock(clock), m_delays(delays), m_retryMilliseconds(delays.retryMilliseconds),
      m_server(loop, bus, delays.capabilitiesMilliseconds, serverEvents()) {}

NotificationServer::Events FreedesktopNotifications::serverEvents() {
    return {
        .ready =
            [this] {
                m_return.reset();
                sendWaiting();
            },
        .left = [this] { serverLeft(); },
        .cannotStart = [this] { soundWaiting(); },
        .closed = [this](Number number,
                         NotificationServer::CloseReason reason) { noteClosed(number, reason); },
        .actionInvoked = [this](Number number,
                                const std::string& action) { noteAction(number, action); },
        .activationToken =
            [this](Number number, const std::string& token) {
                m_activationToken = {.number = number, .token = token};
            }};
}

std::uint64_t FreedesktopNotifications::deliver(const UserNotification& notification) {
    const std::uint64_t identifier = ++m_count;
    m_there[identifier] = {.identifier = identifier,
                           .title = notification.title,
                           .userInformation = notification.userInformation,
                           .actualDeliveryDate = m_clock.now()};
    m_deliveries.emplace(identifier, Delivery{.notification = notification});
    m_waiting.push_back(identifier);
    m_hasAskedForReturn = false;
    m_server.start();
    sendWaiting();
    return identifier;
}

void FreedesktopNotifications::sendWaiting() {
    while (m_server.isReady() && m_onTheirWay < mostOnTheirWay && !m_waiting.empty()) {
        const std::uint64_t identifier = m_waiting.front();
        m_waiting.pop_front();
        const auto delivery = m_deliveries.find(identifier);
        if (delivery != m_deliveries.end()) {
            send(identifier, delivery->second.notification);
        }
    }
}

void FreedesktopNotifications::send(std::uint64_t identifier,
                                    const UserNotification& notification) {
    ++m_onTheirWay;
    UserNotification sent = notification;
    if (m_server.playsSounds() &&
        (m_there[identifier].hasBeenShown || !takesTurnToSound(notification))) {
        sent.soundName.reset();
    }
    if (sent.soundName && heardName(*sent.soundName) == notificationsound::ofAgent) {
        sent.soundName = notificationsound::ofAgent;
    }
    m_server.notify(sent, sent.soundName ? soundPath(*sent.soundName) : std::nullopt,
                    [this, identifier](NotificationServer::Answer answer, Number number) {
                        noteAnswer(identifier, answer, number);
                    });
}

void FreedesktopNotifications::noteAnswer(std::uint64_t identifier,
                                          NotificationServer::Answer answer, Number number) {
    --m_onTheirWay;
    if (answer == NotificationServer::Answer::Refused) {
        noteRefused(identifier);
    } else {
        noteShown(identifier, number);
    }
    sendWaiting();
}

void FreedesktopNotifications::noteShown(std::uint64_t identifier, Number number) {
    m_retryMilliseconds = m_delays.retryMilliseconds;
    const auto notification = m_there.find(identifier);
    const bool isRemoved = notification == m_there.end();
    if (!isRemoved && !std::exchange(notification->second.hasBeenShown, true)) {
        playSoundOf(identifier);
    }
    if (number == 0) {
        return;
    }
    if (isRemoved) {
        m_server.close(number);
        return;
    }
    m_deliveries[identifier].number = number;
    m_identifiers.insert_or_assign(number, identifier);
}

/// Alarms that come together make one sound.
bool FreedesktopNotifications::takesTurnToSound(const UserNotification& notification) {
    if (!notification.soundName || m_soundPause) {
        return false;
    }
    m_soundPause =
        m_loop.after(m_delays.shortestSoundPauseMilliseconds, [this] { m_soundPause.reset(); });
    return true;
}

void FreedesktopNotifications::playSoundOf(std::uint64_t identifier) {
    const UserNotification& notification = m_deliveries[identifier].notification;
    if (m_server.playsSounds() || !m_sounds.play || !takesTurnToSound(notification)) {
        return;
    }
    m_sounds.play(heardName(*notification.soundName));
}

/// The desktop's own sound belongs to a theme that need not be installed.
std::string FreedesktopNotifications::heardName(const std::string& name) const {
    if (!name.empty()) {
        return name;
    }
    const bool isOursAlone =
        !soundPath(notificationsound::ofDesktop) && soundPath(notificationsound::ofAgent);
    return isOursAlone ? notificationsound::ofAgent : notificationsound::ofDesktop;
}

/// Who shows notifications nowhere shall hear them.
void FreedesktopNotifications::soundWaiting() {
    for (const std::uint64_t identifier : m_waiting) {
        const auto delivery = m_deliveries.find(identifier);
        if (delivery != m_deliveries.end() && !m_there[identifier].hasBeenShown) {
            playSoundOf(identifier);
            delivery->second.notification.soundName.reset();
        }
    }
}

void FreedesktopNotifications::noteRefused(std::uint64_t identifier) {
    if (!m_deliveries.contains(identifier)) {
        return;
    }
    m_refused.push_back(identifier);
    if (!m_retry) {
        m_retry = m_loop.after(m_retryMilliseconds, [this] { retryRefused(); });
        m_retryMilliseconds = std::min(2 * m_retryMilliseconds, m_delays.longestRetryMilliseconds);
    }
}

void FreedesktopNotifications::retryRefused() {
    m_retry.reset();
    m_waiting.insert(m_waiting.end(), m_refused.begin(), m_refused.end());
    m_refused.clear();
    sendWaiting();
}

/// What it showed went with it, and its numbers mean nothing to another one.
void FreedesktopNotifications::serverLeft() {
    m_onTheirWay = 0;
    m_identifiers.clear();
    m_refused.clear();
    m_retry.reset();
    m_retryMilliseconds = m_delays.retryMilliseconds;
    m_waiting.clear();
    m_setAside.clear();
    for (auto& [identifier, delivery] : m_deliveries) {
        delivery.number = 0;
        m_waiting.push_back(identifier);
    }
    if (!m_waiting.empty()) {
        m_return = m_loop.after(m_delays.returnMilliseconds, [this] { startServerAgain(); });
    }
}

/// Once: a server that cannot bear what it is to show would die again and again.
void FreedesktopNotifications::startServerAgain() {
    m_return.reset();
    if (!m_deliveries.empty() && !m_hasAskedForReturn) {
        m_hasAskedForReturn = m_server.start();
    }
}

void FreedesktopNotifications::noteClosed(Number number, NotificationServer::CloseReason reason) {
    const auto known = m_identifiers.extract(number);
    if (!known) {
        return;
    }
    switch (reason) {
    case NotificationServer::CloseReason::DismissedByUser:
        tell(known.mapped(), ActivationType::None);
        forget(known.mapped());
        noteRoom();
        break;
    case NotificationServer::CloseReason::ClosedByCall:
        forget(known.mapped());
        noteRoom();
        break;
    default:
        setAside(known.mapped());
    }
}

void FreedesktopNotifications::setAside(std::uint64_t identifier) {
    m_deliveries[identifier].number = 0;
    m_setAside.push_back(identifier);
    if (m_identifiers.empty()) {
        m_again = m_loop.after(m_delays.againMilliseconds, [this] {
            if (m_identifiers.empty()) {
                showAgain(m_setAside.size());
            }
        });
    }
}

/// Answers and removals often come together, and those removed are not to be seen again.
void FreedesktopNotifications::noteRoom() {
    if (m_setAside.empty()) {
        return;
    }
    ++m_room;
    if (!m_roomPause) {
        m_roomPause = m_loop.after(m_delays.roomMilliseconds, [this] {
            m_roomPause.reset();
            showAgain(m_room);
        });
    }
}

void FreedesktopNotifications::showAgain(std::size_t count) {
    m_room = 0;
    while (count > 0 && !m_setAside.empty()) {
        const std::uint64_t identifier = m_setAside.back();
        m_setAside.pop_back();
        if (m_deliveries.contains(identifier)) {
            m_waiting.push_back(identifier);
            --count;
        }
    }
    sendWaiting();
}

void FreedesktopNotifications::noteAction(Number number, const std::string& action) {
    const bool isButton = action == notificationaction::button;
    const auto known = m_identifiers.find(number);
    if (known == m_identifiers.end() || (!isButton && action != notificationaction::contents)) {
        return;
    }
    const std::uint64_t identifier = known->second;
    const ActivationToken token = std::exchange(m_activationToken, {});
    const OfferedActivationToken offer(token.number == number ? token.token : std::string());
    tell(identifier,
         isButton ? ActivationType::ActionButtonClicked : ActivationType::ContentsClicked);
    removeDelivered(identifier);
}

void FreedesktopNotifications::tell(std::uint64_t identifier, ActivationType activationType) {
    const auto found = m_there.find(identifier);
    if (found != m_there.end()) {
        const DeliveredNotification notification = found->second;
        m_observer.tell(&UserNotificationObserver::didActivateNotification, notification,
                        activationType);
    }
}

void FreedesktopNotifications::removeDelivered(std::uint64_t identifier) {
    const auto delivery = m_deliveries.find(identifier);
    const Number number = delivery != m_deliveries.end() ? delivery->second.number : 0;
    const auto known = m_identifiers.find(number);
    if (known != m_identifiers.end() && known->second == identifier) {
        m_identifiers.erase(known);
        m_server.close(number);
        noteRoom();
    }
    forget(identifier);
}

void FreedesktopNotifications::removeAllDelivered() {
    for (const auto& [number, identifier] : std::exchange(m_identifiers, {})) {
        m_server.close(number);
    }
    m_there.clear();
    m_deliveries.clear();
    m_waiting.clear();
    m_refused.clear();
    m_setAside.clear();
}

void FreedesktopNotifications::forget(std::uint64_t identifier) {
    m_deliveries.erase(identifier);
    m_there.erase(identifier);
}

} // namespace plenzo
