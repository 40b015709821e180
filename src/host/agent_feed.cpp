#include "host/agent_feed.h"

#include <cstddef>
#include <iostream>

namespace plenzo {

namespace {

/// Who reads this through a pipe waits for it.
void sayHandedOver(std::size_t count, const char* what) {
    std::cout << "plenzohost: " << count << ' ' << what << (count == 1 ? "" : "s")
              << " handed to the agent" << std::endl;
}

} // namespace

void AgentFeed::pushAll(AgentLink& link, const AgentPush& push) {
    if (!link.push(push)) {
        reportUnreachable();
        return;
    }
    m_agentKnows = AgentKnows::Events;
    m_sentPreferences = push.preferences;
    m_sentSourceList = push.sourceList;
    sayHandedOver(push.events.size(), "event");
}

void AgentFeed::pushChanges(AgentLink& link, const Dictionary& preferences, const Array& sourceList,
                            const Array& delta) {
    if (m_agentKnows == AgentKnows::Nothing) {
        return; // it is told everything when it announces itself
    }
    pushPreferences(link, preferences);
    pushSourceList(link, sourceList);
    pushDelta(link, delta);
}

void AgentFeed::pushPreferences(AgentLink& link, const Dictionary& preferences) {
    if (!(m_sentPreferences == preferences)) {
        link.pushPreferences(preferences);
        m_sentPreferences = preferences;
    }
}

void AgentFeed::pushSourceList(AgentLink& link, const Array& sourceList) {
    if (!(sourceList == m_sentSourceList) && link.pushSourceList(sourceList)) {
        m_sentSourceList = sourceList;
    }
}

void AgentFeed::pushDelta(AgentLink& link, const Array& delta) {
    if (delta.empty()) {
        return;
    }
    if (!link.pushDelta(delta)) {
        m_agentKnows = AgentKnows::OldEvents;
        reportUnreachable();
        return;
    }
    sayHandedOver(delta.size(), "change");
}

} // namespace plenzo
