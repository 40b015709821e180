#pragma once

#include <unicode/locid.h>

#include <string>

namespace plenzo {

/// The locale of an ICU, BCP 47 or POSIX name such as "de_DE", "de-DE" or "de_DE.UTF-8"; "C" and
/// "POSIX" write as English does. For the files of this folder only.
[[nodiscard]] icu::Locale unicodeLocale(const std::string& name);

} // namespace plenzo
