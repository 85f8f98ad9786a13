#pragma once

#include "l10n/Localization.h"
#include "shell/state/PermissionRows.h"

#include <QWidget>
#include <vector>

class QPushButton;

namespace quorvane {

class IconView;
class Label;

/// The three permissions, each with its state and a way to grant it.
class PermissionSection : public QWidget {
public:
    PermissionSection(PermissionRows& permissions, const Localization& localization, QWidget* parent = nullptr);

private:
    struct Line {
        IconView* icon = nullptr;
        Label* state = nullptr;
        QPushButton* grant = nullptr;
    };
    QWidget* addLine(const PermissionRows::Row& row);
    void refresh();

    PermissionRows& permissions_;
    std::vector<Line> lines_;
    QPushButton* again_;
};

}  // namespace quorvane
