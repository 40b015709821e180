#pragma once

#include "platform/disposal.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>

namespace plenzo {

/// What every implementation of Disposal keeps to.
class DisposalContract {
public:
    DisposalContract() = default;
    DisposalContract(const DisposalContract&) = delete;
    DisposalContract& operator=(const DisposalContract&) = delete;
    virtual ~DisposalContract() = default;

    virtual Disposal& disposal() = 0;
    /// Returns when what was disposed of so far is gone.
    virtual void settle() = 0;

    void dropsEachShareOnce() {
        std::shared_ptr<void> kept = counted();
        disposal().dispose(counted());
        disposal().dispose(kept);
        disposal().dispose(nullptr);
        disposal().dispose(counted());
        settle();
        EXPECT_EQ(m_destroyedCount, 2) << "one has another owner";
        EXPECT_EQ(kept.use_count(), 1);
        kept.reset();
        EXPECT_EQ(m_destroyedCount, 3);
    }

private:
    std::shared_ptr<void> counted() {
        return {this, [this](void*) { ++m_destroyedCount; }};
    }

    std::atomic<int> m_destroyedCount = 0;
};

} // namespace plenzo
