#pragma once

#include "diagnostics/AppLogger.h"
#include "l10n/Localization.h"

#include <QWidget>
#include <memory>

namespace quorvane {

/// The log in a window of its own. Whoever opens it shows it, and deletes it when it has been closed; what it is made
/// on outlives it. While it is hidden it follows nothing.
class LogViewerWindow : public QWidget {
public:
    LogViewerWindow(AppLogger& logger, const Localization& localization, QWidget* parent = nullptr);
    ~LogViewerWindow() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
