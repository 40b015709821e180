#include "store/random_calendars.h"

#include "calendar_fixture.h"

#include <array>
#include <fstream>
#include <system_error>

namespace plenzo {

namespace fs = std::filesystem;

namespace {

std::string numbered(const char* text, int number) {
    return text + std::to_string(number);
}

/// Four of these take all that a calendar may have, without being slow.
std::string costlyTimes() {
    std::string text = "DTSTART:00010101T100000Z\n";
    for (int rule = 0; rule < 10; ++rule) {
        text += "RRULE:FREQ=MONTHLY;COUNT=2\n";
    }
    return text + "RRULE:FREQ=DAILY\n";
}

void write(const fs::path& path, const std::string& text) {
    std::ofstream(path) << text;
}

} // namespace

RandomCalendars::RandomCalendars(fs::path folder, unsigned seed)
    : m_folder(std::move(folder)), m_random(seed) {}

int RandomCalendars::below(int limit) {
    return static_cast<int>(m_random() % static_cast<unsigned>(limit));
}

void RandomCalendars::change() {
    using Change = void (RandomCalendars::*)();
    constexpr std::array<Change, 12> changes = {
        &RandomCalendars::writeFile,      &RandomCalendars::writeFile,
        &RandomCalendars::writeFile,      &RandomCalendars::writeFile,
        &RandomCalendars::writeFile,      &RandomCalendars::rewriteInPlace,
        &RandomCalendars::describeFolder, &RandomCalendars::moveFile,
        &RandomCalendars::moveFile,       &RandomCalendars::changeFolders,
        &RandomCalendars::link,           &RandomCalendars::changeMode};
    (this->*changes[static_cast<std::size_t>(below(changes.size()))])();
}

fs::path RandomCalendars::someFolder() {
    const int number = below(4);
    const fs::path folder = number == 0 ? m_folder : m_folder / numbered("folder", number);
    std::error_code error;
    return fs::is_directory(folder, error) ? folder : m_folder;
}

fs::path RandomCalendars::someFile() {
    return someFolder() / (numbered("file", below(6)) + (below(8) == 0 ? ".ICS" : ".ics"));
}

std::string RandomCalendars::someTimes() {
    const std::string day = std::to_string(20260301 + below(28));
    switch (below(6)) {
    case 0:
        return "DTSTART;VALUE=DATE:" + day + "\nDTEND;VALUE=DATE:20260329\n";
    case 1:
        return "DTSTART;TZID=Europe/Berlin:" + day + "T100000\nRRULE:FREQ=DAILY;COUNT=9\n";
    case 2:
    case 3:
        return costlyTimes();
    default:
        return "DTSTART:" + day + "T100000Z\nDURATION:PT1H\n";
    }
}

std::string RandomCalendars::someItem() {
    const std::string kind = below(4) == 0 ? "VTODO" : "VEVENT";
    std::string text = "BEGIN:" + kind + "\nSUMMARY:" + numbered("title ", below(50)) + "\n";
    text += below(6) == 0 ? "" : numbered("UID:item", below(7)) + "\n";
    text += numbered("SEQUENCE:", below(3)) + "\n" + someTimes();
    if (below(4) == 0) {
        text += numbered("RECURRENCE-ID;TZID=Europe/Berlin:202603", 10 + below(9)) + "T100000\n";
    }
    if (below(2) == 0) {
        text += "BEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT5M\nEND:VALARM\n";
    }
    return text + "END:" + kind + "\n";
}

std::string RandomCalendars::someCalendar() {
    if (below(15) == 0) {
        return "no calendar";
    }
    std::string text = below(8) == 0 ? numbered("NAME:Named ", below(3)) + "\n" : "";
    const int count = below(4) == 0 ? below(6) : 1;
    for (int item = 0; item < count; ++item) {
        text += someItem();
    }
    return fileAround(text);
}

void RandomCalendars::writeFile() {
    const fs::path beside = m_folder / ".beside.part";
    std::error_code error;
    write(beside, someCalendar());
    fs::rename(beside, someFile(), error);
}

void RandomCalendars::rewriteInPlace() {
    const fs::path file = someFile();
    if (fs::is_regular_file(file)) {
        write(file, someCalendar());
    }
}

void RandomCalendars::describeFolder() {
    const fs::path file = someFolder() / (below(2) == 0 ? "displayname" : "color");
    if (below(2) == 0) {
        write(file,
              below(2) == 0 ? "#12345" + std::to_string(below(9)) : numbered("My ", below(9)));
    } else {
        fs::remove(file);
    }
}

void RandomCalendars::moveFile() {
    std::error_code error;
    const fs::path file = someFile();
    if (below(2) == 0) {
        fs::remove(file, error);
    } else {
        fs::rename(file, someFile(), error);
    }
}

void RandomCalendars::changeFolders() {
    std::error_code error;
    const fs::path folder = m_folder / numbered("folder", 1 + below(3));
    switch (below(4)) {
    case 0:
        fs::remove_all(folder, error);
        break;
    case 1:
        fs::rename(folder, m_folder / numbered("folder", 1 + below(3)), error);
        break;
    default:
        fs::create_directory(folder, error);
        write(folder / "file0.ics", someCalendar());
    }
}

void RandomCalendars::link() {
    std::error_code error;
    if (below(4) == 0) {
        const fs::path link = m_folder / numbered("folder", 1 + below(3));
        fs::create_directory_symlink(someFolder(), link, error);
    } else {
        fs::create_symlink(someFile(), someFile(), error);
    }
}

void RandomCalendars::changeMode() {
    std::error_code error;
    fs::permissions(someFile(), fs::perms::owner_write,
                    below(3) == 0 ? fs::perm_options::remove : fs::perm_options::add, error);
}

} // namespace plenzo
