#pragma once

#include "measurement.h"

#include <map>
#include <memory>

namespace plenzo {

/// Keeping the files of very many open-file reminders, from the host's batch to the settings.
class BookmarksMeasurement final : public Measurement {
public:
    BookmarksMeasurement();

    void registerBenchmarks() override;
    [[nodiscard]] std::vector<Figure> figures(const BestTimes& times) const override;

private:
    struct Batch;

    /// By the number of files.
    std::map<std::size_t, std::shared_ptr<Batch>> m_batches;
};

} // namespace plenzo
