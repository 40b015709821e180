#pragma once

#include "platform/open_panel.h"

#include <functional>
#include <utility>
#include <vector>

namespace plenzo {

/// Remembers what was asked and gives the answer that a test has ready.
class FakeOpenPanel final : public OpenPanel {
public:
    std::optional<std::string> runModal(const OpenPanelRequest& request) override {
        requests.push_back(request);
        if (whileShown) {
            whileShown();
        }
        return answer;
    }

    std::vector<OpenPanelRequest> requests;
    std::optional<std::string> answer;
    std::function<void()> whileShown;
};

} // namespace plenzo
