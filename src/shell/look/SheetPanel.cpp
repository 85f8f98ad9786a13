#include "shell/look/SheetPanel.h"

#include "l10n/Localization.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int margin = 25;  // 24 and the edge
constexpr int narrowestAction = 80;

QString closeText() {
    return qt(Localization::fromEnvironment().text("close"));
}

}  // namespace

SheetPanel::SheetPanel(const QString& title, QWidget* parent)
    : QWidget(parent), head_(new QWidget), headLine_(new QHBoxLayout(head_)),
      title_(new Label(title, TypeRole::title, &Theme::text)),
      subtitle_(new Label(QString(), TypeRole::body, &Theme::text2)),
      close_(iconButton(QStringLiteral("close"), closeText())), scroll_(new QScrollArea), bodyWidget_(new QWidget),
      bodyLayout_(new QVBoxLayout(bodyWidget_)), footSeparator_(new Separator), foot_(new QWidget),
      footStart_(new QHBoxLayout), footEnd_(new QHBoxLayout) {
    title_->setElided(true);
    subtitle_->setElided(true);
    subtitle_->hide();
    auto* words = new QVBoxLayout;
    words->setSpacing(1);
    words->addWidget(title_);
    words->addWidget(subtitle_);
    headLine_->setContentsMargins(margin, 17, 17, 16);
    headLine_->setSpacing(12);
    headLine_->addLayout(words, 1);
    headLine_->addWidget(close_);

    bodyLayout_->setContentsMargins(margin, 4, margin, 20);
    bodyLayout_->setSpacing(12);
    bodyWidget_->setObjectName(QStringLiteral("scrolled"));
    scroll_->setWidget(bodyWidget_);
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->viewport()->setAutoFillBackground(false);
    bodyWidget_->setAutoFillBackground(false);

    footStart_->setSpacing(8);
    footEnd_->setSpacing(8);
    auto* footLine = new QHBoxLayout(foot_);
    footLine->setContentsMargins(margin, 12, margin, 12);
    footLine->setSpacing(8);
    footLine->addLayout(footStart_, 1);
    footLine->addLayout(footEnd_);
    footLine->setAlignment(footEnd_, Qt::AlignRight);  // also where nothing stands at the start
    foot_->hide();
    footSeparator_->hide();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(head_);
    column->addWidget(scroll_, 1);
    column->addWidget(footSeparator_);
    column->addWidget(foot_);
}

void SheetPanel::setSubtitle(const QString& subtitle) {
    subtitle_->setText(subtitle);
    subtitle_->setVisible(!subtitle.isEmpty());
}

void SheetPanel::addToHead(QWidget* widget) {
    headLine_->insertWidget(headLine_->count() - 1, widget);
}

void SheetPanel::addToFootStart(QWidget* widget) {
    footStart_->addWidget(widget);
    foot_->show();
    footSeparator_->show();
}

void SheetPanel::addAction(QPushButton* button) {
    foot_->show();
    if (footStack_ != nullptr) {
        setKind(*button, "large", true);
        footStack_->addWidget(button);
        return;
    }
    footSeparator_->show();
    button->setMinimumWidth(std::max(narrowestAction, button->sizeHint().width()));
    footEnd_->addWidget(button);
}

void SheetPanel::stackActions() {
    if (footStack_ != nullptr) return;
    footSeparator_->hide();
    delete foot_->layout();
    footStart_ = footEnd_ = nullptr;
    footStack_ = new QVBoxLayout(foot_);
    footStack_->setContentsMargins(margin, 0, margin, margin);
    footStack_->setSpacing(8);
}

void SheetPanel::hideHead() {
    head_->hide();
    bodyLayout_->setContentsMargins(margin, margin, margin, 20);
}

void SheetPanel::setTabs(QWidget* tabs) {
    constexpr int gap = 9;  // between title and tabs
    tabs_ = tabs;
    head_->layout()->setContentsMargins(margin, 17, 17, gap);
    auto* line = new QHBoxLayout;
    line->setContentsMargins(margin, 0, margin, 0);
    line->addWidget(tabs);
    static_cast<QVBoxLayout*>(layout())->insertLayout(1, line);
    static_cast<QVBoxLayout*>(layout())->insertWidget(2, new Separator);
    bodyLayout_->setContentsMargins(margin, 17, margin, 20);
}

void SheetPanel::scrollToTop() {
    scroll_->verticalScrollBar()->setValue(0);
}

int SheetPanel::naturalHeight(int width) const {
    const auto heightOf = [width](const QWidget& part) {
        if (part.isHidden()) return 0;
        const QLayout* layout = part.layout();
        if (layout == nullptr) return part.minimumHeight();
        return layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : layout->totalSizeHint().height();
    };
    const int tabsHeight = tabs_ == nullptr ? 0 : tabs_->sizeHint().height() + 1;
    return tabsHeight + heightOf(*head_) + heightOf(*bodyWidget_) + heightOf(*footSeparator_) + heightOf(*foot_);
}

void SheetPanel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    // In the dark, where a shadow hardly shows, an edge says where the panel ends.
    const Theme& t = theme();
    paintPanel(painter, rect(), Metrics::sheetRadius, t.surface, t.isDark || t.isHighContrast ? t.line : QColor());
    if (tabs_ == nullptr) return;
    const int edge = t.isDark || t.isHighContrast ? 1 : 0;
    painter.fillRect(scroll_->geometry().adjusted(edge, 0, -edge, 0), t.canvas);
}

}  // namespace quorvane
