#pragma once

class QWidget;

namespace quorvane {

struct AppServices;

namespace AboutSheet {

/// Opens over the window: mark, name, version, what the program is for, where updates come from, and the way to the
/// licences of what it is built with.
void open(QWidget& window, AppServices& services);

}  // namespace AboutSheet
}  // namespace quorvane
