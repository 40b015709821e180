#include "host/quick/quick_parts.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr int mostRepetitions = 9999;

/// Goes over the tokens once, from part to part.
class PartsReader {
public:
    PartsReader(const QuickTokens& text, cctz::civil_day today, DayMonthOrder order)
        : m_text(text), m_tokens(text.tokens), m_today(today), m_dates(m_tokens, today, order),
          m_times(m_tokens, m_dates), m_recurrences(m_tokens) {
        m_parts.isTaken.resize(m_tokens.size());
    }

    QuickParts read() {
        std::size_t index = takeKind();
        while (index < m_tokens.size()) {
            const std::size_t length = takePart(index);
            m_followsDate = length > 0;
            m_hasTitle = m_hasTitle || length == 0;
            index += std::max<std::size_t>(length, 1);
        }
        takeFrequencies();
        return std::move(m_parts);
    }

private:
    std::optional<WordMatch> word(std::size_t index, WordRole role) const {
        return wordAt(m_tokens, index, role);
    }
    std::size_t lengthOf(std::size_t index, WordRole role) const {
        const auto found = word(index, role);
        return found ? found->length : 0;
    }

    void take(std::size_t index, std::size_t length) {
        for (std::size_t each = index; each < index + length; ++each) {
            m_parts.isTaken[each] = true;
        }
    }

    /// How many tokens at the start say what is to be made.
    std::size_t takeKind() {
        std::size_t length = lengthOf(0, WordRole::ToDo);
        if (length == 0 && !m_tokens.empty() && m_tokens.front().hasColon) {
            length = lengthOf(0, WordRole::ToDoBeforeColon);
        }
        if (length > 0) {
            m_parts.kind = ItemKind::ToDo;
            take(0, length);
        }
        return length;
    }

    /// How many tokens the part covers that begins here, 0 where none does.
    std::size_t takePart(std::size_t index) {
        std::size_t length = takeRecurrence(index);
        length = length > 0 ? length : takeUntil(index);
        length = length > 0 ? length : takeAmount(index);
        length = length > 0 ? length : takeCount(index);
        length = length > 0 ? length : takeDay(index);
        length = length > 0 ? length : takeTimes(index);
        length = length > 0 ? length : takeLocation(index);
        take(index, length);
        if (length == 0) {
            takeHint(index);
        }
        return length;
    }

    std::size_t takeDay(std::size_t index) {
        const auto day = m_parts.day ? std::nullopt : m_dates.rangeAt(index);
        if (!day) {
            return 0;
        }
        m_parts.day = day;
        return day->length;
    }

    std::size_t takeTimes(std::size_t index) {
        const auto times = m_parts.times ? std::nullopt : m_times.timesAt(index, m_followsDate);
        if (!times) {
            return 0;
        }
        m_parts.times = times;
        return times->length;
    }

    /// "in 2 hours", "for 90 minutes".
    std::size_t takeAmount(std::size_t index) {
        QuickAmount amount;
        const std::size_t in = lengthOf(index, WordRole::In);
        const std::size_t introduction = std::max(in, lengthOf(index, WordRole::For));
        const auto found =
            introduction > 0 ? m_dates.amountAt(index + introduction, amount.unit) : std::nullopt;
        std::optional<QuickAmount>& part = in > 0 ? m_parts.delay : m_parts.length;
        const bool isExact = amount.unit == QuickUnit::Minute || amount.unit == QuickUnit::Hour;
        if (!found || part || (in > 0 && !isExact)) {
            return 0;
        }
        amount.count = found->number;
        part = amount;
        return introduction + found->length;
    }

    /// The end of the recurrence, or else of days that begin today.
    std::size_t takeUntil(std::size_t index) {
        const std::size_t until = lengthOf(index, WordRole::Until);
        const bool isEnd = m_parts.recurrence && !m_parts.recurrence->until;
        auto day =
            until > 0 && (isEnd || !m_parts.day) ? m_dates.dayAt(index + until) : std::nullopt;
        if (!day) {
            return 0;
        }
        if (isEnd) {
            m_parts.recurrence->until = day->first;
        } else {
            takeDaysUntil(*day);
        }
        return until + day->length;
    }

    void takeDaysUntil(QuickDay day) {
        if (m_parts.kind == ItemKind::Event && day.last >= m_today) {
            day.first = m_today;
            day.hour.reset();
            day.movesByWeeks = false;
        }
        m_parts.day = day;
    }

    std::size_t takeCount(std::size_t index) {
        const auto number = digitsOf(m_tokens[index].folded);
        const std::size_t times = lengthOf(index + 1, WordRole::Times);
        const bool isWanted = m_parts.recurrence && !m_parts.recurrence->count;
        if (!number || *number < 1 || *number > mostRepetitions || times == 0 || !isWanted) {
            return 0;
        }
        m_parts.recurrence->count = number;
        return 1 + times;
    }

