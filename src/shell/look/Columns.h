#pragma once

#include <vector>

class QGridLayout;
class QWidget;

namespace quorvane {

/// Places the widgets row by row in so many columns of one width, anew whenever another number of them fits.
void placeInColumns(QGridLayout& grid, const std::vector<QWidget*>& widgets, int columns);

}  // namespace quorvane
