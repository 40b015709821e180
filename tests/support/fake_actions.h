#pragma once

#include "platform/file_access.h"
#include "platform/mailer.h"
#include "platform/sounds.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace plenzo {

class FakeSounds final : public Sounds {
public:
    [[nodiscard]] bool hasSound(const std::string& name) const override {
        return installed.contains(name);
    }
    void play(const std::string& name) override { played.push_back(name); }

    std::set<std::string> installed{"Basso"};
    std::vector<std::string> played;
};

/// Takes each message at once, or refuses it; when it waits, the test says how each goes on.
class FakeMailer final : public Mailer {
public:
    void mail(const MailMessage& message, Progress progress) override {
        sent.push_back(message);
        m_inHand.push_back(std::move(progress));
        if (waits) {
            return;
        }
        if (works) {
            begin();
        }
        finish();
    }
    void completeAtOnce() override { ++completionCount; }

    void begin() { m_inHand.front().begins(); }
    void finish() {
        const auto finished = std::move(m_inHand.front().finished);
        m_inHand.pop_front();
        finished(works);
    }
    /// Those who would be told are gone.
    void forget() { m_inHand.clear(); }

    std::vector<MailMessage> sent;
    bool works = true;
    bool waits = false;
    int completionCount = 0;

private:
    std::deque<Progress> m_inHand;
};

/// Transport data is the file's path; files in `files` can be found.
class FakeFileAccess final : public FileAccess {
public:
    [[nodiscard]] std::optional<std::string>
    secureFileFromTransportData(std::span<const std::byte> transportData) const override {
        const std::string path(reinterpret_cast<const char*>(transportData.data()),
                               transportData.size());
        ++resolveCount;
        return files.contains(path) ? std::optional(path) : std::nullopt;
    }
    [[nodiscard]] std::optional<std::string>
    secureFileFromPath(const std::string& path, CreateIfFileExists create) override {
        const bool isAsked = create == CreateIfFileExists::Yes && files.contains(path);
        return kept.contains(path) || isAsked ? std::optional(path) : std::nullopt;
    }
    bool saveSecureFile(const std::string& path) override {
        ++saveCount;
        return kept.insert(path).second;
    }
    [[nodiscard]] Handle changeTogether() override {
        ++batchCount;
        return std::make_unique<Registration>();
    }
    void cleanSecureFiles() override {
        std::erase_if(kept, [this](const std::string& path) { return !files.contains(path); });
    }
    bool startAccessing(const std::string& path) override {
        return accessed.insert(path).second && grantsAccess;
    }
    void stopAccessing(const std::string& path) override { accessed.erase(path); }

    std::set<std::string> files;
    std::set<std::string> kept;
    std::set<std::string> accessed;
    int saveCount = 0;
    int batchCount = 0;
    mutable int resolveCount = 0;
    bool grantsAccess = true;
};

} // namespace plenzo
