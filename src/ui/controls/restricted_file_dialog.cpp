#include "ui/controls/restricted_file_dialog.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QSortFilterProxyModel>

namespace plenzo {

namespace {

bool allows(const std::function<bool(const std::string&)>& shouldEnable, const QString& path) {
    return !shouldEnable || shouldEnable(path.toStdString());
}

/// The files of the dialog, of which most cannot be chosen.
class RestrictedFiles final : public QSortFilterProxyModel {
public:
    RestrictedFiles(std::function<bool(const std::string&)> shouldEnable, QObject* parent)
        : QSortFilterProxyModel(parent), m_shouldEnable(std::move(shouldEnable)) {}

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override {
        const QString path = data(index, QFileSystemModel::FilePathRole).toString();
        const Qt::ItemFlags flags = QSortFilterProxyModel::flags(index);
        return allows(m_shouldEnable, path) ? flags
                                            : flags & ~(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    }

private:
    std::function<bool(const std::string&)> m_shouldEnable;
};

} // namespace

RestrictedFileDialog::RestrictedFileDialog(const OpenPanelRequest& request, QWidget* parent)
    : QFileDialog(parent), m_shouldEnable(request.shouldEnable) {
    // The desktop's own dialog would let the user choose anything.
    setOption(QFileDialog::DontUseNativeDialog);
    setOption(QFileDialog::ReadOnly);
    setAcceptMode(QFileDialog::AcceptOpen);
    setLabelText(QFileDialog::Accept, QString::fromStdString(request.prompt));
    restrictTo(request);
    setDirectory(QString::fromStdString(request.directory));
    selectWhatCanBeChosen(request);
    letWhatIsTypedCount();
}

void RestrictedFileDialog::restrictTo(const OpenPanelRequest& request) {
    const bool wantsFolder = request.mode == OpenPanelMode::Folder;
    setFileMode(wantsFolder ? QFileDialog::Directory : QFileDialog::ExistingFile);
    setOption(QFileDialog::ShowDirsOnly, wantsFolder);
    if (!wantsFolder && !request.allowedFileType.empty()) {
        setNameFilter("*." + QString::fromStdString(request.allowedFileType));
    }
    setProxyModel(new RestrictedFiles(request.shouldEnable, this));
}

void RestrictedFileDialog::selectWhatCanBeChosen(const OpenPanelRequest& request) {
    if (request.mode == OpenPanelMode::Folder || !request.shouldEnable) {
        return;
    }
    for (const QFileInfo& file : QDir(directory()).entryInfoList(QDir::Files)) {
        if (allows(m_shouldEnable, file.absoluteFilePath())) {
            selectFile(file.absoluteFilePath());
            return;
        }
    }
}

void RestrictedFileDialog::letWhatIsTypedCount() {
    const auto* name = findChild<QLineEdit*>("fileNameEdit");
    if (name == nullptr) {
        return;
    }
    // The toolkit moves the selection to what is typed, but leaves it where it was when that cannot
    // be selected, and then prefers the selection.
    connect(name, &QLineEdit::textEdited, this, [this] {
        for (QAbstractItemView* files : findChildren<QAbstractItemView*>()) {
            if (files->selectionModel() != nullptr) {
                files->clearSelection();
            }
        }
    });
}

QString RestrictedFileDialog::chosenPath() const {
    const QStringList files = selectedFiles();
    return files.isEmpty() ? QString() : files.first();
}

void RestrictedFileDialog::accept() {
    // A name can be typed, whatever the list allows.
    if (allows(m_shouldEnable, chosenPath())) {
        QFileDialog::accept();
    } else {
        QApplication::beep();
    }
}

} // namespace plenzo
