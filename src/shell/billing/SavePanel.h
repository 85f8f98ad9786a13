#pragma once

#include <QString>
#include <filesystem>
#include <functional>

class QWidget;

namespace quorvane::SavePanel {

/// Asks with the desktop's own chooser where a text should go, and returns at once; `chosen` follows when a file was
/// named.
void open(QWidget& window, const QString& title, const QString& fileName,
          std::function<void(const std::filesystem::path& file)> chosen);

}  // namespace quorvane::SavePanel
