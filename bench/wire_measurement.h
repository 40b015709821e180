#pragma once

#include "measurement.h"

#include <memory>

namespace plenzo {

/// How much keeping the records costs beyond walking their message: the same 25,000 records,
/// received over a bus, are walked with the bus library without keeping anything, decoded, and read
/// from a sealed memory file.
class WireMeasurement final : public Measurement {
public:
    WireMeasurement();
    ~WireMeasurement() override;

    void registerBenchmarks() override;
    [[nodiscard]] std::vector<Figure> figures(const BestTimes& times) const override;

private:
    struct Arrived;

    std::unique_ptr<Arrived> m_arrived;
};

} // namespace plenzo
