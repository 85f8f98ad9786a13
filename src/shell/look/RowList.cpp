#include "shell/look/RowList.h"

#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvane {
namespace {

constexpr int gap = 8;
constexpr int columnGap = 28;
constexpr int pressablePadding = 10;
constexpr int plusSize = 16;
constexpr int barHeight = 4;
constexpr int lineGap = 5;  // above a bar
constexpr int shareWidth = 46;

/// Paints into a row that is described from left to right, and stands mirrored where the layout is.
class RowPainter {
public:
    RowPainter(QPainter& painter, const QRect& row, Qt::LayoutDirection direction)
        : painter_(painter), row_(row), direction_(direction) {}

    [[nodiscard]] QRect placed(const QRect& place) const { return QStyle::visualRect(direction_, row_, place); }

    void text(const QRect& place, TypeRole role, const QColor& ink, const QString& text) {
        painter_.setFont(font(role));
        painter_.setPen(ink);
        painter_.drawText(placed(place), aligned(Qt::AlignLeft),
                          painter_.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
    }

    /// At the end. Returns the room that it takes, in whole pixels.
    int figures(const QRect& place, TypeRole role, const QColor& ink, const QString& text) {
        painter_.setFont(font(role));
        painter_.setPen(ink);
        painter_.setLayoutDirection(Qt::LeftToRight);  // number and unit keep their order
        const double width = drawFigures(painter_, placed(place), aligned(Qt::AlignRight), isolated(text));
        painter_.setLayoutDirection(direction_);
        return static_cast<int>(std::ceil(width));
    }

    void fill(const QRect& place, double radius, const QColor& color) {
        paintPanel(painter_, placed(place), radius, color, {});
    }

private:
    [[nodiscard]] int aligned(Qt::Alignment side) const {
        return static_cast<int>(QStyle::visualAlignment(direction_, side) | Qt::AlignVCenter);
    }

    QPainter& painter_;
    QRect row_;
    Qt::LayoutDirection direction_;
};

bool isTall(const ListRow& row) {
    return row.share || !row.note.isEmpty();
}

int heightOf(const ListRow& row, bool isPressable) {
    if (!isTall(row)) return lineHeight(TypeRole::body) + 8;
    const int words = lineHeight(TypeRole::bodyStrong) + lineHeight(TypeRole::caption);
    return isPressable ? std::max(46, words + 12) : words + lineGap + 14;
}

}  // namespace

class RowList::Model : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        const ListRow& row = rows[static_cast<std::size_t>(index.row())];
        if (role == Qt::AccessibleTextRole) return row.accessibleName;
        if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return row.text;
        return {};
    }
    /// What is there already changes in its place, so that choice, scroll and assistive technology stay with it.
    void setRows(std::vector<ListRow> next) {
        const int before = rowCount();
        const int after = static_cast<int>(next.size());
        if (after > before) beginInsertRows({}, before, after - 1);
        if (after < before) beginRemoveRows({}, after, before - 1);
        rows = std::move(next);
        if (after > before) endInsertRows();
        if (after < before) endRemoveRows();
        if (const int kept = std::min(before, after); kept > 0) Q_EMIT dataChanged(index(0), index(kept - 1));
    }

    std::vector<ListRow> rows;
};

