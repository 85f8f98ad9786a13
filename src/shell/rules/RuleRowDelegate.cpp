#include "shell/rules/RuleRowDelegate.h"

#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"
#include "shell/rules/RuleListModel.h"
#include "timeline/ProjectTone.h"

#include <QPainter>
#include <algorithm>
#include <utility>

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
constexpr int dotGap = 5;
constexpr int ringRoom = 4;  // the ring lies inside, as rows have no distance

QFont chipFont() {
    QFont chip = font(TypeRole::caption);
    chip.setWeight(QFont::Medium);
    return chip;
}

int chipHeight() {
    return lineHeight(TypeRole::caption) + 6;
}

/// Everything is placed from left to right and stands mirrored where the layout is.
class RowPainting {
public:
    RowPainting(QPainter& painter, const QStyleOptionViewItem& option, const RuleRow& row, const QString& offWord)
        : painter_(painter), option_(option), row_(row), offWord_(offWord),
          isSelected_(option.state.testFlag(QStyle::State_Selected)) {}

    void paint() {
        paintGround();
        const int nameHeight = lineHeight(TypeRole::body);
        const int conditionHeight = lineHeight(TypeRole::labelPlain);
        text({0, top, priorityEnd, nameHeight}, font(TypeRole::labelPlain), theme().text2,
             QString::number(row_.priority), Qt::AlignRight);
        paintName({textStart, top, textWidth(), nameHeight});
        text({textStart, top + nameHeight, textWidth(), conditionHeight}, font(TypeRole::labelPlain), quietInk(),
             qt(row_.condition));
        paintChips(top + nameHeight + conditionHeight + chipDistance);
    }

private:
    [[nodiscard]] int textWidth() const { return option_.rect.width() - textStart - end; }
    [[nodiscard]] QColor quietInk() const { return row_.isEnabled || isSelected_ ? theme().text2 : theme().text3; }

    [[nodiscard]] QRect placed(const QRect& rectangle) const {
        return QStyle::visualRect(option_.direction, option_.rect, rectangle.translated(option_.rect.topLeft()));
    }

    void text(const QRect& rectangle, const QFont& face, const QColor& ink, const QString& words,
              Qt::Alignment side = Qt::AlignLeft) {
        painter_.setFont(face);
        painter_.setPen(ink);
        const auto alignment = QStyle::visualAlignment(option_.direction, side) | Qt::AlignAbsolute | Qt::AlignVCenter;
        painter_.drawText(placed(rectangle), static_cast<int>(alignment) | Qt::TextSingleLine,
                          QFontMetrics(face).elidedText(words, Qt::ElideRight, rectangle.width()));
    }

    void paintGround() {
        const Theme& t = theme();
        const bool isHovered = option_.state.testFlag(QStyle::State_MouseOver);
        if (isSelected_)
            paintPanel(painter_, option_.rect, Metrics::controlRadius, t.accSoft, t.accent);
        else if (isHovered)
            paintPanel(painter_, option_.rect, Metrics::controlRadius, t.hover, {});
        if (option_.state.testFlag(QStyle::State_HasFocus) && option_.widget != nullptr &&
            showsFocusRing(*option_.widget)) {
            const QRect inside = option_.rect.adjusted(ringRoom, ringRoom, -ringRoom, -ringRoom);
            paintFocusRing(painter_, inside, Metrics::blockRadius, isSelected_ ? t.accSoft : t.surface);
        }
    }

    void paintName(const QRect& line) {
        const QFont face = font(TypeRole::bodyStrong);
        const QColor ink = row_.isEnabled ? theme().text : quietInk();
        if (row_.isEnabled) return text(line, face, ink, qt(row_.name));
        const int offWidth = chipWidth(offWord_);
        const int nameWidth =
            std::min(QFontMetrics(face).horizontalAdvance(qt(row_.name)) + 1, line.width() - offWidth - chipDistance);
        text({line.left(), line.top(), nameWidth, line.height()}, face, ink, qt(row_.name));
        paintChip(
            {line.left() + nameWidth + chipDistance, line.center().y() + 1 - chipHeight() / 2, offWidth, chipHeight()},
            offWord_, theme().sunken, {});
    }

    static int chipWidth(const QString& words) {
        return QFontMetrics(chipFont()).horizontalAdvance(words) + 2 * chipPadding;
    }

    void paintChip(const QRect& chip, const QString& words, const QColor& ground, const QColor& edge) {
        paintPanel(painter_, placed(chip), chip.height() / 2.0, ground, edge.isValid() ? edge : contrastEdge());
        text(chip.adjusted(chipPadding, 0, -chipPadding + 1, 0), chipFont(), theme().text2, words);
    }

    /// With strong contrast asked for, a pale ground alone is no shape.
    static QColor contrastEdge() { return theme().isHighContrast ? theme().control : QColor(); }

    /// As many as there is room for; what is left out is counted.
    void paintChips(int y) {
        int x = textStart;
        const int last = option_.rect.width() - end;
        if (row_.project) x = paintProject(y, last);
        for (std::size_t i = 0; i < row_.words.size(); ++i) {
            const QString word = qt(row_.words[i]);
            const int rest = static_cast<int>(row_.words.size() - i);
            const QString count = QStringLiteral("+%1").arg(rest);
            const int needed = chipWidth(word) + (rest > 1 ? chipDistance + chipWidth(count) : 0);
            const bool hasRoom = x + needed <= last;
            if (!hasRoom && i > 0) return paintChip({x, y, chipWidth(count), chipHeight()}, count, chipGround(), {});
            const int width = std::min(chipWidth(word), last - x);
            if (width < 3 * chipPadding) return;
            paintChip({x, y, width, chipHeight()}, word, chipGround(), {});
            x += width + chipDistance;
        }
    }

    [[nodiscard]] QColor chipGround() const { return isSelected_ ? theme().surface : theme().sunken; }

    /// Returns where the next chip begins.
    int paintProject(int y, int last) {
        const QString name = qt(row_.project->name);
        const int dotRoom = rowDotSize + dotGap;
        const int width = std::min(chipWidth(name) + dotRoom, (last - textStart) * 2 / 3);
        const QRect chip(textStart, y, width, chipHeight());
        paintPanel(painter_, placed(chip), chip.height() / 2.0, theme().surface,
                   theme().isHighContrast ? theme().control : theme().line);
        const QRect dot(textStart + chipPadding - 1, y + (chipHeight() - rowDotSize) / 2, rowDotSize, rowDotSize);
        paintProjectDot(painter_, placed(dot), AppColorPalette::projectTone(row_.project->color));
        text(chip.adjusted(chipPadding + dotRoom - 1, 0, -chipPadding + 1, 0), chipFont(), theme().text, name);
        return textStart + width + chipDistance;
    }

    QPainter& painter_;
    const QStyleOptionViewItem& option_;
    const RuleRow& row_;
    const QString& offWord_;
    bool isSelected_;
};

}  // namespace

RuleRowDelegate::RuleRowDelegate(QString offWord, QObject* parent)
    : QStyledItemDelegate(parent), offWord_(std::move(offWord)) {}

QSize RuleRowDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
    const int height =
        top + lineHeight(TypeRole::body) + lineHeight(TypeRole::labelPlain) + chipDistance + chipHeight() + bottom;
    return {textStart * 3, height};
}

void RuleRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto* const model = dynamic_cast<const RuleListModel*>(index.model());
    painter->save();
    RowPainting(*painter, option, model->row(index), offWord_).paint();
    painter->restore();
}

}  // namespace quorvane
