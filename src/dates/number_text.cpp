#include "dates/number_text.h"

#include "dates/unicode_locale.h"

#include <unicode/numfmt.h>

#include <memory>

namespace plenzo {

std::string stringFromInteger(std::int64_t number, const std::string& locale) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::NumberFormat> format(
        icu::NumberFormat::createInstance(unicodeLocale(locale), error));
    if (U_FAILURE(error) || format == nullptr) {
        return std::to_string(number);
    }
    format->setGroupingUsed(false);
    icu::UnicodeString text;
    std::string utf8;
    return format->format(number, text).toUTF8String(utf8);
}

} // namespace plenzo
