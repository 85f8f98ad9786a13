#include "shell/billing/BillingTable.h"

#include "shell/billing/BillingTableDelegate.h"
#include "shell/billing/BillingTableView.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <optional>

namespace quorvane {

BillingTable::BillingTable(const Localization& localization, QWidget* parent)
    : Card(parent), model_(new BillingTableModel(localization, this)),
      delegate_(new BillingTableDelegate(*model_, this)), view_(new BillingTableView(*delegate_, this)) {
    setAccessibleName(qt(localization.text("ui_projects")));
    view_->setAccessibleName(accessibleName());
    view_->setAccessibleDescription(qt(localization.text("billing_double_click_hint")));
    view_->setModel(model_);
    setFocusProxy(view_);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    subscribe(view_->edited, *this,
              [this](int row) { edited.send(Uuid(model_->rows()[static_cast<std::size_t>(row)].id)); });
    subscribe(view_->focused, *this, [this](QRect row) { focused.send(row.translated(view_->pos())); });
}

void BillingTable::setRows(const std::vector<BillingTableRow>& rows) {
    const int before = view_->currentIndex().row();
    const auto chosen = before < 0 ? std::nullopt : std::optional(model_->rows()[static_cast<std::size_t>(before)].id);
    if (!model_->setRows(rows)) return;
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const BillingTableRow& row) { return row.id == chosen; });
    if (chosen && found != rows.end()) view_->selectRow(static_cast<int>(found - rows.begin()));
    setFixedHeight(2 + BillingTableLayout::headHeight + BillingTableLayout::rowHeight * static_cast<int>(rows.size()));
    applyLayout();
}

void BillingTable::resizeEvent(QResizeEvent* event) {
    Card::resizeEvent(event);
    applyLayout();
}

void BillingTable::applyLayout() {
    view_->setGeometry(rect().adjusted(1, 1, -1, -1));
    const auto layout = billingTableLayout(view_->width());
    delegate_->setLayout(layout);
    for (int column = 0; column < billingColumns; ++column) {
        const int width = layout.widths[static_cast<std::size_t>(column)];
        view_->setColumnHidden(column, width == 0);
        if (width > 0) view_->setColumnWidth(column, width);
    }
}

void BillingTable::paintEvent(QPaintEvent* event) {
    Card::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath card;
    const double radius = Metrics::cardRadius - 1;
    card.addRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
    QPainterPath head;
    head.addRect(QRectF(1, 1, width() - 2, BillingTableLayout::headHeight - 1));
    painter.fillPath(card.intersected(head), theme().sunken);
    painter.fillRect(QRect(1, BillingTableLayout::headHeight, width() - 2, 1), theme().line);
}

}  // namespace quorvane
