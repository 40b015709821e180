#include "host/store/file_grace.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace plenzo {

namespace {

using namespace std::chrono_literals;

/// Who replaces a file by removing it first is done sooner than this.
constexpr SteadyTime graceWhenGone = 1s;

/// A download into the file itself may take its time.
constexpr SteadyTime graceWhenDamaged = 30s;

bool isSound(const CalendarFilePointer& file) {
    return file && file->isCalendar && file->isWhole;
}

} // namespace

SteadyTime steadyTime() {
    return std::chrono::duration_cast<SteadyTime>(
        std::chrono::steady_clock::now().time_since_epoch());
}

CalendarFilePointer FileGrace::counting(const std::string& path, const CalendarFilePointer& known,
                                        const CalendarFilePointer& found, SteadyTime now) {
    if (!m_isGranted || !isSound(known) || isSound(found)) {
        m_absences.erase(path);
        return found;
    }
    Absence& absence = absenceOf(path, now);
    if (absence.end <= now) {
        m_absences.erase(path);
        return found;
    }
    absence.known = known;
    return known;
}

FileGrace::Absence& FileGrace::absenceOf(const std::string& path, SteadyTime now) {
    const Fault fault = faultAt(path);
    const SteadyTime latestEnd = now + graceWhenDamaged;
    const SteadyTime ownEnd = fault == Fault::Gone ? now + graceWhenGone : latestEnd;
    const auto [known, isNew] =
        m_absences.try_emplace(path, Absence{nullptr, fault, latestEnd, ownEnd});
    Absence& absence = known->second;
    if (!isNew && absence.fault != fault) { // no series of faults goes on for ever
        absence.fault = fault;
        absence.end = std::min(ownEnd, absence.latestEnd);
    }
    return absence;
}

/// A link that leads nowhere is gone too.
FileGrace::Fault FileGrace::faultAt(const std::string& path) {
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    const bool isGone = type == std::filesystem::file_type::not_found ||
                        type == std::filesystem::file_type::directory;
    return isGone ? Fault::Gone : Fault::Damaged;
}

std::optional<SteadyTime> FileGrace::nextEnd() const {
    std::optional<SteadyTime> next;
    for (const auto& [path, absence] : m_absences) {
        next = std::min(next.value_or(absence.end), absence.end);
    }
    return next;
}

std::set<std::string> FileGrace::ended(SteadyTime now) const {
    std::set<std::string> ended;
    for (const auto& [path, absence] : m_absences) {
        if (absence.end <= now) {
            ended.insert(path);
        }
    }
    return ended;
}

void FileGrace::forgetEnded(SteadyTime now) {
    std::erase_if(m_absences, [now](const auto& entry) { return entry.second.end <= now; });
}

void FileGrace::endForMoved(const std::set<std::string_view>& uids) {
    for (auto& [path, absence] : m_absences) {
        const auto& items = absence.known->items;
        if (absence.fault == Fault::Gone &&
            std::all_of(items.begin(), items.end(),
                        [&](auto& item) { return uids.contains(item.uid); })) {
            absence.end = SteadyTime::min();
        }
    }
}

} // namespace plenzo
