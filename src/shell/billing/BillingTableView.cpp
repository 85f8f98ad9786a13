#include "shell/billing/BillingTableView.h"

#include "shell/billing/BillingTableDelegate.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <utility>

namespace quorvane {
namespace {

constexpr int ringInset = 6;

/// The words of the head; the card below paints the ground.
class BillingTableHead : public QHeaderView {
public:
    explicit BillingTableHead(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
        setSectionResizeMode(QHeaderView::Fixed);
        setMinimumSectionSize(0);
        setFixedHeight(BillingTableLayout::headHeight);
        setSectionsClickable(false);
        setHighlightSections(false);
        viewport()->setAutoFillBackground(false);
    }

protected:
    void paintSection(QPainter* painter, const QRect& rectangle, int section) const override {
        const auto column = static_cast<BillingColumn>(section);
        const bool isNumber = column != BillingColumn::project && column != BillingColumn::client;
        const int before = column == BillingColumn::project ? BillingTableLayout::padding : 0;
        const int behind = column == BillingColumn::amount ? BillingTableLayout::padding : 0;
        const QRect place = QStyle::visualRect(layoutDirection(), rectangle, rectangle.adjusted(before, 0, -behind, 0));
        const auto side = QStyle::visualAlignment(layoutDirection(), isNumber ? Qt::AlignRight : Qt::AlignLeft);
        const QString title = model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
        painter->setFont(quorvane::font(TypeRole::label));
        painter->setPen(theme().text2);
        painter->drawText(place, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                          QFontMetrics(painter->font()).elidedText(title, Qt::ElideRight, place.width()));
    }
    void mouseMoveEvent(QMouseEvent* event) override { event->ignore(); }
};

}  // namespace

BillingTableView::BillingTableView(BillingTableDelegate& delegate, QWidget* parent)
    : QTableView(parent), delegate_(delegate) {
    setItemDelegate(&delegate);
    setHorizontalHeader(new BillingTableHead(this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(BillingTableLayout::rowHeight);
    verticalHeader()->setMinimumSectionSize(BillingTableLayout::rowHeight);
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setMouseTracking(true);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAutoScroll(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
}

void BillingTableView::keyPressEvent(QKeyEvent* event) {
    const bool isEdit = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_F2;
    if (!isEdit || !currentIndex().isValid()) return QTableView::keyPressEvent(event);
    edited.send(currentIndex().row());
}

void BillingTableView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (index.isValid() && event->button() == Qt::LeftButton) edited.send(index.row());
}

void BillingTableView::mouseMoveEvent(QMouseEvent* event) {
    QTableView::mouseMoveEvent(event);
    hover(indexAt(event->position().toPoint()).row());
}

void BillingTableView::leaveEvent(QEvent* event) {
    QTableView::leaveEvent(event);
    hover(-1);
}

void BillingTableView::hover(int row) {
    if (std::exchange(hoveredRow_, row) == row) return;
    delegate_.setHoveredRow(row);
    viewport()->update();
}

void BillingTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    viewport()->update();
    if (current.isValid() && hasFocus())
        focused.send(rowRectangle(current.row()).translated(viewport()->geometry().topLeft()));
}

QRect BillingTableView::rowRectangle(int row) const {
    return {0, rowViewportPosition(row), viewport()->width(), rowHeight(row)};
}

void BillingTableView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    const QModelIndex current = currentIndex();
    if (!current.isValid() || !showsFocusRing(*this)) return;
    QPainter painter(viewport());
    const bool isSelected = selectionModel()->isRowSelected(current.row(), {});
    paintFocusRing(painter, rowRectangle(current.row()).adjusted(ringInset, ringInset, -ringInset, -ringInset),
                   Metrics::smallRadius, isSelected ? theme().accSoft : theme().surface);
}

}  // namespace quorvane
