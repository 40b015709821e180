#include "host/edits/alarm_parts.h"

#include "host/edits/time_lines.h"

#include <algorithm>
#include <cctype>

namespace plenzo {

namespace {

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
        return std::toupper(static_cast<unsigned char>(a)) ==
               std::toupper(static_cast<unsigned char>(b));
    });
}

std::string uidOf(const ContentComponent& alarm) {
    const ContentLine* uid = alarm.property("UID");
    return uid == nullptr ? std::string() : uid->text();
}

} // namespace

std::string originalUidOf(const ContentComponent& alarm) {
    for (const ContentLine* related : alarm.properties("RELATED-TO")) {
        if (equalsIgnoringCase(related->parameter("RELTYPE"), "SNOOZE")) {
            return related->text();
        }
    }
    return {};
}

bool isAtFixedTime(const ContentComponent& alarm) {
    const ContentLine* trigger = alarm.property("TRIGGER");
    return trigger != nullptr && equalsIgnoringCase(trigger->parameter("VALUE"), "DATE-TIME");
}

ContentComponent* AlarmParts::at(int place) const {
    const auto alarms = m_parent.components("VALARM");
    const auto index = static_cast<std::size_t>(place);
    return index < alarms.size() ? alarms[index] : nullptr;
}

ContentComponent* AlarmParts::originalOf(const ContentComponent& snooze) const {
    const std::string uid = originalUidOf(snooze);
    for (ContentComponent* alarm : m_parent.components("VALARM")) {
        if (!uid.empty() && uidOf(*alarm) == uid && alarm != &snooze) {
            return alarm;
        }
    }
    return nullptr;
}

void AlarmParts::setAcknowledged(ContentComponent& alarm, SystemSeconds moment) const {
    alarm.setProperty("ACKNOWLEDGED", "ACKNOWLEDGED:" + universalTimeText(moment), m_lineEnding);
}

void AlarmParts::setTrigger(ContentComponent& alarm, SystemSeconds moment) const {
    alarm.setProperty("TRIGGER", "TRIGGER;VALUE=DATE-TIME:" + universalTimeText(moment),
                      m_lineEnding);
}

void AlarmParts::addSnooze(ContentComponent& original, SystemSeconds until,
                           const std::function<std::string()>& newUid) {
    if (uidOf(original).empty()) {
        original.setProperty("UID", "UID:" + escapedText(newUid()), m_lineEnding);
    }
    removeSnoozesOf(original);
    auto snooze = original.copy();
    for (const char* name : {"DURATION", "REPEAT", "ACKNOWLEDGED", "RELATED-TO", "PROXIMITY"}) {
        snooze->removeProperties(name);
    }
    snooze->setProperty("UID", "UID:" + escapedText(newUid()), m_lineEnding);
    setTrigger(*snooze, until);
    snooze->setProperty("RELATED-TO", "RELATED-TO;RELTYPE=SNOOZE:" + escapedText(uidOf(original)),
                        m_lineEnding);
    m_parent.insertAfter(original, std::move(snooze));
}

void AlarmParts::removeSnoozesOf(const ContentComponent& original) {
    const std::string uid = uidOf(original);
    for (const ContentComponent* alarm : m_parent.components("VALARM")) {
        if (!uid.empty() && alarm != &original && originalUidOf(*alarm) == uid) {
            m_parent.remove(*alarm);
        }
    }
}

} // namespace plenzo
