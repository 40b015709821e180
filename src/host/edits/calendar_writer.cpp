#include "host/edits/calendar_writer.h"

#include <sys/stat.h>

#include <filesystem>

namespace plenzo {

namespace {

constexpr int mostTries = 5;
constexpr mode_t modeOfNewFile = S_IRUSR | S_IWUSR;

std::string whyNotEditable(const FoundFile& found, bool mayBeMissing) {
    if (!found.error.empty()) {
        return found.error;
    }
    if (!found.stamp.exists && !mayBeMissing) {
        return "the file is not there any more";
    }
    return found.isWritable ? "" : "is read-only";
}

} // namespace

WriteResult CalendarWriter::apply(const std::string& path, const TextEdit& edit) {
    return applyTo(m_files.realPath(path), edit, WhenMissing::Fail);
}

WriteResult CalendarWriter::applyOrCreate(const std::string& path, const TextEdit& edit) {
    return applyTo(m_files.realPath(path), edit, WhenMissing::Create);
}

WriteResult CalendarWriter::applyTo(const std::string& path, const TextEdit& edit,
                                    WhenMissing whenMissing) {
    for (int tries = 0; tries < mostTries; ++tries) {
        const FoundFile found = m_files.read(path);
        std::string error = whyNotEditable(found, whenMissing == WhenMissing::Create);
        if (!error.empty()) {
            return {error};
        }
        const EditResult edited = edit(found.text);
        if (!edited.error.empty() || (found.stamp.exists && edited.text == found.text)) {
            return {edited.error, !edited.error.empty()};
        }
        const Outcome outcome = replace(path, found, edited.text, error);
        if (outcome != Outcome::ChangedMeanwhile) {
            return {error};
        }
    }
    return {"the file keeps changing"};
}

CalendarWriter::Outcome CalendarWriter::replace(const std::string& path, const FoundFile& found,
                                                const std::string& text, std::string& error) {
    const std::string beside = m_files.pathForNew(path);
    const FileAttributes ofNewFile{modeOfNewFile};
    error = m_files.writeThrough(beside, text, found.stamp.exists ? found.attributes : ofNewFile);
    if (!error.empty()) {
        m_files.remove(beside);
        return Outcome::Failed;
    }
    if (m_files.stamp(path) != found.stamp) {
        m_files.remove(beside);
        return Outcome::ChangedMeanwhile;
    }
    error = m_files.moveTo(beside, path, !found.stamp.exists);
    if (!error.empty()) {
        m_files.remove(beside);
        const bool isTaken = !found.stamp.exists && m_files.stamp(path).exists;
        return isTaken ? Outcome::ChangedMeanwhile : Outcome::Failed;
    }
    m_files.syncFolder(std::filesystem::path(path).parent_path().string()); // the text is in place
    return Outcome::Done;
}

} // namespace plenzo
