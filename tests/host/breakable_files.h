#pragma once

#include "host/files/file_replacement.h"

#include <functional>
#include <string>

namespace plenzo {

/// The disk, whose steps can fail one by one, or stop for good as at a loss of power.
class BreakableFiles final : public FileReplacement {
public:
    int failingStep = -1; // that step fails
    int lastStep = 1000;  // what comes after it does not happen
    std::function<void()> beforeStamp = [] {};

    std::string realPath(const std::string& path) override { return m_disk.realPath(path); }
    FoundFile read(const std::string& path) override { return m_disk.read(path); }
    FileStamp stamp(const std::string& path) override {
        beforeStamp();
        return m_disk.stamp(path);
    }
    std::string pathForNew(const std::string& path) override { return m_disk.pathForNew(path); }
    std::string writeThrough(const std::string& path, const std::string& text,
                             const FileAttributes& attributes) override {
        if (fails()) { // a full disk: a part of it is there
            m_disk.writeThrough(path, text.substr(0, text.size() / 2), attributes);
            return "No space left on device";
        }
        return m_disk.writeThrough(path, text, attributes);
    }
    std::string moveTo(const std::string& from, const std::string& to, bool isNew) override {
        return fails() ? "Input/output error" : m_disk.moveTo(from, to, isNew);
    }
    void remove(const std::string& path) override {
        if (!fails()) {
            m_disk.remove(path);
        }
    }
    std::string syncFolder(const std::string& folder) override {
        return fails() ? "Input/output error" : m_disk.syncFolder(folder);
    }

private:
    bool fails() {
        const int step = m_step++;
        return step == failingStep || step > lastStep;
    }

    FileReplacementOnDisk m_disk;
    int m_step = 0;
};

} // namespace plenzo
