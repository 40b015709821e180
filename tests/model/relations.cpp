#include "model/relations.h"

namespace plenzo {

Relations::Relations(std::size_t count, const Order& order)
    : m_signs(count, std::vector<int>(count)) {
    for (std::size_t left = 0; left < count; ++left) {
        for (std::size_t right = 0; right < count; ++right) {
            const std::weak_ordering result = order(left, right);
            m_signs[left][right] = std::is_lt(result) ? -1 : std::is_gt(result) ? 1 : 0;
        }
    }
}

std::string Relations::fault() const {
    if (std::string fault = faultOfPairs(); !fault.empty()) {
        return fault;
    }
    for (std::size_t first = 0; first < count(); ++first) {
        for (std::size_t second = 0; second < count(); ++second) {
            for (std::size_t third = 0; third < count(); ++third) {
                if (!isChain(first, second, third)) {
                    return std::to_string(first) + ", " + std::to_string(second) + ", " +
                           std::to_string(third) + " are no chain";
                }
            }
        }
    }
    return {};
}

std::string Relations::faultOfPairs() const {
    for (std::size_t left = 0; left < count(); ++left) {
        if (sign(left, left) != 0) {
            return std::to_string(left) + " is not its own equal";
        }
        for (std::size_t right = 0; right < left; ++right) {
            if (sign(left, right) != -sign(right, left)) {
                return std::to_string(left) + " and " + std::to_string(right) + " disagree";
            }
        }
    }
    return {};
}

/// Not after one and not after the next is not after that, and before it when one step is.
bool Relations::isChain(std::size_t first, std::size_t second, std::size_t third) const {
    const int firstStep = sign(first, second);
    const int secondStep = sign(second, third);
    if (firstStep > 0 || secondStep > 0) {
        return true;
    }
    const bool isStrict = firstStep < 0 || secondStep < 0;
    return isStrict ? sign(first, third) < 0 : sign(first, third) == 0;
}

std::size_t Relations::tieCount() const {
    std::size_t ties = 0;
    for (std::size_t left = 0; left < count(); ++left) {
        for (std::size_t right = 0; right < left; ++right) {
            ties += static_cast<std::size_t>(sign(left, right) == 0);
        }
    }
    return ties;
}

} // namespace plenzo
