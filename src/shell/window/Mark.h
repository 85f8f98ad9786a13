#pragma once

#include <QWidget>

namespace quorvane {

/// The program's mark, square. Decoration: it has no name for assistive technology.
class Mark : public QWidget {
public:
    explicit Mark(int size, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvane
