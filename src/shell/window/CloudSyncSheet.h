#pragma once

class QWidget;

namespace quorvane {

struct AppServices;

namespace CloudSyncSheet {

/// Opens over the window: how the cloud stands, what went wrong, and two ways to sync. Closing it stops nothing.
void open(QWidget& window, AppServices& services);

}  // namespace CloudSyncSheet
}  // namespace quorvane
