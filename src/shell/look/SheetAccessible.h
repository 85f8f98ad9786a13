#pragma once

namespace quorvane {

class Sheet;

/// A sheet for assistive technology: a modal dialog.
namespace SheetAccessible {
/// Makes the interface known; nothing happens when it is called again.
void install();
/// The dialog has opened, or is closing.
void announce(Sheet& sheet, bool isOpening);
}  // namespace SheetAccessible

}  // namespace quorvane
