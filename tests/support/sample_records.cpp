#include "support/sample_records.h"

#include "propertylist/known_keys.h"

#include <array>
#include <string>
#include <string_view>

namespace plenzo {

namespace {

constexpr double daySeconds = 86400;
constexpr std::array<std::string_view, 5> titles = {"Team meeting", "Dentist", "Frühstück mit Zoë",
                                                    "Quarterly planning", "Call the plumber"};
constexpr std::array<std::string_view, 4> places = {"Room 3.14", "Main Street 12", "Café Müller",
                                                    "online"};

std::string identity(std::string_view prefix, std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::string(prefix) + "-4f1c-9a60-" + std::string(12 - digits.size(), '0') + digits;
}

Value reminder(std::size_t number, double leadTimeSeconds) {
    return Dictionary{{keys::uid, identity("b81e0f27", number)},
                      {keys::type, number % 2},
                      {keys::rel, -leadTimeSeconds},
                      {keys::ack, Date{7.0e8 + static_cast<double>(number)}}};
}

} // namespace

Dictionary sampleRecord(std::size_t number) {
    const double startSeconds = 8.0e8 + static_cast<double>(number % 3000) * daySeconds / 100;
    return {
        {keys::uid, identity("6d2a97c4-51e0", number) + "-20260503"},
        {keys::type, number % 7 == 0 ? 1 : 0},
        {keys::title, std::string(titles[number % titles.size()]) + " " + std::to_string(number)},
        {keys::location, places[number % places.size()]},
        {keys::notes, "Bring the papers of last week."},
        {keys::date, Date{startSeconds}},
        {keys::end, Date{startSeconds + 3600}},
        {keys::allDay, number % 11 == 0},
        {keys::priority, number % 10},
        {keys::cuid, identity("c0a81e55", number % 9)},
        {keys::cal, "Work"},
        {keys::colInt, 0x3366CC},
        {keys::read, false},
        {keys::rem, Array{reminder(2 * number, 900), reminder(2 * number + 1, 86400)}}};
}

Array sampleRecords(std::size_t count) {
    Array records;
    records.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        records.append(sampleRecord(number));
    }
    return records;
}

} // namespace plenzo
