#include "support/temporary_folder.h"
#include "ui/controls/open_panel_of_desktop.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTimer>
#include <fstream>
#include <optional>
#include <string>
#include <utility>

namespace plenzo {
namespace {

using testing::Optional;

/// Works the dialog that is shown, and notes what it shows.
class AnOpenPanel : public testing::Test {
protected:
    AnOpenPanel() {
        for (const char* name : {"plan.pdf", "other.pdf", "notes.txt"}) {
            std::ofstream(pathOf(name)) << name;
        }
    }

    [[nodiscard]] std::string pathOf(const char* name) const {
        return (folder.path() / name).string();
    }
    [[nodiscard]] OpenPanelRequest request(const std::string& target) const {
        return {.title = "plenzoalarm: File Access Required",
                .message = "Please select the file <below>",
                .prompt = "Allow",
                .mode = OpenPanelMode::File,
                .directory = folder.path().string(),
                .allowedFileType = "pdf",
                .shouldEnable = [target](const std::string& path) { return path == target; }};
    }

    /// The answer of the panel when the user does that to its file dialog.
    template <typename UsersDoing>
    std::optional<std::string> answer(const OpenPanelRequest& request, UsersDoing usersDoing) {
        QTimer::singleShot(0, [&] {
            auto* panel = static_cast<QDialog*>(QApplication::activeModalWidget());
            auto* files = panel->findChild<QFileDialog*>();
            title = panel->windowTitle().toStdString();
            message = panel->findChild<QLabel*>()->text().toStdString();
            prompt = button(*files).text().toStdString();
            usersDoing(*files);
            if (panel->isVisible()) {
                panel->reject();
            }
        });
        return OpenPanelOfDesktop().runModal(request);
    }

    static QPushButton& button(QFileDialog& files) {
        return *files.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
    }
    static void type(QFileDialog& files, const std::string& name) {
        auto* field = files.findChild<QLineEdit*>("fileNameEdit");
        field->selectAll();
        for (const char character : name) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar(character)));
            QApplication::sendEvent(field, &press);
        }
    }
    static void allow(QFileDialog& files) { button(files).click(); }

    TemporaryFolder folder;
    std::string title;
    std::string message;
    std::string prompt;
};

TEST_F(AnOpenPanel, OffersTheOneFileWithItsTexts) {
    const std::string plan = pathOf("plan.pdf");
    EXPECT_THAT(answer(request(plan), allow), Optional(plan));
    EXPECT_EQ(title, "plenzoalarm: File Access Required");
    EXPECT_EQ(message, "Please select the file <below>");
    EXPECT_EQ(prompt, "Allow");
}

TEST_F(AnOpenPanel, TakesNoOtherFileEvenWhenItsNameIsTyped) {
    const auto typesAnother = [this](QFileDialog& files) {
        type(files, pathOf("other.pdf"));
        allow(files);
    };
    EXPECT_EQ(answer(request(pathOf("plan.pdf")), typesAnother), std::nullopt);
}

TEST_F(AnOpenPanel, IsDeclined) {
    const auto nothing = [](QFileDialog&) {};
    EXPECT_EQ(answer(request(pathOf("plan.pdf")), nothing), std::nullopt);
}

TEST_F(AnOpenPanel, GivesTheFolderThatItShows) {
    OpenPanelRequest folderRequest = request(folder.path().string());
    folderRequest.mode = OpenPanelMode::Folder;
    folderRequest.allowedFileType.clear();
    EXPECT_THAT(answer(folderRequest, allow), Optional(folder.path().string()));
    folderRequest.shouldEnable = [](const std::string&) { return false; };
    EXPECT_EQ(answer(folderRequest, allow), std::nullopt);
}

} // namespace
} // namespace plenzo
