#pragma once

class QAbstractButton;

namespace quorvane {

/// Painted buttons that are on or off, for assistive technology: `Switch` and `ChoiceChip` as check boxes, chips of an
/// exclusive group as radio buttons.
namespace CheckableAccessible {
/// Makes the interface known; nothing happens when it is called again.
void install();
/// From now on the button tells when it changes.
void announceToggles(QAbstractButton& button);
}  // namespace CheckableAccessible

}  // namespace quorvane
