#include "host/calendar_edits.h"
#include "host/content_lines.h"

namespace plenzo {

namespace {

constexpr std::string_view emptyCalendar = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n"
                                           "PRODID:-//Plenzo//plenzohost//EN\r\n"
                                           "END:VCALENDAR\r\n";

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

} // namespace

bool holdsItem(std::string_view text, std::string_view uid) {
    std::string whyNot;
    const auto content = ContentText::fromText(text, whyNot);
    return content && holdsUid(*content, uid);
}

EditResult addComponent(std::string_view text, std::string_view component) {
    const bool isNew = text.find_first_not_of(" \t\r\n") == std::string_view::npos;
    std::string whyNot;
    const auto content = ContentText::fromText(isNew ? emptyCalendar : text, whyNot);
    if (!content) {
        return EditResult::failed(whyNot);
    }
    ContentComponent* calendar = firstCalendar(*content);
    if (calendar == nullptr) {
        return EditResult::failed("holds no calendar");
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
