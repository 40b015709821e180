#include "host/edits/calendar_edits.h"
#include "host/edits/content_lines.h"

namespace plenzo {

namespace {

constexpr std::string_view emptyCalendar = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n"
                                           "PRODID:-//Plenzo//plenzohost//EN\r\n"
                                           "END:VCALENDAR\r\n";
constexpr const char* noCalendar = "holds no calendar";

bool isItem(const ContentComponent& component) {
    return component.name() == "VEVENT" || component.name() == "VTODO";
}

std::string uidOf(const ContentComponent& component) {
    const ContentLine* uid = component.property("UID");
    return uid == nullptr ? std::string() : uid->text();
}

bool holdsUid(const ContentText& content, std::string_view uid) {
    for (const ContentComponent* calendar : content.components()) {
        for (const ContentComponent* component : calendar->components()) {
            if (isItem(*component) && uidOf(*component) == uid) {
                return true;
            }
        }
    }
    return false;
}

ContentComponent* firstCalendar(const ContentText& content) {
    for (ContentComponent* component : content.components()) {
        if (component->name() == "VCALENDAR") {
            return component;
        }
    }
    return nullptr;
}

/// A blank text is a calendar to begin with.
std::optional<ContentText> calendarText(std::string_view text, std::string& whyNot) {
    const bool isNew = text.find_first_not_of(" \t\r\n") == std::string_view::npos;
    return ContentText::fromText(isNew ? emptyCalendar : text, whyNot);
}

} // namespace

bool holdsItem(std::string_view text, std::string_view uid) {
    std::string whyNot;
    const auto content = ContentText::fromText(text, whyNot);
    return content && holdsUid(*content, uid);
}

EditResult addZone(std::string_view text, std::string_view zoneComponent) {
    std::string whyNot;
    const auto content = calendarText(text, whyNot);
    ContentComponent* calendar = content ? firstCalendar(*content) : nullptr;
    if (calendar == nullptr) {
        return EditResult::failed(content ? noCalendar : whyNot);
    }
    auto zone = componentFromText(zoneComponent, content->lineEnding());
    if (!zone || zone->name() != "VTIMEZONE" || zone->property("TZID") == nullptr) {
        return EditResult::failed("the new zone is no whole time zone");
    }
    const auto zones = calendar->components("VTIMEZONE");
    const std::string identifier = zone->property("TZID")->text();
    for (const ContentComponent* known : zones) {
        const ContentLine* name = known->property("TZID");
        if (name != nullptr && name->text() == identifier) {
            return {std::string(text), {}};
        }
    }
    if (zones.empty()) {
        calendar->append(std::move(zone));
    } else {
        calendar->insertAfter(*zones.back(), std::move(zone));
    }
    return {content->text(), {}};
}

EditResult addComponent(std::string_view text, std::string_view component) {
    std::string whyNot;
    const auto content = calendarText(text, whyNot);
    ContentComponent* calendar = content ? firstCalendar(*content) : nullptr;
    if (calendar == nullptr) {
        return EditResult::failed(content ? noCalendar : whyNot);
    }
    auto added = componentFromText(component, content->lineEnding());
    if (!added || !isItem(*added) || uidOf(*added).empty()) {
        return EditResult::failed("the new item is no whole event or to-do with a UID");
    }
    if (holdsUid(*content, uidOf(*added))) {
        return EditResult::failed("an item with this UID is there already");
    }
    calendar->append(std::move(added));
    return {content->text(), {}};
}

} // namespace plenzo
