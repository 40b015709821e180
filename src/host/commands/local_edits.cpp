#include "host/commands/local_edits.h"

#include "host/commands/state_file.h"
#include "host/edits/calendar_edits.h"
#include "host/ical/identifiers.h"
#include "host/records/agent_date.h"
#include "host/records/event_record.h"
#include "propertylist/dictionary.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace plenzo {

namespace {

constexpr cctz::seconds twoDays{2 * 86'400};
constexpr std::size_t mostEdits = 1'000;

Dictionary dictionaryOf(const LocalEdit& edit) {
    const OccurrenceTarget& occurrence = edit.target.occurrence;
    Dictionary dictionary{
        {Key("path"), occurrence.path},
        {Key("isToDo"), occurrence.kind == ItemKind::ToDo},
        {Key("item"), occurrence.itemUid},
        {Key("line"), occurrence.line},
        {Key("identity"), occurrence.identity ? identityText(*occurrence.identity) : std::string()},
        {Key("alarm"), edit.target.alarmUid},
        {Key("repetition"), edit.target.repetition},
        {Key("made"), agentDate(edit.made)}};
    if (edit.until) {
        dictionary.set(Key("until"), agentDate(*edit.until));
    }
    return dictionary;
}

std::string textOf(const Dictionary& dictionary, const char* key) {
    return std::string(dictionary.stringForKey(key).value_or(""));
}

std::optional<LocalEdit> editFrom(const Dictionary& dictionary) {
    LocalEdit edit;
    OccurrenceTarget& occurrence = edit.target.occurrence;
    occurrence.path = textOf(dictionary, "path");
    occurrence.kind = dictionary.boolForKey("isToDo") ? ItemKind::ToDo : ItemKind::Event;
    occurrence.itemUid = textOf(dictionary, "item");
    occurrence.line = static_cast<int>(dictionary.integerForKey("line"));
    occurrence.identity = identityFromText(textOf(dictionary, "identity"));
    edit.target.alarmUid = textOf(dictionary, "alarm");
    edit.target.repetition = static_cast<int>(dictionary.integerForKey("repetition"));
    edit.until = instantForKey(dictionary, "until");
    const auto made = instantForKey(dictionary, "made");
    edit.made = made.value_or(SystemSeconds());
    return made && !occurrence.path.empty() ? std::optional(std::move(edit)) : std::nullopt;
}

/// The same ones at every reading, so that the agent knows a snoozed alarm again.
std::function<std::string()> uidsOf(const LocalEdit& edit) {
    const OccurrenceTarget& occurrence = edit.target.occurrence;
    const std::string base = stableHashText(
        occurrence.path + '\n' + occurrence.itemUid + '\n' + std::to_string(occurrence.line) +
        '\n' + edit.target.alarmUid + '\n' + std::to_string(unixSecondsOf(edit.made)));
    return
        [base, count = std::make_shared<int>(0)] { return base + "-" + std::to_string(++*count); };
}

SystemSeconds lastUseOf(const LocalEdit& edit) {
    return std::max(edit.made, edit.until.value_or(edit.made));
}

} // namespace

LocalEdits::LocalEdits(FileReplacement& files, std::string path, CalendarZone zone)
    : m_files(files), m_path(std::move(path)), m_zone(std::move(zone)) {}

std::string LocalEdits::load() {
    const StateFile file = readStateFile(m_files, m_path);
    for (const Dictionary& dictionary : file.dictionaries) {
        auto edit = editFrom(dictionary);
        if (edit && m_edits.size() < mostEdits) {
            noteChange(*edit);
            m_edits.push_back(std::move(*edit));
        }
    }
    return file.setAside;
}

void LocalEdits::setZone(CalendarZone zone) {
    m_zone = std::move(zone);
    for (const LocalEdit& edit : m_edits) {
        noteChange(edit);
    }
}

std::string LocalEdits::add(LocalEdit edit) {
    forgetOld(edit.made);
    noteChange(edit);
    m_edits.push_back(std::move(edit));
    if (m_edits.size() > mostEdits) {
        noteChange(m_edits.front());
        m_edits.erase(m_edits.begin());
    }
    return save();
}

std::string LocalEdits::forget(const std::string& calendarFile) {
    const auto isOfFile = [&](const LocalEdit& edit) {
        return edit.target.occurrence.path == calendarFile;
    };
    if (std::erase_if(m_edits, isOfFile) == 0) {
        return {};
    }
    ++m_versions[calendarFile];
    return save();
}

// Later edits of an item may build upon earlier ones, so they go together.
void LocalEdits::forgetOld(SystemSeconds now) {
    const auto isOfSameItem = [](const LocalEdit& left, const LocalEdit& right) {
        const OccurrenceTarget& one = left.target.occurrence;
        const OccurrenceTarget& other = right.target.occurrence;
        return one.path == other.path && one.itemUid == other.itemUid;
    };
    std::vector<LocalEdit> kept;
    for (const LocalEdit& edit : m_edits) {
        const bool isOfUse = std::any_of(m_edits.begin(), m_edits.end(), [&](const auto& other) {
            return isOfSameItem(edit, other) && lastUseOf(other) + twoDays > now;
        });
        if (isOfUse) {
            kept.push_back(edit);
        } else {
            noteChange(edit);
        }
    }
    m_edits = std::move(kept);
}

void LocalEdits::noteChange(const LocalEdit& edit) {
    ++m_versions[edit.target.occurrence.path];
}

std::size_t LocalEdits::version(const std::string& calendarFile) const {
    const auto found = m_versions.find(calendarFile);
    return found == m_versions.end() ? 0 : found->second;
}

std::string LocalEdits::amended(const std::string& calendarFile, std::string text) const {
    for (const LocalEdit& edit : m_edits) {
        if (edit.target.occurrence.path != calendarFile) {
            continue;
        }
        EditResult edited = applied(edit, text);
        if (edited.error.empty()) {
            text = std::move(edited.text);
        }
    }
    return text;
}

std::string LocalEdits::whyNotAdded(const LocalEdit& edit, std::string fileText) const {
    return applied(edit, amended(edit.target.occurrence.path, std::move(fileText))).error;
}

EditResult LocalEdits::applied(const LocalEdit& edit, std::string_view text) const {
    const EditContext context{edit.made, m_zone, uidsOf(edit), true};
    return edit.until ? snoozeAlarm(text, edit.target, *edit.until, context)
                      : acknowledgeAlarm(text, edit.target, context);
}

std::string LocalEdits::save() {
    std::vector<Dictionary> dictionaries;
    dictionaries.reserve(m_edits.size());
    for (const LocalEdit& edit : m_edits) {
        dictionaries.push_back(dictionaryOf(edit));
    }
    return writeStateFile(m_files, m_path, dictionaries);
}

std::string localEditsPath() {
    return stateFilePath("local-edits");
}

} // namespace plenzo
