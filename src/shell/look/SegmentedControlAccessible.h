#pragma once

namespace quorvane {

class SegmentedControl;

/// A segmented control for assistive technology: a list of radio buttons.
namespace SegmentedControlAccessible {
/// Makes the interface known; nothing happens when it is called again.
void install();
/// Another segment is the current one.
void announceCurrent(SegmentedControl& control);
}  // namespace SegmentedControlAccessible

}  // namespace quorvane
