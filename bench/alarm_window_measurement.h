#pragma once

#include "measurement.h"

#include <memory>

namespace plenzo {

/// How long the alarm window holds the main loop when very much has fired: until what was done is
/// painted, on a screen that nobody sees.
class AlarmWindowMeasurement final : public Measurement {
public:
    AlarmWindowMeasurement();
    AlarmWindowMeasurement(const AlarmWindowMeasurement&) = delete;
    AlarmWindowMeasurement& operator=(const AlarmWindowMeasurement&) = delete;
    ~AlarmWindowMeasurement() override;

    void registerBenchmarks() override;
    [[nodiscard]] std::vector<Figure> figures(const BestTimes& times) const override;

private:
    struct Application;

    std::unique_ptr<Application> m_application;
};

} // namespace plenzo
