#pragma once

#include <QObject>

class QWidget;

namespace quorvane {

/// Keeps windows out of taskbar and pager, or in them. Works under X11; elsewhere a window stays where the desktop puts
/// it. Main thread only.
class WindowHints final : public QObject {
public:
    /// Follows a window for as long as both live.
    void watch(QWidget& window);

    [[nodiscard]] bool skipTaskbar() const { return skipTaskbar_; }
    void setSkipTaskbar(bool skip);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void tellWindowManager(const QWidget& window) const;

    QList<QWidget*> windows_;
    bool skipTaskbar_ = false;
};

}  // namespace quorvane
