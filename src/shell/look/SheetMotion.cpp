#include "shell/look/SheetMotion.h"

#include "shell/look/Motion.h"

#include <QVariantAnimation>
#include <QWidget>

namespace quorvane {

void SheetMotion::start(QWidget& sheet, QWidget& panel, bool isIn, const std::function<void()>& moved,
                        const std::function<void()>& arrived) {
    const double target = isIn ? 1 : 0;
    const int duration = Motion::milliseconds(isIn ? Motion::sheetIn : Motion::sheetOut);
    if (duration == 0) {
        progress = target;
        arrived();
        return;
    }
    picture = panel.grab();
    auto* animation = new QVariantAnimation(&sheet);
    animation->setDuration(duration);
    animation->setEasingCurve(QEasingCurve::OutCubic);
    animation->setStartValue(isIn ? 0.0 : progress);
    animation->setEndValue(target);
    progress = isIn ? 0 : progress;
    QObject::connect(animation, &QVariantAnimation::valueChanged, &sheet, [this, moved](const QVariant& value) {
        progress = value.toDouble();
        moved();
    });
    QObject::connect(animation, &QVariantAnimation::finished, &sheet, [this, arrived, target] {
        progress = target;
        picture = QPixmap();
        arrived();
    });
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

}  // namespace quorvane
