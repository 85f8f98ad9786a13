#include "shell/logs/LogEntryRow.h"

#include "shell/logs/LogListModel.h"
#include "shell/logs/LogRowPainter.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int leastRowHeight = 32;
constexpr int markWidth = 3;  // of the bar at the start of a selected row
constexpr int ringInset = 4;

}  // namespace

void LogEntryRow::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto* const model = dynamic_cast<const LogListModel*>(index.model());
    if (model == nullptr) return;
    const Theme& t = theme();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    QColor ground = index.data(LogListModel::isStripedRole).toBool() ? t.sunken : t.surface;
    if (option.state.testFlag(QStyle::State_MouseOver)) ground = t.hover;
    if (isSelected) ground = t.accSoft;
    painter->fillRect(option.rect, ground);
    if (isSelected) {
        const QRect mark(option.rect.left(), option.rect.top(), markWidth, option.rect.height());
        painter->fillRect(QStyle::visualRect(option.direction, option.rect, mark), t.accent);
    }
    LogRowPainter::paint(*painter, option.rect, option.direction, model->entry(index), LogRowPainter::Kind::full);
    const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
    if (hasFocus && option.widget != nullptr && showsFocusRing(*option.widget))
        paintFocusRing(*painter, QRectF(option.rect).adjusted(ringInset, ringInset, -ringInset, -ringInset),
                       Metrics::blockRadius, ground);
    painter->restore();
}

QSize LogEntryRow::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, std::max(leastRowHeight, lineHeight(TypeRole::fixed) + 8)};
}

}  // namespace quorvane
