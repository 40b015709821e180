#pragma once

#include "dates/calendar_date.h"
#include "dates/instant.h"
#include "dates/time_zone.h"
#include "propertylist/value.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// How much of a date, or of a time, a text shows: from 9/2/24 or 9:30 AM to the weekday's name or
/// the seconds and the zone.
enum class FormatStyle { None = 0, Short = 1, Medium = 2, Long = 3, Full = 4 };

/// Writes dates in words and numbers of one locale (an ICU or BCP 47 name such as "de_DE"), as the
/// clock of one time zone shows them. The zone of a long or full time is written as the zone's
/// abbreviation for the date. One formatter is not for several threads at once.
class DateFormatter {
public:
    /// Both styles are none.
    DateFormatter(const std::string& locale, const TimeZone& timeZone);
    DateFormatter(DateFormatter&&) noexcept;
    DateFormatter& operator=(DateFormatter&&) noexcept;
    virtual ~DateFormatter();

    [[nodiscard]] FormatStyle dateStyle() const { return m_dateStyle; }
    void setDateStyle(FormatStyle style) { m_dateStyle = style; }
    [[nodiscard]] FormatStyle timeStyle() const { return m_timeStyle; }
    void setTimeStyle(FormatStyle style) { m_timeStyle = style; }
    [[nodiscard]] const TimeZone& timeZone() const { return m_timeZone; }
    void setTimeZone(const TimeZone& timeZone) { m_timeZone = timeZone; }

    /// Empty when both styles are none and for a date that is not readable.
    [[nodiscard]] virtual std::string stringFromDate(Instant date) const;

    /// The text of a date; nothing for another value.
    [[nodiscard]] std::optional<std::string> stringForObjectValue(const Value& value) const;

    /// Reads a text of the formatter's styles, dates of two-digit years in the century from
    /// twoDigitCutOffYear on. Skipped and repeated times as in Calendar. Nothing for another text,
    /// and for texts with a zone.
    [[nodiscard]] std::optional<Instant> dateFromString(std::string_view text) const;

    static constexpr int twoDigitCutOffYear = 1950;

protected:
    /// Of these styles instead of the formatter's own.
    [[nodiscard]] std::string stringFromDate(Instant date, FormatStyle dateStyle,
                                             FormatStyle timeStyle) const;
    [[nodiscard]] std::string lowerCased(const std::string& text) const;

private:
    class Formats;

    std::unique_ptr<Formats> m_formats;
    TimeZone m_timeZone;
    FormatStyle m_dateStyle = FormatStyle::None;
    FormatStyle m_timeStyle = FormatStyle::None;
};

/// The date as its own zone's clock shows it, and with `includeTimeZone` after a blank the
/// abbreviation of the zone for that date.
[[nodiscard]] std::string timeToString(const CalendarDate& date, FormatStyle dateStyle,
                                       FormatStyle timeStyle, bool includeTimeZone,
                                       const std::string& locale);

} // namespace plenzo
