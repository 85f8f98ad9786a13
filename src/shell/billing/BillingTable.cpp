#include "shell/billing/BillingTable.h"

#include "shell/look/Boxes.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QPainter>
#include <QPainterPath>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTableView>
#include <algorithm>
#include <optional>
#include <utility>

namespace quorvane {
namespace {

enum class BillingColumn { project, client, hours, reviewHours, hourlyRate, amount };
constexpr int billingColumns = 6;

constexpr int foldedBelow = 758;  // 760 with the card's edges
constexpr int narrowBelow = 558;
constexpr double clientShare = 0.19;
constexpr int leastRowHeight = 44;
constexpr int dotSide = 14;
constexpr int dotGap = 10;
constexpr double widestNumber = 0.36;  // of the table
constexpr int rowRingInset = 6;

int cellPadding(const QWidget& table) {
    return table.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &table);
}

QFont strong(TypeRole role) {
    QFont face = font(role);
    face.setWeight(QFont::DemiBold);
    return face;
}

bool isNumber(BillingColumn column) {
    return column >= BillingColumn::hours;
}

int rowHeight() {
    return std::max(leastRowHeight, lineHeight(TypeRole::body) + lineHeight(TypeRole::caption) + 10);
}

std::string title(BillingColumn column, const Localization& l) {
    switch (column) {
    case BillingColumn::project: return l.text("project");
    case BillingColumn::client: return l.text("client");
    case BillingColumn::hours: return l.text("duration");
    case BillingColumn::reviewHours: return l.text("billing_review");
    case BillingColumn::hourlyRate: return l.text("hourly_rate");
    case BillingColumn::amount: return l.text("amount");
    }
    return {};
}

/// A text with its look.
struct Line {
    const std::string* text;
    TypeRole role;
    QColor ink;
    bool isStrong = false;

    [[nodiscard]] QFont face() const { return isStrong ? strong(role) : font(role); }
};

Line lineOf(const BillingTableRow& row, BillingColumn column) {
    const Theme& t = theme();
    switch (column) {
    case BillingColumn::project: return {&row.projectName, TypeRole::bodyStrong, t.text};
    case BillingColumn::client: return {&row.clientName, TypeRole::body, row.hasClient ? t.text2 : t.text3};
    case BillingColumn::hours: return {&row.hours, TypeRole::body, t.text};
    case BillingColumn::reviewHours:
        return {&row.reviewHours, TypeRole::body, row.needsReview ? t.warn : t.text3, row.needsReview};
    case BillingColumn::hourlyRate: return {&row.hourlyRate, TypeRole::body, row.hasRate ? t.text2 : t.text3};
    case BillingColumn::amount: return {&row.amount, TypeRole::body, row.hasRate ? t.text : t.text3, row.hasRate};
    }
    return {};
}

}  // namespace

/// The lines of the table, each with plain texts for assistive technology.
class BillingTableModel : public QAbstractTableModel {
public:
    BillingTableModel(const Localization& localization, QObject* parent)
        : QAbstractTableModel(parent), localization_(localization) {}

    /// True when they are others than before.
    bool setRows(const std::vector<BillingTableRow>& rows) {
        if (rows == rows_) return false;
        beginResetModel();
        rows_ = rows;
        endResetModel();
        return true;
    }
    [[nodiscard]] const BillingTableRow& row(int row) const { return rows_[static_cast<std::size_t>(row)]; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : billingColumns;
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || role != Qt::DisplayRole) return {};
        return qt(*lineOf(row(index.row()), static_cast<BillingColumn>(index.column())).text);
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        const auto column = static_cast<BillingColumn>(section);
        if (role == Qt::TextAlignmentRole)
            return int(Qt::AlignVCenter | (isNumber(column) ? Qt::AlignRight : Qt::AlignLeft));
        if (orientation == Qt::Vertical || role != Qt::DisplayRole) return {};
        return qt(title(column, localization_));
    }

private:
    const Localization& localization_;
    std::vector<BillingTableRow> rows_;
};

