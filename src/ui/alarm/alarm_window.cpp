#include "ui/alarm/alarm_window.h"

#include "ui/alarm/alarm_table_view.h"

#include <QApplication>
#include <utility>

namespace plenzo {

namespace {

constexpr double secondsPerMillisecond = 1e-3;

} // namespace

std::unique_ptr<AlarmWindow> AlarmWindow::load(const Collaborators& collaborators) {
    auto window = AlarmPanelWindow::load(collaborators.window);
    return window ? std::unique_ptr<AlarmWindow>(new AlarmWindow(collaborators, std::move(window)))
                  : nullptr;
}

AlarmWindow::AlarmWindow(const Collaborators& collaborators,
                         std::unique_ptr<AlarmPanelWindow> window)
    : m_window(std::move(window)), m_hostCommands(collaborators.workspace),
      m_dateText({.clock = collaborators.clock,
                  .regionalSettings = collaborators.regionalSettings,
                  .strings = collaborators.window.strings}),
      m_controller({.list = m_window->list(),
                    .panel = *m_window,
                    .hostCommands = m_hostCommands,
                    .dateText = m_dateText,
                    .defaults = collaborators.defaults,
                    .clock = collaborators.clock,
                    .regionalSettings = collaborators.regionalSettings,
                    .timers = collaborators.timers}),
      m_keys({.controller = m_controller,
              .list = m_window->list(),
              .panel = *m_window,
              .defaults = collaborators.defaults,
              .doubleClickSeconds = QApplication::doubleClickInterval() * secondsPerMillisecond}) {
    m_window->connect(m_controller, m_keys);
}

} // namespace plenzo
