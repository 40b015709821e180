#pragma once

#include "platform/handle.h"

#include <functional>
#include <memory>
#include <utility>

namespace plenzo {

/// A callback whose handle is with someone else: calling it does nothing once the handle is gone.
template <typename... Arguments>
class CancellableCallback {
public:
    using Callback = std::function<void(Arguments...)>;

    /// Does nothing.
    CancellableCallback() = default;

    /// The callback, and the handle that keeps it.
    static std::pair<CancellableCallback, Handle> make(Callback callback) {
        auto shared = std::make_shared<Callback>(std::move(callback));
        CancellableCallback weak(shared);
        return {std::move(weak), std::make_unique<Keeper>(std::move(shared))};
    }

    /// On the thread of the handle. The callback may destroy its handle.
    void operator()(Arguments... arguments) const {
        if (const auto callback = m_callback.lock()) {
            (*callback)(std::move(arguments)...);
        }
    }

private:
    class Keeper final : public Registration {
    public:
        explicit Keeper(std::shared_ptr<Callback> callback) : m_callback(std::move(callback)) {}

    private:
        std::shared_ptr<Callback> m_callback;
    };

    explicit CancellableCallback(const std::shared_ptr<Callback>& callback)
        : m_callback(callback) {}

    std::weak_ptr<Callback> m_callback;
};

} // namespace plenzo
