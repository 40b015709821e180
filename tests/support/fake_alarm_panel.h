#pragma once

#include "ui/alarm/alarm_list_view.h"
#include "ui/alarm/alarm_panel_view.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace plenzo {

/// A list of titles with a selection.
class FakeAlarmList final : public AlarmListView {
public:
    void appendRow(const AlarmRow& row) override { rows.push_back(row); }
    void removeRows(const std::vector<std::size_t>& removed) override {
        for (auto row = removed.rbegin(); row != removed.rend(); ++row) {
            rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(*row));
            std::erase(selection, *row);
            for (std::size_t& selected : selection) {
                selected -= selected > *row ? 1U : 0U;
            }
        }
    }
    void updateRow(std::size_t index, const AlarmRow& row) override { rows.at(index) = row; }
    [[nodiscard]] std::vector<std::size_t> selectedRows() const override { return selection; }
    void selectRow(std::size_t row) override { selection = {row}; }
    void selectAllRows() override {
        selection.resize(rows.size());
        std::iota(selection.begin(), selection.end(), std::size_t{0});
    }
    void scrollToRow(std::size_t row) override { scrolledTo = row; }

    [[nodiscard]] std::vector<std::string> titles() const {
        std::vector<std::string> titles;
        for (const AlarmRow& row : rows) {
            titles.push_back(row.title);
        }
        return titles;
    }
    [[nodiscard]] std::vector<std::string> selectedTitles() const {
        std::vector<std::string> titles;
        for (const std::size_t row : selection) {
            titles.push_back(rows.at(row).title);
        }
        return titles;
    }

    std::vector<AlarmRow> rows;
    std::vector<std::size_t> selection;
    std::size_t scrolledTo = 0;
};

/// A window of what it was told last.
class FakeAlarmPanel final : public AlarmPanelView {
public:
    [[nodiscard]] bool isVisible() const override { return visible; }
    void sizeToRows(std::size_t count) override { visibleRowCount = count; }
    void show() override {
        visible = true;
        ++showCount;
    }
    void close() override { visible = false; }
    void takeFocus() override { ++focusCount; }
    void setSnoozeAmount(const SnoozeAmount& amount) override { snooze = amount; }
    void setButtonTitles(ButtonScope titles) override { scope = titles; }
    void setDefaultButton(DefaultButton button) override { defaultButton = button; }
    void beep() override { ++beepCount; }

    bool visible = false;
    int showCount = 0;
    int focusCount = 0;
    int beepCount = 0;
    std::size_t visibleRowCount = 0;
    SnoozeAmount snooze;
    ButtonScope scope = ButtonScope::All;
    DefaultButton defaultButton = DefaultButton::None;
};

} // namespace plenzo