namespace {

/// Draws the cells. Words are cut where they are too long, numbers become smaller.
class BillingTableDelegate : public QStyledItemDelegate {
public:
    BillingTableDelegate(const BillingTableModel& model, QTableView& table)
        : QStyledItemDelegate(&table), model_(model), table_(table) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    [[nodiscard]] std::vector<Line> lines(const QModelIndex& index) const;
    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintLines(QPainter& painter, const QRect& place, const QStyleOptionViewItem& option,
                    const QModelIndex& index) const;

    const BillingTableModel& model_;
    QTableView& table_;
};

/// The cell's own, and below it what has no column.
std::vector<Line> BillingTableDelegate::lines(const QModelIndex& index) const {
    const BillingTableRow& row = model_.row(index.row());
    const auto column = static_cast<BillingColumn>(index.column());
    const auto isHidden = [this](BillingColumn other) { return table_.isColumnHidden(static_cast<int>(other)); };
    std::vector<Line> lines{lineOf(row, column)};
    if (column == BillingColumn::project && isHidden(BillingColumn::client))
        lines.push_back({&row.clientName, TypeRole::caption, theme().text3});
    if (column == BillingColumn::hours && isHidden(BillingColumn::reviewHours) && row.needsReview)
        lines.push_back({&row.reviewHours, TypeRole::caption, theme().warn, true});
    if (column == BillingColumn::amount && isHidden(BillingColumn::hourlyRate) && row.hasRate)
        lines.push_back({&row.hourlyRate, TypeRole::caption, theme().text3});
    return lines;
}

QSize BillingTableDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const {
    double width = 0;
    for (const Line& line : lines(index))
        width = std::max(width, figuresWidth(line.face(), qt(*line.text)));
    const int widest = qRound(table_.viewport()->width() * widestNumber);
    return {std::min(qRound(width + 0.5) + 2 * cellPadding(table_), widest), rowHeight()};
}

void BillingTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
    painter->save();
    paintGround(*painter, option, index);
    QRect place = option.rect.adjusted(cellPadding(table_), 0, -cellPadding(table_), 0);
    if (index.column() == static_cast<int>(BillingColumn::project)) {
        const auto start = Qt::AlignLeft | Qt::AlignVCenter;
        const QSize dot(dotSide, dotSide);
        paintProjectDot(*painter, QStyle::alignedRect(option.direction, start, dot, place),
                        model_.row(index.row()).tone);
        place = QStyle::visualRect(option.direction, place, place.adjusted(dotSide + dotGap, 0, 0, 0));
    }
    paintLines(*painter, place, option, index);
    painter->restore();
}

void BillingTableDelegate::paintLines(QPainter& painter, const QRect& place, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const {
    const bool isAtEnd = isNumber(static_cast<BillingColumn>(index.column()));
    const auto shown = lines(index);
    int y = place.top() + place.height() / 2;
    for (const Line& line : shown)
        y -= lineHeight(line.role) / 2;
    const auto side = QStyle::visualAlignment(option.direction, isAtEnd ? Qt::AlignRight : Qt::AlignLeft);
    const auto alignment = static_cast<int>(side | Qt::AlignVCenter);
    for (const Line& line : shown) {
        const QRect row(place.left(), std::exchange(y, y + lineHeight(line.role)), place.width(),
                        lineHeight(line.role));
        QFont face = line.face();
        const QString text = qt(*line.text);
        painter.setPen(line.ink);
        if (isAtEnd) {
            while (face.pixelSize() > 1 && figuresWidth(face, text) > row.width())
                face.setPixelSize(face.pixelSize() - 1);
            painter.setFont(face);
            drawFigures(painter, row, alignment, text);
        } else {
            painter.setFont(face);
            const QString fitting = painter.fontMetrics().elidedText(text, Qt::ElideRight, row.width());
            painter.drawText(row, alignment | Qt::TextSingleLine, isolated(fitting));
        }
    }
}

/// The row's ground, the line below it and the ring around it, as far as they are in the cell.
void BillingTableDelegate::paintGround(QPainter& painter, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
    const QWidget& viewport = *table_.viewport();
    const bool isLast = index.row() + 1 == model_.rowCount();
    const int pointed = viewport.underMouse() ? table_.rowAt(viewport.mapFromGlobal(QCursor::pos()).y()) : -1;
    QStyleOptionViewItem ground = option;
    ground.rect.adjust(0, 0, 0, isLast ? 0 : -1);
    ground.state.setFlag(QStyle::State_MouseOver, pointed == index.row());
    ground.state.setFlag(QStyle::State_HasFocus, false);
    table_.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &ground, &painter, &table_);
    if (!isLast) painter.fillRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1, theme().line2);
    if (index.row() != table_.currentIndex().row() || !showsFocusRing(table_)) return;
    const QRect row(0, option.rect.top(), viewport.width(), option.rect.height());
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    painter.save();
    painter.setClipRect(option.rect);
    paintFocusRing(painter, row.adjusted(rowRingInset, rowRingInset, -rowRingInset, -rowRingInset),
                   Metrics::smallRadius, isSelected ? theme().accSoft : theme().surface);
    painter.restore();
}

}  // namespace

