#include "shell/look/Columns.h"

#include <QGridLayout>
#include <algorithm>

namespace quorvane {

void placeInColumns(QGridLayout& grid, const std::vector<QWidget*>& widgets, int columns) {
    for (int column = 0; column < std::max(columns, grid.columnCount()); ++column)
        grid.setColumnStretch(column, column < columns ? 1 : 0);
    int place = 0;
    for (QWidget* const widget : widgets) {
        grid.addWidget(widget, place / columns, place % columns);
        ++place;
    }
}

}  // namespace quorvane
