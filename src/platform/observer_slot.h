#pragma once

#include "platform/handle.h"

#include <memory>
#include <utility>

namespace plenzo {

/// The place of the one observer of something. A later observer takes the place of an earlier one,
/// whose handle then does nothing any more; handles may outlive the slot.
template <typename Observer>
class ObserverSlot {
public:
    [[nodiscard]] Handle observe(Observer& observer) {
        *m_place = &observer;
        return std::make_unique<Place>(m_place, observer);
    }

    /// Null while nobody observes.
    [[nodiscard]] Observer* observer() const { return *m_place; }

    /// Tells the observer, if there is one: `tell(&Observer::goingToSleep)`.
    template <typename Operation, typename... Arguments>
    void tell(Operation operation, const Arguments&... arguments) const {
        if (Observer* observer = *m_place) {
            (observer->*operation)(arguments...);
        }
    }

private:
    class Place final : public Registration {
    public:
        Place(std::shared_ptr<Observer*> place, Observer& observer)
            : m_place(std::move(place)), m_observer(&observer) {}
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;
        ~Place() override {
            if (*m_place == m_observer) {
                *m_place = nullptr;
            }
        }

    private:
        std::shared_ptr<Observer*> m_place;
        Observer* m_observer;
    };

    std::shared_ptr<Observer*> m_place = std::make_shared<Observer*>(nullptr);
};

} // namespace plenzo
