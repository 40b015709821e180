#include "host/ical/windows_zones.h"

#include <unicode/timezone.h>
#include <unicode/unistr.h>

namespace plenzo {

std::string systemNameOfWindowsZone(std::string_view name) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString found;
    icu::TimeZone::getIDForWindowsID(
        icu::UnicodeString::fromUTF8(icu::StringPiece(name.data(), static_cast<int>(name.size()))),
        nullptr, found, status);
    std::string result;
    return U_FAILURE(status) != 0 ? result : found.toUTF8String(result);
}

} // namespace plenzo
