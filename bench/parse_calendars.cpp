// What libical alone takes to parse the .ics files in a folder and the folders in it, which are
// read before: the seconds, those of them that the processor worked, and the number of events.
//
//   parse_calendars FOLDER

#include <libical/ical.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::vector<std::string> textsIn(const char* folder) {
    std::vector<std::string> texts;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".ics") {
            std::ifstream stream(entry.path(), std::ios::binary);
            texts.emplace_back(std::istreambuf_iterator<char>(stream),
                               std::istreambuf_iterator<char>());
        }
    }
    return texts;
}

int parse(const std::vector<std::string>& texts) {
    int count = 0;
    for (const std::string& text : texts) {
        icalcomponent* calendar = icalparser_parse_string(text.c_str());
        count += icalcomponent_count_components(calendar, ICAL_VEVENT_COMPONENT);
        icalcomponent_free(calendar);
    }
    return count;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        return 2;
    }
    icalerror_set_errors_are_fatal(0);
    const auto texts = textsIn(arguments[1]);
    const auto begin = std::chrono::steady_clock::now();
    const std::clock_t clockBegin = std::clock();
    const int events = parse(texts);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    const double worked = static_cast<double>(std::clock() - clockBegin) / CLOCKS_PER_SEC;
    std::printf("%.4f %.4f %d\n", taken.count(), worked, events);
    return 0;
}
