#pragma once

#include "l10n/Localization.h"
#include "shell/state/PermissionRows.h"

#include <QWidget>

class QPushButton;

namespace quorvane {

class Label;

/// Reads a web address or a document from the application that the user brings to the front, and shows what came.
class CaptureTestSection : public QWidget {
public:
    CaptureTestSection(PermissionRows& permissions, const Localization& localization, QWidget* parent = nullptr);

private:
    struct Line {
        PermissionRows::CaptureTest test;
        QPushButton* button;
        Label* result;
    };
    QWidget* makeLine(Line& line);
    void refresh(const Line& line);

    PermissionRows& permissions_;
    const Localization& localization_;
    Line browser_;
    Line document_;
};

}  // namespace quorvane
