#include "ui/controls/open_panel_of_desktop.h"

#include "ui/controls/restricted_file_dialog.h"

#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace plenzo {

namespace {

constexpr int messageMargin = 12;

/// The request's message above the files.
void fill(QDialog& panel, const OpenPanelRequest& request, RestrictedFileDialog& files) {
    auto* layout = new QVBoxLayout(&panel);
    auto* message = new QLabel(QString::fromStdString(request.message), &panel);
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);
    message->setMargin(messageMargin);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(message);
    layout->addWidget(&files);
}

} // namespace

std::optional<std::string> OpenPanelOfDesktop::runModal(const OpenPanelRequest& request) {
    QDialog panel(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint);
    panel.setWindowTitle(QString::fromStdString(request.title));
    panel.setAttribute(Qt::WA_QuitOnClose, false);
    RestrictedFileDialog files(request, &panel);
    files.setWindowFlags(Qt::Widget);
    fill(panel, request, files);
    QObject::connect(&files, &QDialog::finished, &panel, &QDialog::done);
    QTimer::singleShot(0, &panel, [&] {
        if (m_activate && panel.windowHandle() != nullptr) {
            m_activate(*panel.windowHandle());
        }
    });
    return panel.exec() == QDialog::Accepted ? std::optional(files.chosenPath().toStdString())
                                             : std::nullopt;
}

} // namespace plenzo
