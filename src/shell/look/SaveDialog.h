#pragma once

#include <QString>
#include <filesystem>
#include <functional>

class QWidget;

namespace quorvane::SaveDialog {

struct Content {
    QString title;
    QString fileName;  ///< proposed, with its ending
    QString mimeType;  ///< "text/csv"
};

/// Asks for a file to write to, in the desktop's own dialog where there is one, and returns at once. Exactly one of the
/// two is called later, unless `parent` goes before; `cancelled` may be empty.
void open(QWidget& parent, const Content& content, std::function<void(const std::filesystem::path&)> chosen,
          std::function<void()> cancelled = {});

}  // namespace quorvane::SaveDialog
