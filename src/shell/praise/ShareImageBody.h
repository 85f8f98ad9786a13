#pragma once

#include <QWidget>

class QBoxLayout;

namespace quorvane {

/// The card beside the choices, or above them where there is too little width for both.
class ShareImageBody : public QWidget {
public:
    ShareImageBody(QWidget& preview, QWidget& choices, QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget& preview_;
    QWidget& choices_;
    QBoxLayout* layout_;
};

}  // namespace quorvane
