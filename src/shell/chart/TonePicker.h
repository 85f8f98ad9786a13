#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"

#include <QRadioButton>
#include <QWidget>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

/// A project's colour to choose: a swatch with a check once it is chosen.
class ToneButton : public QRadioButton {
public:
    ToneButton(std::string_view tone, const QString& name, QWidget* parent = nullptr);
    [[nodiscard]] const std::string& tone() const { return tone_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::string tone_;
};

/// The 16 tones of projects in two rows. One tab stop; arrows move the choice.
class TonePicker : public QWidget {
public:
    explicit TonePicker(const QString& name, const Localization& localization, QWidget* parent = nullptr);

    void setTone(std::string_view tone);  ///< without `chosen`
    Signal<const std::string&> chosen;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    std::vector<ToneButton*> buttons_;
};

}  // namespace quorvane