    std::size_t takeRecurrence(std::size_t index) {
        std::size_t length = 0;
        const auto recurrence =
            m_parts.recurrence ? std::nullopt : m_recurrences.recurrenceAt(index, length);
        if (!recurrence) {
            return 0;
        }
        m_parts.recurrence = recurrence;
        return length;
    }

    /// "weekly": where the text ends or another part follows. Backwards, for several in a row.
    void takeFrequencies() {
        for (std::size_t index = m_tokens.size(); index-- > 0 && !m_parts.recurrence;) {
            const bool isLast = index + 1 == m_tokens.size();
            if (m_parts.isTaken[index] || (!isLast && !m_parts.isTaken[index + 1])) {
                continue;
            }
            if (const auto recurrence = m_recurrences.frequencyAt(index)) {
                m_parts.recurrence = recurrence;
                take(index, 1);
            }
        }
    }

    void takeHint(std::size_t index) {
        if (word(index, WordRole::EveningHint)) {
            m_parts.hint = HalfOfDay::Evening;
        } else if (word(index, WordRole::MorningHint)) {
            m_parts.hint = HalfOfDay::Morning;
        }
    }

    /// "@home", "at Café Blau", "in Room 4": not where it would leave no title before it.
    std::size_t takeLocation(std::size_t index) {
        const bool isMarked = m_tokens[index].folded == "@";
        const bool isAt = isMarked || lengthOf(index, WordRole::At) > 0;
        const bool isIn = lengthOf(index, WordRole::In) > 0;
        if ((!isAt && !isIn) || !m_parts.location.empty() || (!m_hasTitle && !isMarked)) {
            return 0;
        }
        const std::size_t end = endOfName(index + 1, isMarked);
        const bool isPlace = isAt || holdsPlace(index + 1, end);
        if (end == index + 1 || !isPlace || (!isMarked && !isWhole(end))) {
            return 0;
        }
        m_parts.location = textOf(index + 1, end);
        return end - index;
    }

    /// Behind the capitalized words and numbers from `index` on that are no other part.
    std::size_t endOfName(std::size_t index, bool isMarked) const {
        constexpr std::size_t longest = 6;
        std::size_t end = index;
        while (end < m_tokens.size() && end - index < longest && !isPart(end)) {
            const QuickToken& token = m_tokens[end];
            const bool isNumber = end > index && digitsOf(token.folded);
            const bool isPlace = word(end, WordRole::Place).has_value();
            const bool isFirstMarked = isMarked && end == index;
            if (!token.isCapitalized && !isNumber && !isPlace && !isFirstMarked) {
                break;
            }
            ++end;
        }
        return end;
    }

    /// Whether a name ends here: "at Ana's" is cut out of "at Ana's place".
    bool isWhole(std::size_t end) const {
        return end == m_tokens.size() || isPart(end) || word(end, WordRole::With) ||
               word(end, WordRole::For) || word(end, WordRole::From) || word(end, WordRole::Every);
    }

    bool isPart(std::size_t index) const {
        return m_dates.dayAt(index) || m_times.timesAt(index, false);
    }

    bool holdsPlace(std::size_t begin, std::size_t end) const {
        bool holds = false;
        for (std::size_t index = begin; index < end; ++index) {
            holds = holds || word(index, WordRole::Place);
        }
        return holds;
    }

    std::string textOf(std::size_t begin, std::size_t end) const {
        const std::string_view first = m_text.chunks[m_tokens[begin].chunk];
        const std::string_view last = m_text.chunks[m_tokens[end - 1].chunk];
        std::string_view text(first.data(),
                              static_cast<std::size_t>(last.data() + last.size() - first.data()));
        text.remove_prefix(std::min(text.find_first_not_of("@("), text.size()));
        const std::size_t stop = text.find_last_not_of(",.;:!?)");
        return std::string(text.substr(0, stop == std::string_view::npos ? 0 : stop + 1));
    }

    const QuickTokens& m_text;
    const std::vector<QuickToken>& m_tokens;
    cctz::civil_day m_today;
    QuickDates m_dates;
    QuickTimesReader m_times;
    QuickRecurrences m_recurrences;
    QuickParts m_parts;
    bool m_followsDate = false;
    bool m_hasTitle = false;
};

} // namespace

QuickParts quickPartsOf(const QuickTokens& text, cctz::civil_day today, DayMonthOrder order) {
    return PartsReader(text, today, order).read();
}

} // namespace plenzo
