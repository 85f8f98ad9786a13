#include "shell/app/MainWindows.h"

namespace quorvane {

MainWindows::~MainWindows() {
    close();
}

void MainWindows::show(std::unique_ptr<QWidget> window) {
    close();
    window->setAttribute(Qt::WA_DeleteOnClose);
    hints_.watch(*window);
    QObject::connect(window.get(), &QObject::destroyed, &hints_, [this] { closed.send(); });
    window_ = window.release();
    window_->show();
    activateIgnoringOtherApps();
}

void MainWindows::close() {
    delete window_.data();
}

ApplicationPresence::ActivationPolicy MainWindows::activationPolicy() const {
    return hints_.skipTaskbar() ? ActivationPolicy::accessory : ActivationPolicy::regular;
}

void MainWindows::setActivationPolicy(ActivationPolicy policy) {
    hints_.setSkipTaskbar(policy == ActivationPolicy::accessory);
}

void MainWindows::activateIgnoringOtherApps() {
    if (!window_ || !window_->isVisible()) return;
    window_->raise();
    window_->activateWindow();
}

bool MainWindows::hasVisibleWindows() const {
    return window_ && window_->isVisible() && !window_->isMinimized();
}

bool MainWindows::makeKeyAndOrderFront() {
    // One that is hidden has been closed, and is about to be deleted.
    if (window_ && !window_->isVisible()) close();
    if (!window_) return false;
    window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
    window_->show();
    activateIgnoringOtherApps();
    return true;
}

}  // namespace quorvane
