#include <cstdlib>

namespace {

/// Part of every test program, so that however it is started it reads the zones under tests/data,
/// and has neither the machine's zone nor its language.
[[maybe_unused]] const bool isPinned = [] {
    return setenv("TZDIR", PLENZO_TEST_DATA "/zoneinfo", 1) == 0 &&
           setenv("TZ", "Pacific/Chatham", 1) == 0 && setenv("LC_ALL", "C.UTF-8", 1) == 0;
}();

} // namespace
