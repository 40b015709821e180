#include "host/commands/item_summary.h"

#include "host/commands/when_text.h"
#include "host/occurrences/item_length.h"
#include "host/records/repeat_text.h"

#include <array>
#include <cstdio>
#include <utility>
#include <vector>

namespace plenzo {

namespace {

bool isSame(const std::optional<CalendarTime>& left, const std::optional<CalendarTime>& right,
            const CalendarZone& zone) {
    return left && right && instantOf(*left, zone) == instantOf(*right, zone);
}

/// The items that describe an occurrence: its own override before the series.
struct Description {
    const CalendarItem* own = nullptr;
    const CalendarItem* series = nullptr;

    const CalendarItem* item() const { return own != nullptr ? own : series; }
};

Description descriptionOf(const Calendar& calendar, const OccurrenceTarget& target,
                          const CalendarZone& zone) {
    Description description;
    for (const auto& [file, item] : itemsOf(calendar)) {
        const bool isMeant = item->kind == target.kind && item->uid == target.itemUid &&
                             (!item->uid.empty() || item->line == target.line);
        if (isMeant && !item->recurrenceId) {
            description.series = item;
        } else if (isMeant && isSame(item->recurrenceId, target.identity, zone)) {
            description.own = item;
        }
    }
    return description;
}

std::string whenOf(const Description& description, const OccurrenceTarget& target,
                   const CalendarZone& zone) {
    const CalendarItem& item = *description.item();
    const bool isOfSeries = description.own == nullptr && item.recurrence.isRecurring();
    const auto start = isOfSeries ? target.identity : item.start;
    if (!start) {
        return item.end ? "until " + timeText(*item.end, zone) : std::string();
    }
    const auto end = endOf(item, *start, zone);
    return end ? spanText(*start, *end, zone) : timeText(*start, zone);
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += (all.empty() ? "" : ", ") + text;
    }
    return all;
}

std::string escaped(const std::string& text) {
    std::string html;
    for (const char letter : text) {
        switch (letter) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        default:
            html += letter;
        }
    }
    return html;
}

constexpr const char* pageStyle =
    "<style>:root{color-scheme:light dark}"
    "body{font:16px/1.5 system-ui,sans-serif;max-width:40rem;margin:3rem auto;padding:0 1.5rem}"
    "h1{font-size:1.6rem;line-height:1.25;margin:0 0 1.2rem;padding-left:.8rem;"
    "overflow-wrap:anywhere;border-left:.35rem solid var(--calendar)}"
    "dl{display:grid;grid-template-columns:max-content 1fr;gap:.45rem 1.2rem;margin:0}"
    "dt{opacity:.65}dd{margin:0;white-space:pre-wrap;overflow-wrap:anywhere}</style>";

using Row = std::pair<const char*, const std::string*>;

std::array<Row, 7> rowsOf(const ItemSummary& summary) {
    return {{{"When", &summary.when},
             {"Repeats", &summary.repeats},
             {"Where", &summary.location},
             {"People", &summary.people},
             {"Calendar", &summary.calendar},
             {"Link", &summary.url},
             {"Notes", &summary.notes}}};
}

/// Nothing is run and nothing is loaded: what a calendar holds is text.
bool isWebAddress(const std::string& text) {
    return text.starts_with("https://") || text.starts_with("http://");
}

std::string rowHtml(const Row& row) {
    const auto& [label, text] = row;
    const std::string plain = escaped(*text);
    const std::string value = isWebAddress(*text)
                                  ? "<a rel=\"noreferrer\" href=\"" + plain + "\">" + plain + "</a>"
                                  : plain;
    return text->empty() ? "" : "<dt>" + std::string(label) + "</dt><dd>" + value + "</dd>\n";
}

std::string colorText(std::uint32_t color) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%06x", color & 0xFFFFFFU);
    return text.data();
}

} // namespace

ItemSummary itemSummary(const Calendar& calendar, const OccurrenceTarget& target,
                        const CalendarZone& zone) {
    const Description description = descriptionOf(calendar, target, zone);
    ItemSummary summary;
    summary.calendar = calendar.title;
    summary.color = calendar.color;
    if (description.item() == nullptr) {
        return summary;
    }
    const CalendarItem& item = *description.item();
    summary.title = shownTitle(item);
    summary.when = whenOf(description, target, zone);
    summary.location = item.location;
    summary.people = joined(item.attendees);
    summary.url = item.url;
    summary.notes = item.notes;
    summary.isCompleted = item.isCompleted;
    if (description.series != nullptr) {
        summary.repeats = repeatText(description.series->recurrence.rules);
    }
    return summary;
}

std::string summaryPage(const ItemSummary& summary) {
    const std::string title = escaped(summary.title);
    std::string page = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">"
                       "<meta name=\"viewport\" content=\"width=device-width\">"
                       "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                       "style-src 'unsafe-inline'\"><title>" +
                       title + "</title>" + pageStyle +
                       "</head>\n<body style=\"--calendar:" + colorText(summary.color) + "\"><h1>" +
                       title + (summary.isCompleted ? " ✓" : "") + "</h1>\n<dl>\n";
    for (const Row& row : rowsOf(summary)) {
        page += rowHtml(row);
    }
    return page + "</dl></body></html>\n";
}

std::string summaryText(const ItemSummary& summary) {
    std::string text;
    for (const auto& [label, value] : rowsOf(summary)) {
        if (!value->empty()) {
            text += (text.empty() ? "" : "\n") + *value;
        }
    }
    return text;
}

} // namespace plenzo
