#include "shell/chart/DetailsRow.h"

#include "shell/chart/PathText.h"
#include "shell/look/IconView.h"
#include "shell/look/Theme.h"

#include <QGridLayout>

namespace quorvane {
namespace {

constexpr int iconSize = 16;

}  // namespace

DetailsRow::DetailsRow(const QString& iconName, const QString& caption, const QString& copyText, QWidget* parent)
    : QWidget(parent), text_(new PathText(TypeRole::body, &Theme::text, copyText)) {
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(0);
    grid->setColumnStretch(1, 1);
    grid->addWidget(new IconView(iconName, iconSize, &Theme::text2), 0, 0);
    grid->addWidget(new Label(caption, TypeRole::caption, &Theme::text3), 0, 1);
    grid->addWidget(text_, 1, 1);
}

void DetailsRow::setText(const QString& text) {
    text_->setPath(text);
    setVisible(!text.isEmpty());
}

}  // namespace quorvane
