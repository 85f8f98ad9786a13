#include "shell/logs/LogToolBar.h"

#include "shell/logs/LogRowText.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <optional>

namespace quorvane {
namespace {

constexpr int leastBarHeight = 57;  // with the line below
constexpr int barMargin = 16;
constexpr int levelWidth = 132;
constexpr int iconSize = 16;
constexpr int iconStart = 11;
constexpr int textStart = 26;

}  // namespace

LogToolBar::LogToolBar(LogViewerState& state, const Localization& localization, QWidget* parent)
    : QWidget(parent), state_(state), localization_(localization), search_(new QLineEdit),
      follow_(switchBox(qt(localization.text("auto_scroll")))) {
    prepareSearch();
    follow_->setToolTip(qt(localization.text("auto_scroll_help")));
    follow_->setAccessibleDescription(follow_->toolTip());
    follow_->setChecked(state.autoScroll());
    connect(follow_, &QAbstractButton::toggled, this, [this](bool isOn) { state_.setAutoScroll(isOn); });
    subscribe(state.autoScrollChanged, *this, [this] { follow_->setChecked(state_.autoScroll()); });
    auto* const refresh = iconButton(QStringLiteral("refresh"), qt(localization.text("refresh")), "plain");
    auto* const clear = iconButton(QStringLiteral("trash"), qt(localization.text("clear_logs")), "danger");
    auto* const save = pushButton(qt(localization.text("export_diagnostic_report")));
    save->setIcon(icon(QStringLiteral("save")));
    connect(refresh, &QAbstractButton::clicked, this, [this] { refreshPressed.send(); });
    connect(clear, &QAbstractButton::clicked, this, [this] { clearPressed.send(); });
    connect(save, &QAbstractButton::clicked, this, [this] { exportPressed.send(); });

    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(barMargin, 12, barMargin, 13);
    line->setSpacing(8);
    line->addWidget(makeLevels());
    line->addWidget(search_, 1);
    line->addSpacing(8);
    line->addWidget(follow_);
    line->addSpacing(8);
    line->addWidget(refresh);
    line->addWidget(clear);
    line->addWidget(save);
    setMinimumHeight(leastBarHeight);
}

QWidget* LogToolBar::makeLevels() {
    auto* const levels = new QComboBox;
    levels->setMinimumWidth(levelWidth);
    levels->addItem(qt(localization_.text("ui_log_level_all")));
    for (const auto& [level, word] : RawValues<LogLevel>::table)
        levels->addItem(LogRowText::level(level), static_cast<int>(level));
    levels->setAccessibleName(qt(localization_.text("ui_log_level_all")));
    connect(levels, &QComboBox::currentIndexChanged, this, [this, levels] {
        const QVariant chosen = levels->currentData();
        state_.setSelectedLevel(chosen.isValid() ? std::optional(static_cast<LogLevel>(chosen.toInt())) : std::nullopt);
    });
    return levels;
}

void LogToolBar::prepareSearch() {
    search_->setPlaceholderText(qt(localization_.text("search_logs_placeholder")));
    search_->setAccessibleName(search_->placeholderText());
    search_->setClearButtonEnabled(false);
    auto* const inside = new QHBoxLayout(search_);
    inside->setContentsMargins(iconStart, 0, iconStart, 0);
    auto* const icon = new IconView(QStringLiteral("search"), iconSize, &Theme::text2);
    icon->setAttribute(Qt::WA_TransparentForMouseEvents);
    inside->addWidget(icon);
    inside->addStretch(1);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    search_->setTextMargins(isMirrored ? 0 : textStart, 0, isMirrored ? textStart : 0, 0);
    connect(search_, &QLineEdit::textChanged, this,
            [this](const QString& text) { state_.setSearchText(text.toStdString()); });
}

void LogToolBar::focusSearch() {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
}

void LogToolBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme().canvas);
    painter.fillRect(QRect(0, height() - 1, width(), 1), theme().line);
}

}  // namespace quorvane
