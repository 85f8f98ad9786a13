#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "timeline/ProcessedActivityItem.h"

#include <QTimer>
#include <QWidget>
#include <optional>
#include <string>

class QPushButton;

namespace quorvane {

class FlowLayout;

/// Category and tags of an activity as chips, and the button that opens their choice.
class CategoryLine : public QWidget {
public:
    explicit CategoryLine(const Localization& localization, QWidget* parent = nullptr);

    /// `tags` are joined by ",".
    void setChoice(const std::optional<std::string>& category, const std::string& tags);
    /// A check-circle takes the pencil's place for 2 s.
    void showMarkingSuccess();

    Signal<> editWanted;

private:
    const Localization& localization_;
    FlowLayout* chips_;
    QPushButton* edit_;
    QTimer success_;  ///< runs while the check-circle shows
};

}  // namespace quorvane
