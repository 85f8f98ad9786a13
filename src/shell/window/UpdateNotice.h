#pragma once

#include <QObject>
#include <functional>
#include <string>

class QWidget;

namespace quorvane {

struct AppServices;

/// Tells over its window what the search for updates has found: a new version, and whatever the user asked for.
class UpdateNotice : public QObject {
public:
    /// Goes with the window. The services outlive it.
    UpdateNotice(QWidget& window, AppServices& services);

    /// What was found while there was no window; later findings show by themselves.
    void show();

private:
    [[nodiscard]] std::function<void()> closing(std::function<void()> act);

    QWidget& window_;
    AppServices& services_;
    bool isShown_ = false;
};

}  // namespace quorvane
