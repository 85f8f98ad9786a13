#include "shell/export/ExportFoot.h"

#include "shell/look/Boxes.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QProgressBar>

namespace quorvane {
namespace {

constexpr int leastWidthForOneRow = 640;

/// A sentence behind its icon.
QBoxLayout* note(const char* iconName, int iconSize, const std::string& words, QColor Theme::*ink) {
    auto* const line = lineBox(iconSize == 18 ? 13 : 8);
    line->addWidget(new IconView(QString::fromLatin1(iconName), iconSize, ink == &Theme::text ? &Theme::text2 : ink), 0,
                    Qt::AlignTop);
    auto* const text = new Label(qt(words), TypeRole::body, ink);
    text->setWordWrap(true);
    line->addWidget(text, 1);
    return line;
}

}  // namespace

ExportFoot::ExportFoot(const Localization& localization, QWidget* parent)
    : Card(parent), localization_(localization), line_(lineBox(Metrics::cardGap, this)),
      button_(pushButton(qt(localization.text("export_csv")), "primary large")),
      caption_(new Label({}, TypeRole::labelPlain, &Theme::text2)), progress_(new QProgressBar) {
    progress_->setAccessibleName(qt(localization.text("export_csv")));
    progress_->setTextVisible(false);
    progress_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    button_->setIcon(icon(QStringLiteral("table")));
    connect(button_, &QAbstractButton::clicked, this, [this] { pressed.send(); });
    auto* const action = columnBox(6);
    action->addWidget(button_, 0, Qt::AlignRight);
    action->addWidget(progress_);
    action->addWidget(caption_, 0, Qt::AlignRight);
    progress_->hide();
    line_->setContentsMargins(Metrics::cardPadding + 2, Metrics::cardPadding, Metrics::cardPadding,
                              Metrics::cardPadding);
    line_->addWidget(makeNotes(), 1, Qt::AlignTop);
    line_->addLayout(action);
}

QWidget* ExportFoot::makeNotes() const {
    auto* const notes = new QWidget;
    auto* const column = columnBox(6, notes);
    column->addLayout(note("table", 18, localization_.text("export_csv_fields_hint"), &Theme::text));
    auto* const sensitive = note("lock", 16, localization_.text("export_sensitive_hint"), &Theme::warn);
    sensitive->setContentsMargins(31, 0, 0, 0);
    column->addLayout(sensitive);
    return notes;
}

void ExportFoot::setRecordCount(std::size_t count) {
    count_ = count;
    showCount(count);
}

void ExportFoot::showCount(std::size_t count) {
    const auto words = localization_.text("ui_export_record_count", count);
    caption_->setText(qt(words) + QStringLiteral(" · ") + isolated(QStringLiteral("Quorvane_Activities_….csv")));
}

void ExportFoot::setWriting(bool isWriting) {
    if (isWriting) {
        hadFocus_ = button_->hasFocus();
    } else {
        progress_->hide();
        showCount(count_);
    }
    button_->setEnabled(!isWriting);
    if (!isWriting && hadFocus_) button_->setFocus();
}

void ExportFoot::setProgress(std::size_t written) {
    if (written >= count_) return;
    progress_->setMaximum(static_cast<int>(count_));
    progress_->setValue(static_cast<int>(written));
    progress_->show();
    showCount(written);
}

void ExportFoot::resizeEvent(QResizeEvent* event) {
    Card::resizeEvent(event);
    line_->setDirection(width() < leastWidthForOneRow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

}  // namespace quorvane
