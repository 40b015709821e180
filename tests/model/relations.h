#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace plenzo {

/// How any two of a number of things stand to each other.
class Relations {
public:
    using Order = std::function<std::weak_ordering(std::size_t left, std::size_t right)>;

    Relations(std::size_t count, const Order& order);

    [[nodiscard]] std::size_t count() const { return m_signs.size(); }
    /// -1, 0 or 1.
    [[nodiscard]] int sign(std::size_t left, std::size_t right) const {
        return m_signs[left][right];
    }
    /// What keeps the order from being a strict weak one, for the first things of which something
    /// does: that one is not its own equal, that two do not agree both ways round, that three do
    /// not make a chain. Empty when nothing does.
    [[nodiscard]] std::string fault() const;
    /// How many pairs are neither before nor after each other.
    [[nodiscard]] std::size_t tieCount() const;

private:
    [[nodiscard]] std::string faultOfPairs() const;
    [[nodiscard]] bool isChain(std::size_t first, std::size_t second, std::size_t third) const;

    std::vector<std::vector<int>> m_signs;
};

} // namespace plenzo
