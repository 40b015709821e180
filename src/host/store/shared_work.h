#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <optional>

namespace plenzo {

/// Pieces of work, numbered from 0, that several threads take from one after the other. No two
/// pieces may change the same thing.
class SharedWork {
public:
    explicit SharedWork(std::size_t count) : m_count(count) {}

    /// One that nobody else has; nothing when all are taken.
    std::optional<std::size_t> take();

    /// Runs `work`, which takes pieces until there are none, here and in as many threads as pay
    /// when this many pieces are worth one. Returns when all are done.
    void run(std::size_t worthAThread, const std::function<void()>& work) const;

private:
    std::size_t m_count = 0;
    std::atomic<std::size_t> m_next = 0;
};

} // namespace plenzo
