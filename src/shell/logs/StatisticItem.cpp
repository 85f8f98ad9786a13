#include "shell/logs/StatisticItem.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"

#include <QLocale>
#include <QPainter>
#include <QVBoxLayout>

namespace quorvane {

StatisticItem::StatisticItem(const QString& label, QColor Theme::*color, QWidget* parent)
    : QWidget(parent), label_(label), value_(new Label({}, TypeRole::title, color)) {
    setAccessibleRole(*this, QAccessible::StaticText);
    auto* const words = new QVBoxLayout(this);
    words->setContentsMargins(12, 8, 12, 8);
    words->setSpacing(0);
    words->addWidget(value_);
    words->addWidget(new Label(label, TypeRole::caption, &Theme::text2));
    setValue(0);
}

void StatisticItem::setValue(int value) {
    value_->setText(QLocale().toString(value));
    setAccessibleName(label_ + QStringLiteral(": ") + value_->text());
}

void StatisticItem::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintPanel(painter, rect(), Metrics::controlRadius, theme().sunken,
               theme().isHighContrast ? theme().control : QColor());
}

}  // namespace quorvane
