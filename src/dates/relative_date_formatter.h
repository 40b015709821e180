#pragma once

#include "dates/date_formatter.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// Writes "Today", "Tomorrow" or "Yesterday" in place of a date on the day of a base date or beside
/// it; other dates as any DateFormatter does.
class RelativeDateFormatter final : public DateFormatter {
public:
    /// The text of the application's string table for a key, empty when it has none.
    using LocalizedString = std::function<std::string(std::string_view key)>;

    /// `now` is asked for the present moment while there is no base date.
    RelativeDateFormatter(const std::string& locale, const TimeZone& timeZone,
                          LocalizedString localizedString, std::function<Instant()> now);

    /// The day that counts as today; nothing for the day of the present moment.
    [[nodiscard]] std::optional<Instant> baseDate() const { return m_baseDate; }
    void setBaseDate(std::optional<Instant> date) { m_baseDate = date; }

    /// Lower-cases the word when a time follows it; a word that stands alone stays as it is.
    [[nodiscard]] bool lowercase() const { return m_lowercase; }
    void setLowercase(bool lowercase) { m_lowercase = lowercase; }

    [[nodiscard]] bool useRelativeDates() const { return m_useRelativeDates; }
    void setUseRelativeDates(bool useRelativeDates) { m_useRelativeDates = useRelativeDates; }

    /// Words need a date style, and a text for the word (and, before a time, for "%1$@ at %2$@") in
    /// the string table.
    [[nodiscard]] std::string stringFromDate(Instant date) const override;

private:
    [[nodiscard]] std::string relativeWord(Instant date) const;

    LocalizedString m_localizedString;
    std::function<Instant()> m_now;
    std::optional<Instant> m_baseDate;
    bool m_lowercase = false;
    bool m_useRelativeDates = false;
};

} // namespace plenzo
