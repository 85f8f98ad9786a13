#include "shell/window/WindowFrame.h"

#include <QEvent>
#include <QWidget>
#include <string_view>

namespace quorvane {
namespace {

constexpr std::string_view frameKey = "mainWindowFrame";
constexpr Seconds calm = 0.5s;

}  // namespace

WindowFrame::WindowFrame(QWidget& window, platform::UserDefaults& defaults, platform::RunLoop& runLoop)
    : QObject(&window), window_(window), defaults_(defaults), runLoop_(runLoop) {
    if (const auto kept = defaults_.value(frameKey))
        window_.restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(*kept)));
    window_.installEventFilter(this);
}

void WindowFrame::keep() {
    soon_.reset();
    defaults_.setValue(frameKey, window_.saveGeometry().toBase64().toStdString());
}

bool WindowFrame::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    const bool isChange = type == QEvent::Move || type == QEvent::Resize || type == QEvent::WindowStateChange;
    if (isChange && window_.isVisible()) soon_ = runLoop_.after(calm, [this] { keep(); });
    if (type == QEvent::Hide && !event->spontaneous()) keep();
    return QObject::eventFilter(watched, event);
}

}  // namespace quorvane
