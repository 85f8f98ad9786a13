#pragma once

#include "billing/ExportState.h"
#include "shell/app/AppServices.h"
#include "shell/signals/Keeps.h"

#include <QWidget>

namespace quorvane {

struct ExportPageParts;

/// `ExportView`: which records go into a table, and the way to its file. Its range ends when the page was made, so
/// whoever shows it makes it anew each time.
class ExportPage : private Keeps<ExportPageParts>, public QWidget {
public:
    explicit ExportPage(AppServices& services, QWidget* parent = nullptr);
    ~ExportPage() override;

    /// Asks for a file and writes it. Nothing happens while an export is on its way.
    void exportRecords();
    [[nodiscard]] bool isExporting() const;

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void build();
    [[nodiscard]] QWidget* makeRange();
    void follow();
    void countRecords();
    void tellDone();
};

}  // namespace quorvane
