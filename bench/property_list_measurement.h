#pragma once

#include "measurement.h"
#include "plistlib.h"

#include <cstddef>
#include <map>
#include <vector>

namespace plenzo {

/// Reading and writing binary property lists of 100,000 and 1,000,000 records, and Python's
/// plistlib with the smaller one beside it.
class PropertyListMeasurement final : public Measurement {
public:
    PropertyListMeasurement();

    void registerBenchmarks() override;
    [[nodiscard]] std::vector<Figure> figures(const BestTimes& times) const override;

private:
    std::map<std::size_t, std::vector<std::byte>> m_files;
    Plistlib m_plistlib;
};

} // namespace plenzo
