#pragma once

#include "l10n/Localization.h"
#include "shell/state/ProjectBillingEditor.h"

#include <QWidget>

class QAbstractSpinBox;

namespace quorvane {

class IconView;
class Label;

/// The field of a project's hourly rate. What is typed goes into the project as soon as it is a number; until then an
/// error stands below. Up and Down step by whole units.
class RateField : public QWidget {
public:
    RateField(ProjectBillingEditor& editor, const Localization& localization, QWidget* parent = nullptr);

private:
    void showError();

    ProjectBillingEditor& editor_;
    QString error_;
    QAbstractSpinBox* field_;
    IconView* icon_;
    Label* message_;
};

}  // namespace quorvane
