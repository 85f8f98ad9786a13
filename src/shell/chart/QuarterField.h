#pragma once

#include <QSpinBox>

namespace quorvane {

/// A time of a day as minutes from midnight, 0 to 1440, so that the day's end is "24:00". Its steps lead from quarter
/// to quarter of an hour; any minute can be typed. `valueChanged` is sent for a step and once something typed is whole.
class QuarterField : public QSpinBox {
public:
    explicit QuarterField(const QString& name, QWidget* parent = nullptr);

    void stepBy(int steps) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;  ///< room for the time alone

protected:
    [[nodiscard]] QString textFromValue(int minutes) const override;
    [[nodiscard]] int valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& position) const override;
};

}  // namespace quorvane
