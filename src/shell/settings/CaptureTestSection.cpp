#include "shell/settings/CaptureTestSection.h"

#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"
#include "shell/settings/SettingsSection.h"
#include "shell/signals/Subscribe.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvane {

using CaptureTest = PermissionRows::CaptureTest;

CaptureTestSection::CaptureTestSection(PermissionRows& permissions, const Localization& localization, QWidget* parent)
    : QWidget(parent), permissions_(permissions),
      localization_(localization), browser_{CaptureTest::browserURL,
                                            pushButton(qt(localization.text("ui_capture_test_browser"))),
                                            new Label({}, TypeRole::body, &Theme::text)},
      document_{CaptureTest::documentPath, pushButton(qt(localization.text("ui_capture_test_document"))),
                new Label({}, TypeRole::body, &Theme::text)} {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const section = new SettingsSection(qt(localization.text("ui_capture_test_title")));
    column->addWidget(section);
    auto* const help = new Label(qt(localization.text("ui_capture_test_help")), TypeRole::labelPlain, &Theme::text2);
    help->setWordWrap(true);
    section->addRow(help);
    section->addRow(makeLine(browser_));
    section->addRow(makeLine(document_));
    subscribe(permissions_.changed, *this, [this] {
        refresh(browser_);
        refresh(document_);
    });
}

QWidget* CaptureTestSection::makeLine(Line& line) {
    setKind(*line.button, "small", true);
    line.result->setWordWrap(true);
    line.result->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto policy = line.result->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    line.result->setSizePolicy(policy);
    line.result->hide();  // an empty line says nothing, and yet a screen reader would stop there
    connect(line.button, &QAbstractButton::clicked, this, [this, test = line.test] { permissions_.run(test); });
    auto* const row = new QWidget;
    auto* const box = new QHBoxLayout(row);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(12);
    box->addWidget(line.button, 0, Qt::AlignTop);
    box->addWidget(line.result, 1);
    return row;
}

void CaptureTestSection::refresh(const Line& line) {
    const PermissionRows::TestState& state = permissions_.test(line.test);
    const QString shown =
        qt(state.isRunning ? localization_.text("ui_capture_test_waiting") : permissions_.resultText(line.test));
    const bool isFailure = state.result && !state.result->success();
    line.result->setColor(isFailure ? &Theme::warn : &Theme::text);
    if (line.result->text() == shown) return;
    line.result->setText(shown);
    line.result->setVisible(!shown.isEmpty());
    QAccessibleEvent event(line.result, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

}  // namespace quorvane
