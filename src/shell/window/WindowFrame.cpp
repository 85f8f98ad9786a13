#include "shell/window/WindowFrame.h"

#include <QByteArray>
#include <QWidget>
#include <string_view>

namespace quorvane::WindowFrame {
namespace {

constexpr std::string_view key = "mainWindowFrame";

}  // namespace

void restore(QWidget& window, const platform::UserDefaults& defaults) {
    if (const auto kept = defaults.value(key))
        window.restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(*kept)));
}

void keep(const QWidget& window, platform::UserDefaults& defaults) {
    defaults.setValue(key, window.saveGeometry().toBase64().toStdString());
}

}  // namespace quorvane::WindowFrame
