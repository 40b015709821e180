#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <cstdlib>
#include <memory>

namespace {

/// Linked into a test program, gives it the application that widgets need, on no screen and with
/// fonts by pixel size.
class OffscreenApplication final : public testing::Environment {
public:
    void SetUp() override {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        m_application = std::make_unique<QApplication>(m_argumentCount, m_arguments);
        QFont font("Inter");
        font.setPixelSize(13);
        QApplication::setFont(font);
        QApplication::setStyle("Fusion");
    }
    void TearDown() override { m_application.reset(); }

private:
    int m_argumentCount = 1;
    char m_name[6] = "tests";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};

[[maybe_unused]] const auto* const application =
    testing::AddGlobalTestEnvironment(new OffscreenApplication);

} // namespace
