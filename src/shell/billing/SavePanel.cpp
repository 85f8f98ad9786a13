#include "shell/billing/SavePanel.h"

#include <QFile>
#include <QFileDialog>
#include <utility>

namespace quorvane::SavePanel {

void open(QWidget& window, const QString& title, const QString& fileName,
          std::function<void(const std::filesystem::path& file)> chosen) {
    auto* const dialog = new QFileDialog(&window, title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilter(QStringLiteral("*.md *.txt"));
    dialog->setDefaultSuffix(QStringLiteral("md"));
    dialog->selectFile(fileName);
    QObject::connect(dialog, &QFileDialog::fileSelected, dialog, [act = std::move(chosen)](const QString& file) {
        act(std::filesystem::path(QFile::encodeName(file).toStdString()));
    });
    dialog->open();
}

}  // namespace quorvane::SavePanel
