#include "shell/logs/LogStatusLine.h"

#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPainter>

namespace quorvane {
namespace {

constexpr int leastLineHeight = 34;
constexpr int margin = 16;

}  // namespace

LogStatusLine::LogStatusLine(const Localization& localization, QWidget* parent)
    : QWidget(parent), caption_(new Label({}, TypeRole::labelPlain, &Theme::text2)),
      filtered_(new Label(qt(localization.text("log_filtered_caption")), TypeRole::label, &Theme::accent)) {
    auto* const note = new Label(qt(localization.text("log_privacy_help")), TypeRole::labelPlain, &Theme::text3);
    note->setElided(true);
    note->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(margin, 1, margin, 0);
    line->setSpacing(8);
    line->addWidget(caption_);
    line->addWidget(filtered_);
    line->addStretch(1);
    line->addWidget(new IconView(QStringLiteral("lock"), 14, &Theme::text2));
    line->addWidget(note);
    setMinimumHeight(leastLineHeight);
}

void LogStatusLine::setStatus(const QString& caption, bool isNarrowed) {
    filtered_->setVisible(isNarrowed);
    if (caption == caption_->text()) return;
    caption_->setText(caption);
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(caption_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void LogStatusLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme().canvas);
    painter.fillRect(QRect(0, 0, width(), 1), theme().line);
}

}  // namespace quorvane