BillingTable::BillingTable(const Localization& localization, QWidget* parent)
    : Card(parent), model_(new BillingTableModel(localization, this)), view_(new QTableView) {
    setAccessibleName(qt(localization.text("ui_projects")));
    view_->setAccessibleName(accessibleName());
    view_->setAccessibleDescription(qt(localization.text("billing_double_click_hint")));
    setUpView();
    auto* const inside = columnBox(0, this);
    inside->setContentsMargins(1, 1, 1, 1);
    inside->addWidget(view_);
    setFocusProxy(view_);
    connect(view_, &QTableView::activated, this, [this](const QModelIndex& index) { edit(index.row()); });
    auto* const shortcut = new QShortcut(Qt::Key_F2, view_);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this] { edit(view_->currentIndex().row()); });
}

void BillingTable::setUpView() {
    view_->setModel(model_);
    view_->setItemDelegate(new BillingTableDelegate(*model_, *view_));
    view_->setFrameShape(QFrame::NoFrame);
    view_->setShowGrid(false);
    view_->setTabKeyNavigation(false);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::SingleSelection);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setAutoScroll(false);
    view_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view_->viewport()->setAutoFillBackground(false);
    view_->viewport()->setAttribute(Qt::WA_Hover);
    QHeaderView& lines = *view_->verticalHeader();
    lines.hide();
    lines.setSectionResizeMode(QHeaderView::Fixed);
    lines.setMinimumSectionSize(rowHeight());
    lines.setDefaultSectionSize(rowHeight());
    QHeaderView& head = *view_->horizontalHeader();
    head.setHighlightSections(false);
    head.setSectionsClickable(false);
    head.setSectionResizeMode(QHeaderView::ResizeToContents);
    head.setSectionResizeMode(static_cast<int>(BillingColumn::project), QHeaderView::Stretch);
    head.setSectionResizeMode(static_cast<int>(BillingColumn::client), QHeaderView::Fixed);
}

void BillingTable::edit(int row) {
    if (row >= 0) edited.send(Uuid(model_->row(row).id));
}

void BillingTable::setRows(const std::vector<BillingTableRow>& rows) {
    const int before = view_->currentIndex().row();
    const auto chosen = before < 0 ? std::nullopt : std::optional(model_->row(before).id);
    if (!model_->setRows(rows)) return;
    const auto found = std::ranges::find(rows, chosen, &BillingTableRow::id);
    if (chosen && found != rows.end()) view_->selectRow(static_cast<int>(found - rows.begin()));
    view_->setFixedHeight(view_->horizontalHeader()->sizeHint().height() + rowHeight() * static_cast<int>(rows.size()));
}

void BillingTable::resizeEvent(QResizeEvent* event) {
    Card::resizeEvent(event);
    const double width = view_->width() / typeScale();
    const auto show = [this](BillingColumn column, bool isShown) {
        view_->setColumnHidden(static_cast<int>(column), !isShown);
    };
    show(BillingColumn::client, width >= foldedBelow);
    show(BillingColumn::reviewHours, width >= narrowBelow);
    show(BillingColumn::hourlyRate, width >= narrowBelow);
    if (width >= foldedBelow)
        view_->setColumnWidth(static_cast<int>(BillingColumn::client), qRound(view_->width() * clientShare));
    QPainterPath inside;  // of the card's round corners
    inside.addRoundedRect(view_->rect(), Metrics::cardRadius - 1, Metrics::cardRadius - 1);
    view_->setMask(inside.toFillPolygon().toPolygon());
}

}  // namespace quorvane
