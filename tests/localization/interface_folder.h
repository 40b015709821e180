#pragma once

#include "localization/interface_files.h"
#include "support/temporary_folder.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace plenzo {

/// A resource folder of the test's own.
class InterfaceFolder {
public:
    [[nodiscard]] std::string path() const { return m_folder.path().string(); }

    void write(const std::string& name, const std::string& content) const {
        const std::filesystem::path path = m_folder.path() / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << content;
    }

    /// A window "Test" of 400 by 100 named "Window" with these widgets in it.
    void writeWindow(const std::string& widgets) const { write("Test.ui", window(widgets)); }

    [[nodiscard]] static std::string window(const std::string& widgets) {
        return R"(<ui version="4.0"><class>Window</class><widget class="QWidget" name="Window">
            <property name="geometry"><rect><x>0</x><y>0</y><width>400</width><height>100</height></rect></property>
            )" +
               widgets + "</widget></ui>";
    }

    /// A widget of the class and name; `more` has other properties, "NAME=TEXT" each.
    [[nodiscard]] static std::string widget(const std::string& className, const std::string& name,
                                            const QRect& frame, const std::string& mask,
                                            const std::string& more = {}) {
        const auto number = [](int value) { return std::to_string(value); };
        return "<widget class=\"" + className + "\" name=\"" + name +
               "\"><property name=\"geometry\"><rect><x>" + number(frame.x()) + "</x><y>" +
               number(frame.y()) + "</y><width>" + number(frame.width()) + "</width><height>" +
               number(frame.height()) +
               "</height></rect></property><property name=\"autoresizingMask\" stdset=\"0\">"
               "<string>" +
               mask + "</string></property>" + more + "</widget>";
    }
    [[nodiscard]] static std::string text(const std::string& property, const std::string& value) {
        return "<property name=\"" + property + "\"><string>" + value + "</string></property>";
    }
    [[nodiscard]] static std::string tag(int value) {
        return "<property name=\"tag\" stdset=\"0\"><number>" + std::to_string(value) +
               "</number></property>";
    }

private:
    TemporaryFolder m_folder;
};

} // namespace plenzo
