#pragma once

#include <QFont>

namespace quorvane {

/// The font, as much smaller as a number needs to stand in the width: half an amount would be another amount.
[[nodiscard]] QFont fittingFont(QFont font, const QString& number, double width);

}  // namespace quorvane
