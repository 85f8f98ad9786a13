#pragma once

#include <QString>
#include <QWidget>

namespace quorvane {

/// A number of hours in large figures, with its unit.
class TotalHours : public QWidget {
public:
    explicit TotalHours(QWidget* parent = nullptr);
    void setHours(const QString& hours);  ///< "6.8"

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString hours_;
};

}  // namespace quorvane
