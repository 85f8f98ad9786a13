#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "shell/state/AppCategoryManagementView.h"

#include <QWidget>

class QPushButton;

namespace quorvane {

/// An application with what is remembered for it.
class AppPreferenceRow : public QWidget {
public:
    AppPreferenceRow(const AppCategoryManagementView::Row& row, const Localization& localization,
                     QWidget* parent = nullptr);
    void focusDelete();

    Signal<> editWanted;
    Signal<> deleteWanted;

private:
    QPushButton* delete_;
};

}  // namespace quorvane
