// What libical alone takes to parse the .ics files in a folder and the folders in it, which are
// read before: the seconds of the fastest time, and the number of components.
//
//   parse_calendars FOLDER [TIMES]

#include <libical/ical.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
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
    const int times = count > 2 ? std::atoi(arguments[2]) : 1;
    double best = std::numeric_limits<double>::max();
    int events = 0;
    for (int time = 0; time < times; ++time) {
        const auto begin = std::chrono::steady_clock::now();
        events = parse(texts);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        best = std::min(best, taken.count());
    }
    std::printf("%.4f %d\n", best, events);
    return 0;
}
