#include "core/saved_state.h"

#include "core/record_walk.h"
#include "propertylist/binary_property_list.h"

#include <array>
#include <utility>

namespace plenzo {

namespace {

constexpr const char* remindersFile = "Reminders.plist";
constexpr const char* calendarsFile = "Calendars.plist";
constexpr const char* weatherFile = "Weather.plist";
constexpr const char* mailFile = "Mail.plist";
/// The first comes last: with it the state counts as put in its place.
constexpr std::array fileNames{calendarsFile, weatherFile, mailFile, remindersFile};
/// A state may lack them.
constexpr std::array optionalFileNames{weatherFile, mailFile};

/// Being written; then complete, and to be put in place.
constexpr const char* unfinishedFolder = "Saving";
constexpr const char* finishedFolder = "Saved";

std::string join(const char* folder, const char* name) {
    return std::string(folder).append("/").append(name);
}

Array recordsOf(std::span<const EventDict> eventDicts) {
    Array records;
    records.reserve(eventDicts.size());
    forEachGroup(eventDicts, [&records](RecordGroup group) {
        for (const EventDict& eventDict : group) {
            if (eventDict) {
                records.append(Value(*eventDict));
            }
        }
    });
    return records;
}

/// A record that nests or unfolds too far for a file must not cost the others.
std::vector<std::byte> writtenWithoutTheUnwritable(const Array& array) {
    auto bytes = writeBinaryPropertyList(Value(array));
    if (!bytes.empty()) {
        return bytes;
    }
    Array writable;
    for (const Value& element : array) {
        if (!writeBinaryPropertyList(Value(Array{element})).empty()) {
            writable.append(element);
        }
    }
    return writeBinaryPropertyList(Value(std::move(writable)));
}

std::vector<std::byte> written(const Value& value) {
    const Array* array = value.array();
    return array != nullptr ? writtenWithoutTheUnwritable(*array) : writeBinaryPropertyList(value);
}

} // namespace

bool SavedState::stage(const char* name, const Value& contents) {
    return replaceStaged(name, written(contents));
}

/// Weather that no file can hold is none; it must not cost the alarms.
bool SavedState::stageWeather(const Dictionary& weather) {
    const auto bytes = weather.empty() ? std::vector<std::byte>() : written(Value(weather));
    return bytes.empty() || replaceStaged(weatherFile, bytes);
}

bool SavedState::stageMail(const Array& mailAlarms) {
    return mailAlarms.empty() || stage(mailFile, Value(mailAlarms));
}

bool SavedState::replaceStaged(const char* name, std::span<const std::byte> bytes) {
    return !bytes.empty() && m_files.replace(path(join(unfinishedFolder, name).c_str()), bytes);
}

bool SavedState::save(const Contents& contents) {
    m_files.remove(path(unfinishedFolder));
    const bool isStaged =
        stage(remindersFile, Value(recordsOf(contents.eventDicts))) &&
        m_files.setModificationDate(path(join(unfinishedFolder, remindersFile).c_str()),
                                    contents.issueTime) &&
        stage(calendarsFile, Value(contents.sourceListNodes)) && stageWeather(contents.weather) &&
        stageMail(contents.mailAlarms) && m_files.remove(path(finishedFolder)) &&
        m_files.move(path(unfinishedFolder), path(finishedFolder));
    if (!isStaged) {
        m_files.remove(path(unfinishedFolder));
        return false;
    }
    putInPlace();
    return true;
}

/// What was interrupted is taken up again at the next launch. Of an earlier state nothing stays
/// that the new one lacks; that is removed first, as long as the file is still there that is moved
/// first.
void SavedState::putInPlace() {
    for (const char* name : optionalFileNames) {
        if (isFinished(calendarsFile) && !isFinished(name)) {
            m_files.remove(path(name));
        }
    }
    for (const char* name : fileNames) {
        putInPlace(name);
    }
    m_files.remove(path(finishedFolder));
}

/// A file takes the place of another one. What else is there is not ours and gets another name.
void SavedState::putInPlace(const char* name) {
    constexpr int mostOtherNames = 10;
    const std::string from = path(join(finishedFolder, name).c_str());
    const std::string to = path(name);
    bool isThere = m_files.move(from, to) || !isFinished(name);
    for (int number = 1; !isThere && number <= mostOtherNames; ++number) {
        isThere =
            m_files.move(to, to + ".damaged-" + std::to_string(number)) && m_files.move(from, to);
    }
}

bool SavedState::isFinished(const char* name) const {
    return m_files.modificationDate(path(join(finishedFolder, name).c_str())).has_value();
}

void SavedState::discard() {
    for (const char* name :
         {unfinishedFolder, finishedFolder, remindersFile, calendarsFile, weatherFile, mailFile}) {
        m_files.remove(path(name));
    }
}

void SavedState::discardMail() {
    m_files.remove(path(mailFile));
}

std::optional<Value> SavedState::read(const char* name) const {
    const auto bytes = m_files.read(path(name));
    return bytes ? readBinaryPropertyList(*bytes) : std::nullopt;
}

void SavedState::restore(const Steps& steps) {
    m_files.remove(path(unfinishedFolder));
    putInPlace();
    auto events = read(remindersFile);
    const auto issueTime = m_files.modificationDate(path(remindersFile));
    if (events && events->array() != nullptr && issueTime) {
        steps.restoreEvents(std::move(*events->mutableArray()), *issueTime);
        m_files.remove(path(remindersFile));
    }
    auto nodes = read(calendarsFile);
    if (nodes && nodes->array() != nullptr) {
        steps.restoreSourceList(std::move(*nodes->mutableArray()));
        m_files.remove(path(calendarsFile));
    }
    auto weather = read(weatherFile);
    if (weather && weather->dictionary() != nullptr) {
        steps.restoreWeather(std::move(*weather->mutableDictionary()));
        m_files.remove(path(weatherFile));
    }
    restoreMail(steps);
}

void SavedState::restoreMail(const Steps& steps) {
    auto alarms = read(mailFile);
    if (alarms && alarms->array() != nullptr && m_files.remove(path(mailFile))) {
        steps.restoreMail(std::move(*alarms->mutableArray()));
    }
}

} // namespace plenzo
