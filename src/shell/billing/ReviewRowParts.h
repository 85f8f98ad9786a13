#pragma once

#include "l10n/Localization.h"
#include "store/BillingStatus.h"

#include <QString>
#include <Qt>
#include <optional>
#include <string>

class QPainter;
class QRect;

namespace quorvane {

class Project;

/// How the fields and buttons of the review queue look, whether they are there or only painted.
namespace ReviewRowParts {

/// What stands before the text of a field: a project's square or a status's dot, else nothing.
struct Mark {
    std::optional<std::string> projectColor;  ///< the name of a tone
    std::optional<BillingStatus> status;
};
[[nodiscard]] Mark markOf(const Project& project);
void paintMark(QPainter& painter, const QRect& rectangle, const Mark& mark);

enum class Press { none, hovered, down };

struct Field {
    QString text;
    Mark mark;
    bool isSet = true;  ///< else its text is a quiet "not set"
    bool isActive = false;
};
[[nodiscard]] Field projectField(const Project* project, const Localization& localization);  ///< null for none
[[nodiscard]] Field statusField(BillingStatus status, const Localization& localization);
void paintField(QPainter& painter, const QRect& rectangle, const Field& field, Qt::LayoutDirection direction);

struct StatusButton {
    QString text;
    BillingStatus status = BillingStatus::billable;  ///< that it gives, `billable` or `excluded`
    bool isChosen = false;                           ///< the record has it
    Press press = Press::none;
};
void paintButton(QPainter& painter, const QRect& rectangle, const StatusButton& button, Qt::LayoutDirection direction);

}  // namespace ReviewRowParts
}  // namespace quorvane
