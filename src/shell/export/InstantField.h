#pragma once

#include "base/Date.h"
#include "base/Signal.h"
#include "l10n/Localization.h"

#include <QWidget>
#include <string>

class QDateEdit;
class QTimeEdit;

namespace quorvane {

/// A date and a time of day, in the local time zone, below their common name. What an instant has below a minute stays
/// as it is when another date or minute is chosen.
class InstantField : public QWidget {
public:
    InstantField(const std::string& name, const Localization& localization, QWidget* parent = nullptr);

    void setInstant(Date instant);  ///< without `chosen`
    /// The user has chosen another one.
    Signal<Date> chosen;

private:
    void choose();

    QDateEdit* date_;
    QTimeEdit* time_;
};

}  // namespace quorvane
