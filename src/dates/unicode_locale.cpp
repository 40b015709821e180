#include "dates/unicode_locale.h"

namespace plenzo {

icu::Locale unicodeLocale(const std::string& name) {
    if (name.empty() || name == "C" || name == "POSIX" || name.starts_with("C.")) {
        return {"en_US_POSIX"};
    }
    return icu::Locale::createCanonical(name.c_str());
}

} // namespace plenzo