class RowList::Delegate : public QStyledItemDelegate {
public:
    explicit Delegate(RowList& list) : QStyledItemDelegate(&list), list_(list) {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const override {
        // The view keeps a pixel at the end of a line.
        return {(list_.viewport()->width() - 1) / list_.columns_, heightOf(rowAt(index), list_.isPressable_)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const ListRow& content = rowAt(index);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        RowPainter row(*painter, option.rect, option.direction);
        QRect place = option.rect;
        if (list_.columns_ > 1) {
            const bool isLast = index.row() % list_.columns_ + 1 == list_.columns_;
            place.adjust(isLast ? columnGap / 2 : 0, 0, isLast ? 0 : -columnGap / 2, 0);
        }
        if (list_.isPressable_) place = paintPlate(*painter, row, option);
        paintWords(*painter, row, place, content);
        painter->restore();
    }

private:
    [[nodiscard]] const ListRow& rowAt(const QModelIndex& index) const {
        return list_.model_->rows[static_cast<std::size_t>(index.row())];
    }

    /// What shows that the row can be pressed; the rest is for its words.
    static QRect paintPlate(QPainter& painter, RowPainter& row, const QStyleOptionViewItem& option) {
        const QRect plate = option.rect.adjusted(0, 1, 0, -1);
        const bool isCurrent = option.state.testFlag(QStyle::State_HasFocus);
        if (option.state.testFlag(QStyle::State_MouseOver)) row.fill(plate, Metrics::controlRadius, theme().hover);
        if (isCurrent && option.widget != nullptr && showsFocusRing(*option.widget))
            paintFocusRing(painter, QRectF(plate).adjusted(4, 4, -4, -4), Metrics::blockRadius, theme().surface);
        const QRect inside = plate.adjusted(pressablePadding, 0, -pressablePadding, 0);
        const QRect plus(inside.right() + 1 - plusSize, inside.top(), plusSize, inside.height());
        drawIcon(painter, row.placed(plus), QStringLiteral("plus"), theme().text2, plusSize);
        return inside.adjusted(0, 0, -plusSize - gap, 0);
    }

    static void paintMark(QPainter& painter, RowPainter& row, const QRect& line, const ListRow& content, int side) {
        const QRect mark(line.left(), line.top() + (line.height() - side + 1) / 2, side, side);
        if (content.mark.isValid())
            row.fill(mark, 3, content.mark);
        else if (content.tone)
            paintProjectDot(painter, row.placed(mark), *content.tone);
    }

    static void paintWords(QPainter& painter, RowPainter& row, const QRect& place, const ListRow& content) {
        const TypeRole role = isTall(content) ? TypeRole::bodyStrong : TypeRole::body;
        const int below = content.share            ? lineGap + lineHeight(TypeRole::caption)
                          : content.note.isEmpty() ? 0
                                                   : lineHeight(TypeRole::caption);
        const int top = place.top() + (place.height() - lineHeight(role) - below) / 2;
        const QRect first(place.left(), top, place.width(), lineHeight(role));
        const QRect second(place.left(),
                           place.top() + place.height() - (top - place.top()) - lineHeight(TypeRole::caption),
                           place.width(), lineHeight(TypeRole::caption));
        const int side = content.mark.isValid() ? 10 : content.note.isEmpty() ? 12 : 14;
        paintMark(painter, row, content.note.isEmpty() ? first : place, content, side);
        const int start = content.note.isEmpty() ? side + gap : side + gap + 2;
        const int figures =
            content.figures.isEmpty() ? 0 : row.figures(first, role, theme().text, content.figures) + gap;
        row.text(first.adjusted(start, 0, -figures, 0), role, theme().text, content.text);
        if (content.share)
            paintShare(row, second.adjusted(start, 0, 0, 0), content);
        else if (!content.note.isEmpty())
            row.text(second.adjusted(start, 0, 0, 0), TypeRole::caption, theme().text3, content.note);
    }

    static void paintShare(RowPainter& row, const QRect& place, const ListRow& content) {
        QRect bar(place.left(), place.top() + (place.height() - barHeight) / 2, place.width() - shareWidth, barHeight);
        row.fill(bar, barHeight / 2.0, theme().sunken);
        row.figures(place, TypeRole::caption, theme().text3, content.share->text);
        if (content.share->part <= 0) return;
        bar.setWidth(std::max(barHeight, qRound(bar.width() * content.share->part)));
        row.fill(bar, barHeight / 2.0, content.mark);
    }

    RowList& list_;
};

RowList::RowList(const QString& name, QWidget* parent) : QListView(parent), model_(new Model(this)) {
    setAccessibleName(name);
    setModel(model_);
    setItemDelegate(new Delegate(*this));
    setFrameShape(QFrame::NoFrame);
    viewport()->setAutoFillBackground(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setSelectionMode(NoSelection);
    setFocusPolicy(Qt::NoFocus);
    setResizeMode(Adjust);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void RowList::setPressable() {
    isPressable_ = true;
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_Hover);
    connect(this, &QListView::clicked, this, [this](const QModelIndex& index) { Q_EMIT rowPressed(index.row()); });
}

void RowList::setColumns(int columns) {
    columns_ = columns;
    setFlow(LeftToRight);
    setWrapping(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // else room is kept for it
}

void RowList::setMargins(const QMargins& margins) {
    setViewportMargins(margins);
}

void RowList::setRows(std::vector<ListRow> rows) {
    if (rows == model_->rows) return;
    model_->setRows(std::move(rows));
    if (isPressable_ && !currentIndex().isValid()) setCurrentIndex(model_->index(0));
    updateGeometry();
}

QSize RowList::sizeHint() const {
    const QMargins margins = viewportMargins();
    int height = margins.top() + margins.bottom();
    for (std::size_t i = 0; i < model_->rows.size(); i += static_cast<std::size_t>(columns_))
        height += heightOf(model_->rows[i], isPressable_);
    return {160, height};
}

QSize RowList::minimumSizeHint() const {
    // A row, and enough of the next to see that there is one.
    return {0, columns_ > 1 ? sizeHint().height() : std::min(64, sizeHint().height())};
}

void RowList::keyPressEvent(QKeyEvent* event) {
    const bool isPress =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (!isPress || !currentIndex().isValid()) return QListView::keyPressEvent(event);
    Q_EMIT rowPressed(currentIndex().row());
}

}  // namespace quorvane
