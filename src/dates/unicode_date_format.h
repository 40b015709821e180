#pragma once

#include "dates/date_formatter.h"

#include <cctz/civil_time.h>
#include <unicode/smpdtfmt.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace plenzo {

/// One of a locale's formats, for wall-clock times. It knows no zones: the format's own zone data
/// is older than the system's, so it is shown UTC and the zone is put in as a text. For the files
/// of this folder only.
class UnicodeDateFormat {
public:
    /// Null when there is none.
    [[nodiscard]] static std::unique_ptr<UnicodeDateFormat>
    create(const icu::Locale& locale, FormatStyle dateStyle, FormatStyle timeStyle);

    [[nodiscard]] std::string text(const cctz::civil_second& time,
                                   const std::string& zoneAbbreviation) const;

    /// Nothing when the text is not of the format.
    [[nodiscard]] std::optional<cctz::civil_second> time(std::string_view text) const;

private:
    explicit UnicodeDateFormat(std::unique_ptr<icu::SimpleDateFormat> format);

    std::unique_ptr<icu::SimpleDateFormat> m_format;
};

} // namespace plenzo
