#include "shell/chart/DayChartAccessibility.h"

#include "base/TimeText.h"
#include "shell/chart/DayChartParts.h"
#include "shell/look/Typography.h"

#include <QAccessibleWidget>
#include <algorithm>
#include <optional>

namespace quorvane {
namespace {

std::string hourText(double hour) {
    return clockText(hour * 1h);
}

/// One block, gap or bar, or the range that was drawn.
class ItemAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    ItemAccessible(DayChartView& view, const DayChartItem& item) : view_(&view), item_(item) {}

    bool isValid() const override { return view_ && frame().has_value(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(view_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}
    QAccessible::Role role() const override {
        return item_.kind == DayChartItem::Kind::range ? QAccessible::AlertMessage : QAccessible::ListItem;
    }
    QString text(QAccessible::Text which) const override { return which == QAccessible::Name ? name() : QString(); }
    QRect rect() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override {
        const bool acts = type == QAccessible::ActionInterface && item_.kind != DayChartItem::Kind::range;
        return acts ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override {
        QStringList names{pressAction(), setFocusAction()};
        if (item_.kind == DayChartItem::Kind::bar) names.insert(1, deleteAction());
        return names;
    }
    QString localizedActionName(const QString& action) const override;
    void doAction(const QString& action) override;
    QStringList keyBindingsForAction(const QString& action) const override {
        return action == deleteAction() ? QStringList{"Delete"} : QStringList{};
    }

private:
    static QString deleteAction() { return "delete"; }
    [[nodiscard]] DayChartView::Parts& parts() const { return view_->parts(); }
    [[nodiscard]] std::optional<QRectF> frame() const;
    [[nodiscard]] QString name() const;
    [[nodiscard]] bool isChosen() const;

    QPointer<DayChartView> view_;
    DayChartItem item_;
};

/// In coordinates of the content; none once it has gone.
std::optional<QRectF> ItemAccessible::frame() const {
    const DayChartScene& scene = parts().scene;
    switch (item_.kind) {
    case DayChartItem::Kind::block: {
        const auto* block = scene.block(item_.id);
        return block ? std::optional(block->frame) : std::nullopt;
    }
    case DayChartItem::Kind::gap: {
        const auto* gap = scene.gap(item_.id);
        return gap ? std::optional(gap->frame) : std::nullopt;
    }
    case DayChartItem::Kind::bar: {
        const auto* bar = scene.bar(item_.id);
        return bar ? std::optional(bar->frame) : std::nullopt;
    }
    case DayChartItem::Kind::range: return parts().overlay.range;
    }
    return std::nullopt;
}

QString ItemAccessible::name() const {
    if (!isValid()) return {};
    const Localization& texts = parts().localization;
    switch (item_.kind) {
    case DayChartItem::Kind::block: {
        const auto& block = *parts().scene.block(item_.id);
        return qt(texts.text("a11y_activity_block", block.name.toStdString(), hourText(block.startHour),
                             hourText(block.endHour), block.duration.toStdString()));
    }
    case DayChartItem::Kind::gap: {
        const auto& gap = *parts().scene.gap(item_.id);
        return qt(texts.text("a11y_gap", hourText(gap.startHour), hourText(gap.endHour), gap.duration.toStdString()));
    }
    case DayChartItem::Kind::bar: {
        const auto& bar = *parts().scene.bar(item_.id);
        return qt(
            texts.text("a11y_project_bar", bar.name.toStdString(), hourText(bar.startHour), hourText(bar.endHour)));
    }
    case DayChartItem::Kind::range:
        if (const auto range = parts().chart.selectedTimeRange())
            return qt(texts.text("a11y_selected_range", hourText(range->startHour), hourText(range->endHour)));
    }
    return {};
}

QRect ItemAccessible::rect() const {
    if (!isValid()) return {};
    const QRect place = parts().toViewport(*frame()).toAlignedRect();
    return {view_->viewport()->mapToGlobal(place.topLeft()), place.size()};
}

bool ItemAccessible::isChosen() const {
    const DayChartOverlay& overlay = parts().overlay;
    const auto& chosen = item_.kind == DayChartItem::Kind::block ? overlay.block
                         : item_.kind == DayChartItem::Kind::gap ? overlay.gap
                                                                 : overlay.bar;
    return chosen == item_.id;
}

QAccessible::State ItemAccessible::state() const {
    QAccessible::State state;
    state.invalid = !isValid();
    if (state.invalid) return state;
    state.offscreen = !QRectF(view_->viewport()->rect()).intersects(parts().toViewport(*frame()));
    state.invisible = !view_->isVisible();
    if (item_.kind == DayChartItem::Kind::range) return state;
    state.focusable = true;
    state.selectable = true;
    state.selected = isChosen();
    state.focused = state.selected && view_->hasFocus();
    return state;
}

QString ItemAccessible::localizedActionName(const QString& action) const {
    if (action != deleteAction() || !isValid()) return QAccessibleActionInterface::localizedActionName(action);
    const auto& bar = *parts().scene.bar(item_.id);
    return qt(parts().localization.text("a11y_delete_bar", bar.name.toStdString(), hourText(bar.startHour),
                                        hourText(bar.endHour)));
}

void ItemAccessible::doAction(const QString& action) {
    if (!isValid()) return;
    DayChartView::Parts& parts = this->parts();
    if (action == setFocusAction()) view_->setFocus(Qt::OtherFocusReason);
    if (item_.kind == DayChartItem::Kind::block) {
        parts.chart.selectBlock(item_.id);
    } else if (item_.kind == DayChartItem::Kind::gap) {
        parts.chart.selectGap(item_.id);
    } else {
        const auto annotation = parts.scene.bar(item_.id)->annotation;
        if (action == deleteAction()) return parts.chart.deleteAnnotation(annotation);
        parts.chart.select(annotation);
    }
    parts.makeVisible(parts.chosenFrame());
}

/// The chart as a list: blocks from morning to night, gaps, bars, and the range that was drawn.
class ChartAccessible : public QAccessibleWidget {
public:
    explicit ChartAccessible(DayChartView& view) : QAccessibleWidget(&view, QAccessible::List), view_(view) {}

    QString text(QAccessible::Text which) const override {
        if (which != QAccessible::Name) return QAccessibleWidget::text(which);
        return qt(parts().localization.text("a11y_day_chart", parts().chart.dateLabel(), scene().blocks.size()));
    }
    int childCount() const override { return static_cast<int>(barsEnd() + (hasRange() ? 1 : 0)); }
    QAccessibleInterface* child(int index) const override {
        const auto item = itemAt(static_cast<std::size_t>(index));
        return index >= 0 && item ? parts().items.interfaceOf(*item) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        for (int i = 0; i < childCount(); ++i)
            if (this->child(i) == child) return i;
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override {
        const DayChartOverlay& overlay = parts().overlay;
        if (!view_.hasFocus()) return nullptr;
        if (overlay.block && scene().block(*overlay.block))
            return parts().items.interfaceOf({DayChartItem::Kind::block, *overlay.block});
        if (overlay.gap && scene().gap(*overlay.gap))
            return parts().items.interfaceOf({DayChartItem::Kind::gap, *overlay.gap});
        if (overlay.bar && scene().bar(*overlay.bar))
            return parts().items.interfaceOf({DayChartItem::Kind::bar, *overlay.bar});
        return nullptr;
    }

private:
    [[nodiscard]] DayChartView::Parts& parts() const { return view_.parts(); }
    [[nodiscard]] const DayChartScene& scene() const { return parts().present(); }
    [[nodiscard]] std::size_t gapsEnd() const { return scene().blocks.size() + scene().gaps.size(); }
    [[nodiscard]] std::size_t barsEnd() const { return gapsEnd() + scene().bars.size(); }
    [[nodiscard]] bool hasRange() const { return parts().chart.selectedTimeRange().has_value(); }
    [[nodiscard]] std::optional<DayChartItem> itemAt(std::size_t index) const {
        const DayChartScene& shown = scene();
        const std::size_t blocks = shown.blocks.size();
        if (index < blocks) return DayChartItem{DayChartItem::Kind::block, shown.blocks[shown.blocksByStart[index]].id};
        if (index < gapsEnd()) return DayChartItem{DayChartItem::Kind::gap, shown.gaps[index - blocks].id};
        if (index < barsEnd()) return DayChartItem{DayChartItem::Kind::bar, shown.bars[index - gapsEnd()].id};
        if (index == barsEnd() && hasRange()) return DayChartItem{DayChartItem::Kind::range, {}};
        return std::nullopt;
    }

    DayChartView& view_;
};

QAccessibleInterface* ChartAccessible::childAt(int x, int y) const {
    const QPoint place = view_.viewport()->mapFromGlobal(QPoint(x, y));
    if (!view_.viewport()->rect().contains(place)) return nullptr;
    const QPointF point = parts().toContent(place);
    if (const auto* bar = scene().barAt(point)) return parts().items.interfaceOf({DayChartItem::Kind::bar, bar->id});
    const auto* hit =
        DayTimelineGeometry::hitTest(parts().chart.processedRecords(), {point.x(), point.y()}, scene().width);
    if (hit != nullptr) return parts().items.interfaceOf({DayChartItem::Kind::block, hit->id});
    for (const DayChartGap& gap : scene().gaps)
        if (gap.frame.contains(point)) return parts().items.interfaceOf({DayChartItem::Kind::gap, gap.id});
    return nullptr;
}

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    auto* view = dynamic_cast<DayChartView*>(object);
    return view ? new ChartAccessible(*view) : nullptr;
}

}  // namespace

QAccessibleInterface* DayChartItems::interfaceOf(const DayChartItem& item) {
    const auto [place, isNew] = ids_.try_emplace(item);
    if (isNew) place->second = QAccessible::registerAccessibleInterface(new ItemAccessible(view_, item));
    return QAccessible::accessibleInterface(place->second);
}

void DayChartItems::prune() {
    std::erase_if(ids_, [](const auto& entry) {
        const auto* shown = QAccessible::accessibleInterface(entry.second);
        if (shown != nullptr && shown->isValid()) return false;
        QAccessible::deleteAccessibleInterface(entry.second);
        return true;
    });
}

void DayChartItems::clear() {
    for (const auto& [item, id] : ids_)
        QAccessible::deleteAccessibleInterface(id);
    ids_.clear();
}

void DayChartItems::announce(const DayChartOverlay& before, const DayChartOverlay& now) {
    if (!QAccessible::isActive()) return;
    const auto tell = [this](const DayChartItem& item, QAccessible::Event type) {
        QAccessibleEvent event(interfaceOf(item), type);
        QAccessible::updateAccessibility(&event);
    };
    const auto chosen = [](const DayChartOverlay& overlay) -> std::optional<DayChartItem> {
        if (overlay.block) return DayChartItem{DayChartItem::Kind::block, *overlay.block};
        if (overlay.gap) return DayChartItem{DayChartItem::Kind::gap, *overlay.gap};
        if (overlay.bar) return DayChartItem{DayChartItem::Kind::bar, *overlay.bar};
        return std::nullopt;
    };
    if (const auto item = chosen(now); item && item != chosen(before)) {
        tell(*item, QAccessible::Selection);
        if (view_.hasFocus()) tell(*item, QAccessible::Focus);
    }
    // A drag under way would speak without end; the range that it leaves is told once.
    if (!now.range || now.range == before.range || view_.parts().chart.selection()) return;
    const DayChartItem range{DayChartItem::Kind::range, {}};
    tell(range, before.range ? QAccessible::NameChanged : QAccessible::ObjectShow);
    tell(range, QAccessible::Alert);
}

void installDayChartAccessibility() {
    QAccessible::installFactory(makeInterface);
}

}  // namespace quorvane
