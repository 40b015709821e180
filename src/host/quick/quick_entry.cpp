#include "host/quick/quick_entry.h"

#include "host/quick/quick_schedule.h"

#include <algorithm>

namespace plenzo {

namespace {

/// The chunks of which some word is no other part, in their own spelling.
std::string titleOf(const QuickTokens& text, const std::vector<bool>& isTaken) {
    std::vector<bool> isKept(text.chunks.size());
    for (std::size_t index = 0; index < text.tokens.size(); ++index) {
        const std::size_t chunk = text.tokens[index].chunk;
        isKept[chunk] = isKept[chunk] || !isTaken[index];
    }
    std::string title;
    for (std::size_t chunk = 0; chunk < text.chunks.size(); ++chunk) {
        if (isKept[chunk]) {
            title += title.empty() ? "" : " ";
            title += text.chunks[chunk];
        }
    }
    return title;
}

/// Without what joined the title to a part that is gone.
std::string withoutLooseEnds(const std::string& title) {
    constexpr std::string_view loose = " ,;:-";
    const std::size_t begin = title.find_first_not_of(loose);
    const std::size_t end = title.find_last_not_of(loose);
    return begin == std::string::npos ? std::string() : title.substr(begin, end + 1 - begin);
}

std::string wholeText(const QuickTokens& text) {
    return titleOf(text, std::vector<bool>(text.tokens.size(), false));
}

} // namespace

QuickEntry readQuickEntry(std::string_view text, const QuickEntryContext& context) {
    const QuickTokens tokens = quickTokensOf(text);
    const cctz::civil_day today(context.zone.localOf(context.now));
    QuickParts parts = quickPartsOf(tokens, today, context.order);
    QuickSchedule schedule = quickScheduleOf(parts, context);
    QuickEntry entry;
    entry.kind = parts.kind;
    entry.title = titleOf(tokens, parts.isTaken);
    const bool isShortened =
        std::find(parts.isTaken.begin(), parts.isTaken.end(), true) != parts.isTaken.end();
    if (isShortened) {
        entry.title = withoutLooseEnds(entry.title);
    }
    if (entry.title.empty()) {
        entry.title = wholeText(tokens);
    }
    entry.location = std::move(parts.location);
    entry.start = std::move(schedule.start);
    entry.end = std::move(schedule.end);
    entry.recurrenceRule = std::move(schedule.recurrenceRule);
    return entry;
}

} // namespace plenzo
