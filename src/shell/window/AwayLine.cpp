#include "shell/window/AwayLine.h"

#include "base/DateText.h"
#include "base/TimeText.h"
#include "shell/look/AccessibleRole.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

namespace quorvane {

AwayLine::AwayLine(AbsenceOffer& offer, const Localization& localization, QWidget* parent)
    : Card(parent), offer_(offer), localization_(localization), title_(new Label({}, TypeRole::label, &Theme::text)),
      text_(new Label({}, TypeRole::caption, &Theme::text2)),
      leave_(pushButton(qt(localization.text("gap_leave_empty")))) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(Metrics::cardPadding, 12, 12, 14);
    column->setSpacing(10);
    auto* const head = new QHBoxLayout;
    head->setSpacing(10);
    head->addWidget(new IconView(QStringLiteral("moon"), 18, &Theme::text2), 0, Qt::AlignTop);
    auto* const words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(title_);
    words->addWidget(text_);
    text_->setWordWrap(true);
    head->addLayout(words, 1);
    auto* const close = iconButton(QStringLiteral("close"), qt(localization.text("close")), "ghost small");
    head->addWidget(close, 0, Qt::AlignTop);
    column->addLayout(head);
    auto* const answers = new QHBoxLayout;
    answers->setSpacing(8);
    auto* const assign = pushButton(qt(localization.text("gap_assign")), "primary");
    answers->addStretch(1);
    answers->addWidget(leave_);
    answers->addWidget(assign);
    column->addLayout(answers);
    for (QPushButton* const button : {leave_, assign, close}) {
        setKind(*button, "small", true);
        button->setFocusPolicy(Qt::TabFocus);  // a click leaves the focus where it was
    }
    connect(assign, &QAbstractButton::clicked, this, [this] { offer_.assign(); });
    connect(leave_, &QAbstractButton::clicked, this, [this] { offer_.leaveEmpty(); });
    connect(close, &QAbstractButton::clicked, this, [this] { offer_.dismiss(); });
}

bool AwayLine::refresh() {
    const auto content = offer_.content();
    if (content == shown_) return content.has_value();
    shown_ = content;
    if (!content) return false;
    const auto clock = [](Date date) { return localDateText(date, "HH:mm"); };
    const std::string length = lengthText(content->time.end - content->time.start);
    title_->setText(qt(localization_.text("gap_title", clock(content->time.start), clock(content->time.end))));
    text_->setText(qt(content->isLeftEmpty ? localization_.text("gap_left_empty", length)
                      : content->isReturn  ? localization_.text("gap_was_it_work", length)
                                           : localization_.text("gap_not_counted", length)));
    leave_->setVisible(!content->isLeftEmpty);
    setAccessibleRole(*this, QAccessible::Grouping, title_->text());
    return true;
}

void AwayLine::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return offer_.dismiss();
    Card::keyPressEvent(event);
}

}  // namespace quorvane
