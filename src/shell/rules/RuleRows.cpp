#include "shell/rules/RuleRows.h"

#include "shell/look/Painting.h"
#include "shell/look/RowPainting.h"
#include "shell/look/Theme.h"

#include <QPainter>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int top = 9;
constexpr int bottom = 10;
constexpr int end = 12;
constexpr int priorityEnd = 36;  // from the row's start
constexpr int textStart = 46;
constexpr int chipDistance = 6;
constexpr int chipPadding = 10;
constexpr int rowDotSize = 10;
constexpr int dotRoom = 15;

QFont chipFont() {
    QFont chip = font(TypeRole::caption);
    chip.setWeight(QFont::Medium);
    return chip;
}

int chipHeight() {
    return lineHeight(TypeRole::caption) + 6;
}

int chipWidth(const QString& words) {
    return QFontMetrics(chipFont()).horizontalAdvance(words) + 2 * chipPadding;
}

class RulePainting {
public:
    RulePainting(QPainter& painter, const QStyleOptionViewItem& option, const RuleRow& row)
        : painter_(painter), row_(row), painting_(painter, option), width_(option.rect.width()),
          isSelected_(option.state.testFlag(QStyle::State_Selected)) {}

    void paint(const QString& offWord) {
        painting_.ground();
        const int nameHeight = lineHeight(TypeRole::body);
        const int conditionHeight = lineHeight(TypeRole::labelPlain);
        const int textWidth = width_ - textStart - end;
        painting_.text({0, top, priorityEnd, nameHeight}, font(TypeRole::labelPlain), theme().text2,
                       QString::number(row_.priority), Qt::AlignRight);
        paintName({textStart, top, textWidth, nameHeight}, offWord);
        painting_.text({textStart, top + nameHeight, textWidth, conditionHeight}, font(TypeRole::labelPlain),
                       quietInk(), qt(row_.condition));
        paintChips(top + nameHeight + conditionHeight + chipDistance);
    }

private:
    [[nodiscard]] QColor quietInk() const { return row_.isEnabled || isSelected_ ? theme().text2 : theme().text3; }

    void paintName(const QRect& line, const QString& offWord) {
        const QFont face = font(TypeRole::bodyStrong);
        if (row_.isEnabled) return painting_.text(line, face, theme().text, qt(row_.name));
        const int offWidth = chipWidth(offWord);
        const int nameWidth =
            std::min(QFontMetrics(face).horizontalAdvance(qt(row_.name)) + 1, line.width() - offWidth - chipDistance);
        painting_.text({line.left(), line.top(), nameWidth, line.height()}, face, quietInk(), qt(row_.name));
        paintChip(line.left() + nameWidth + chipDistance, line.center().y() + 1 - chipHeight() / 2, offWidth, offWord,
                  theme().sunken);
    }

    void paintChip(int x, int y, int width, const QString& words, const QColor& ground) {
        const QRect chip(x, y, width, chipHeight());
        painting_.chip(chip, chip.height() / 2.0, ground, chipFont(), theme().text2, words);
    }

    /// As many as there is room for; what is left out is counted.
    void paintChips(int y) {
        int x = textStart;
        const int last = width_ - end;
        const QColor ground = isSelected_ ? theme().surface : theme().sunken;
        if (row_.project) x = paintProject(y, last);
        for (std::size_t i = 0; i < row_.words.size(); ++i) {
            const QString word = qt(row_.words[i]);
            const int rest = static_cast<int>(row_.words.size() - i);
            const QString count = QStringLiteral("+%1").arg(rest);
            const int needed = chipWidth(word) + (rest > 1 ? chipDistance + chipWidth(count) : 0);
            if (x + needed > last && i > 0) return paintChip(x, y, chipWidth(count), count, ground);
            const int width = std::min(chipWidth(word), last - x);
            if (width < 3 * chipPadding) return;
            paintChip(x, y, width, word, ground);
            x += width + chipDistance;
        }
    }

    /// Returns where the next chip begins.
    int paintProject(int y, int last) {
        const QString name = qt(row_.project->name);
        const int width = std::min(chipWidth(name) + dotRoom, (last - textStart) * 2 / 3);
        const QRect chip(textStart, y, width, chipHeight());
        paintPanel(painter_, painting_.placed(chip), chip.height() / 2.0, theme().surface,
                   theme().isHighContrast ? theme().control : theme().line);
        const QRect dot(textStart + chipPadding - 1, y + (chipHeight() - rowDotSize) / 2, rowDotSize, rowDotSize);
        paintProjectDot(painter_, painting_.placed(dot), AppColorPalette::projectTone(row_.project->color));
        painting_.text(chip.adjusted(chipPadding + dotRoom - 1, 0, -chipPadding + 1, 0), chipFont(), theme().text,
                       name);
        return textStart + width + chipDistance;
    }

    QPainter& painter_;
    const RuleRow& row_;
    RowPainting painting_;
    int width_;
    bool isSelected_;
};

}  // namespace

RuleRows::RuleRows(const Localization& localization, QObject* parent)
    : QAbstractListModel(parent), localization_(localization) {}

void RuleRows::show(const std::vector<RuleRow>& rows) {
    if (rows == rows_) return;
    if (std::ranges::equal(rows, rows_, {}, &RuleRow::rule, &RuleRow::rule)) {
        rows_ = rows;
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
        return;
    }
    beginResetModel();
    rows_ = rows;
    endResetModel();
}

const RuleRow& RuleRows::row(const QModelIndex& index) const {
    return rows_[static_cast<std::size_t>(index.row())];
}

QModelIndex RuleRows::indexOf(const Rule* rule) const {
    const auto found = std::ranges::find(rows_, rule, [](const RuleRow& row) { return row.rule.get(); });
    return found == rows_.end() ? QModelIndex() : index(static_cast<int>(found - rows_.begin()));
}

int RuleRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant RuleRows::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole) return qt(row(index).name);
    if (role == Qt::AccessibleTextRole) return qt(row(index).sentence(localization_));
    return {};
}

RuleRowDelegate::RuleRowDelegate(QString offWord, QObject* parent)
    : QStyledItemDelegate(parent), offWord_(std::move(offWord)) {}

QSize RuleRowDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
    const int words = lineHeight(TypeRole::body) + lineHeight(TypeRole::labelPlain);
    return {textStart * 3, top + words + chipDistance + chipHeight() + bottom};
}

void RuleRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    RulePainting(*painter, option, dynamic_cast<const RuleRows&>(*index.model()).row(index)).paint(offWord_);
}

}  // namespace quorvane
