#include "shell/look/SaveDialog.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <utility>

namespace quorvane {

void SaveDialog::open(QWidget& parent, const Content& content, std::function<void(const std::filesystem::path&)> chosen,
                      std::function<void()> cancelled) {
    auto* const dialog = new QFileDialog(&parent, content.title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setMimeTypeFilters({content.mimeType});
    dialog->setDefaultSuffix(QFileInfo(content.fileName).suffix());
    dialog->setDirectory(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    dialog->selectFile(content.fileName);
    QObject::connect(dialog, &QFileDialog::fileSelected, &parent, [use = std::move(chosen)](const QString& name) {
        use(std::filesystem::path(QFile::encodeName(name).toStdString()));
    });
    if (cancelled) QObject::connect(dialog, &QDialog::rejected, &parent, std::move(cancelled));
    dialog->open();
}

}  // namespace quorvane
