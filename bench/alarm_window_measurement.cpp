#include "alarm_window_measurement.h"

#include "ui/alarm/alarm_window_fixture.h"

#include <cstdlib>
#include <functional>
#include <string>

namespace plenzo {

namespace {

constexpr int rowCount = 1000;

/// Of one turn: filling the window takes longer than what is measured.
constexpr int iterationCount = 5;

constexpr const char* adding = "adding an alarm to 1,000";
constexpr const char* selecting = "selecting 1,000 alarms";
constexpr const char* dismissing = "dismissing 1,000 alarms";

struct FilledWindow : AlarmWindowFixture {
    FilledWindow() {
        for (int number = 0; number < rowCount; ++number) {
            controller().addDisplayAlarm(numbered(number));
        }
        controller().showAlarmWindowIfNecessary();
        paint();
    }
    [[nodiscard]] Alarm numbered(int number) const {
        return alarm(
            "Alarm-" + std::to_string(number),
            {{keys::location, "Harbour Street 4"}, {keys::cal, "Work"}, {keys::type, number % 2}});
    }
    /// All of the window, also what did not change.
    void paint() const {
        QApplication::processEvents();
        benchmark::DoNotOptimize(panel().grab());
    }
};

void measure(benchmark::State& state, const std::function<void(FilledWindow&)>& act,
             const std::function<bool(const FilledWindow&)>& isDone) {
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        auto window = std::make_unique<FilledWindow>();
        state.ResumeTiming();
        act(*window);
        window->paint();
        state.PauseTiming();
        if (!isDone(*window)) {
            state.SkipWithError("not everything was done");
            break;
        }
        window.reset();
        state.ResumeTiming();
    }
}

void add(FilledWindow& window) {
    window.controller().addDisplayAlarm(window.numbered(rowCount));
    window.controller().showAlarmWindowIfNecessary();
}

bool isAdded(const FilledWindow& window) {
    return window.list().selectedRows() == std::vector<std::size_t>{rowCount};
}

void select(FilledWindow& window) {
    window.list().selectAllRows();
}

bool isSelected(const FilledWindow& window) {
    return window.list().selectedRows().size() == rowCount;
}

void dismissAll(FilledWindow& window) {
    window.controller().setAllModifierDown(true);
    window.controller().dismissButton();
}

bool isDismissed(const FilledWindow& window) {
    return window.workspace.opened.size() == rowCount && !window.panel().isVisible();
}

} // namespace

struct AlarmWindowMeasurement::Application {
    Application() { QApplication::setStyle("Fusion"); }

    int argumentCount = 1;
    char name[8] = "figures";
    char* arguments[2] = {name, nullptr};
    QApplication application{argumentCount, arguments};
};

AlarmWindowMeasurement::AlarmWindowMeasurement() {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    m_application = std::make_unique<Application>();
}

AlarmWindowMeasurement::~AlarmWindowMeasurement() = default;

void AlarmWindowMeasurement::registerBenchmarks() {
    const auto addMeasured = [](const char* name, auto act, auto isDone) {
        Measurement::add(name, [=](benchmark::State& state) {
            measure(state, act, isDone);
        })->Iterations(iterationCount);
    };
    addMeasured(adding, plenzo::add, isAdded);
    addMeasured(selecting, select, isSelected);
    addMeasured(dismissing, dismissAll, isDismissed);
}

std::vector<Figure> AlarmWindowMeasurement::figures(const BestTimes& times) const {
    constexpr double limitMilliseconds = 100;
    std::vector<Figure> figures;
    for (const char* name : {adding, selecting, dismissing}) {
        const double time = times.of(name);
        figures.push_back({std::string(name) + ", until it is painted, ms",
                           time > 0 ? time : std::nan(""),
                           limitMilliseconds,
                           {}});
    }
    return figures;
}

} // namespace plenzo
