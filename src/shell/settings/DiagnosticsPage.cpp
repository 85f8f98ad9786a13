#include "shell/settings/DiagnosticsPage.h"

#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QAccessible>

namespace quorvane {

using CaptureTest = PermissionRows::CaptureTest;

DiagnosticsPage::DiagnosticsPage(AppServices& services, PermissionRows& permissions, QWidget* log)
    : SettingsPage(services.localization), permissions_(permissions) {
    if (services.setPerformanceReportsEnabled) addReports(services);
    if (log != nullptr) add(log);
    addPermissions();
    addTests();
    subscribe(permissions_.changed, *this, [this] { refresh(); });
    refresh();
}

void DiagnosticsPage::addReports(AppServices& services) {
    auto* const box = switchBox({});
    box->setChecked(services.performanceReports.isEnabled());
    connect(box, &QAbstractButton::clicked, this,
            [&services](bool isOn) { services.setPerformanceReportsEnabled(isOn); });
    addSection("perf_reports_section_title").addRow("perf_reports_toggle", box)->setHelp(text("perf_reports_help"));
}

void DiagnosticsPage::addPermissions() {
    auto& section = addSection("permission_status");
    for (const PermissionRows::Row& row : permissions_.rows()) {
        auto* const line = new StateRow;
        connect(&line->button(), &QAbstractButton::clicked, this,
                [this, permission = row.permission] { permissions_.grant(permission); });
        section.addRow(line);
        rows_.push_back(line);
    }
    again_ = pushButton(text("refresh_permission_status"), "small");
    again_->setIcon(icon(QStringLiteral("refresh")));
    connect(again_, &QAbstractButton::clicked, this, [this] { permissions_.refresh(); });
    section.addRow(again_, Qt::AlignLeft);
}

void DiagnosticsPage::addTests() {
    auto& section = addSection("ui_capture_test_title");
    auto* const help = new Label(text("ui_capture_test_help"), TypeRole::labelPlain, &Theme::text2);
    help->setWordWrap(true);
    section.addRow(help);
    addTest(section, CaptureTest::browserURL, "ui_capture_test_browser");
    addTest(section, CaptureTest::documentPath, "ui_capture_test_document");
}

void DiagnosticsPage::addTest(SettingsSection& section, CaptureTest test, MessageKey<> title) {
    auto* const button = pushButton(text(title), "small");
    connect(button, &QAbstractButton::clicked, this, [this, test] { permissions_.run(test); });
    auto* const result = new Label({}, TypeRole::body, &Theme::text);
    result->setWordWrap(true);
    result->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto policy = result->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    result->setSizePolicy(policy);
    result->hide();  // an empty line says nothing, and yet a screen reader would stop there
    auto* const row = new QWidget;
    auto* const line = lineBox(12, row);
    line->addWidget(button, 0, Qt::AlignTop);
    line->addWidget(result, 1);
    section.addRow(row);
    results_.emplace_back(test, result);
}

void DiagnosticsPage::refresh() {
    const auto rows = permissions_.rows();
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const PermissionRows::Row& row = rows.at(index);
        rows_[index]->setState(
            {.title = qt(row.title),
             .help = qt(row.help),
             .iconName = row.isGranted ? QStringLiteral("check-circle") : QStringLiteral("close-circle"),
             .tone = row.isGranted ? Tone::ok : Tone::warn,
             .word = qt(row.state),
             .mend = qt(row.grantText)});
    }
    again_->setEnabled(!permissions_.isChecking() || again_->hasFocus());  // a focused button stays where it is
    for (const auto& [test, result] : results_)
        showResult(test, *result);
}

void DiagnosticsPage::showResult(CaptureTest test, Label& result) {
    const PermissionRows::TestState& state = permissions_.test(test);
    const QString shown = state.isRunning ? text("ui_capture_test_waiting") : qt(permissions_.resultText(test));
    result.setColor(state.result && !state.result->success() ? &Theme::warn : &Theme::text);
    if (result.text() == shown) return;
    result.setText(shown);
    result.setVisible(!shown.isEmpty());
    QAccessibleEvent event(&result, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

}  // namespace quorvane
