#pragma once

#include "platform/RunLoop.h"
#include "platform/UserDefaults.h"

#include <QObject>
#include <memory>

class QWidget;

namespace quorvane {

/// Keeps where a window stands and how large it is, across restarts and however it ends: when it is hidden, and while
/// it is shown soon after each change. What was kept is used if enough of it is on a screen that is there.
class WindowFrame : public QObject {
public:
    /// Goes with the window.
    WindowFrame(QWidget& window, platform::UserDefaults& defaults, platform::RunLoop& runLoop);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keep();

    QWidget& window_;
    platform::UserDefaults& defaults_;
    platform::RunLoop& runLoop_;
    std::unique_ptr<platform::WorkItem> soon_;  ///< one for all changes of a drag
};

}  // namespace quorvane
