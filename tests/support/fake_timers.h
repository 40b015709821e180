#pragma once

#include "platform/timers.h"
#include "support/fake_clock.h"

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

namespace plenzo {

/// Timers over a fake clock: they fire when a test moves it.
class FakeTimers final : public Timers {
public:
    explicit FakeTimers(FakeClock& clock) : m_clock(clock) {}

    [[nodiscard]] Handle schedule(Instant fireDate, std::function<void()> fired) override {
        if (!fireDate.isFinite()) {
            return std::make_unique<Registration>();
        }
        const Place place{fireDate, m_count++};
        m_pending->emplace(place, std::move(fired));
        return std::make_unique<FakeRegistration>(m_pending, place);
    }

    /// Sets the clock and fires what is then due, in order; what that schedules too when it is due.
    void advanceTo(Instant now) {
        m_clock.set(now);
        fireDue();
    }
    void fireDue() {
        while (!m_pending->empty() && m_pending->begin()->first.first <= m_clock.now()) {
            const auto fired = m_pending->extract(m_pending->begin()).mapped();
            fired();
        }
    }
    [[nodiscard]] std::size_t pendingCount() const { return m_pending->size(); }
    [[nodiscard]] Instant nextFireDate() const {
        return m_pending->empty() ? Instant::distantFuture() : m_pending->begin()->first.first;
    }

private:
    using Place = std::pair<Instant, std::uint64_t>;
    using Pending = std::map<Place, std::function<void()>>;

    class FakeRegistration final : public Registration {
    public:
        FakeRegistration(std::shared_ptr<Pending> pending, Place place)
            : m_pending(std::move(pending)), m_place(place) {}
        FakeRegistration(const FakeRegistration&) = delete;
        FakeRegistration& operator=(const FakeRegistration&) = delete;
        ~FakeRegistration() override { m_pending->erase(m_place); }

    private:
        std::shared_ptr<Pending> m_pending;
        Place m_place;
    };

    FakeClock& m_clock;
    std::shared_ptr<Pending> m_pending = std::make_shared<Pending>();
    std::uint64_t m_count = 0;
};

} // namespace plenzo
