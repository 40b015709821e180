#pragma once

#include "platform/workspace.h"

#include <string>
#include <vector>

namespace plenzo {

/// Remembers what was opened, as "open URL" or "open quietly URL".
class FakeWorkspace final : public Workspace {
public:
    void openURL(const std::string& url) override { opened.push_back("open " + url); }
    void openFile(const std::string& path) override { opened.push_back("open file " + path); }
    void openURLWithoutActivation(const std::string& url) override {
        opened.push_back("open quietly " + url);
    }

    std::vector<std::string> opened;
};

} // namespace plenzo
