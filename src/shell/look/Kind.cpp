#include "shell/look/Kind.h"
#include "shell/look/Controls.h"

#include <QEvent>
#include <QList>
#include <QStyle>
#include <QVariant>

namespace quorvane {
namespace {

constexpr const char* kindProperty = "kind";

QList<QByteArray> wordsOf(const QWidget& widget) {
    return widget.property(kindProperty).toByteArray().split(' ');
}

}  // namespace

void setKind(QWidget& widget, const char* words) {
    if (widget.property(kindProperty).toByteArray() == words) return;
    widget.setProperty(kindProperty, QByteArray(words));
    // The style has seen it already, or will when it is shown.
    if (widget.testAttribute(Qt::WA_WState_Polished)) widget.style()->polish(&widget);
    widget.updateGeometry();
    widget.update();
}

void setKind(QWidget& widget, const char* word, bool isSet) {
    auto words = wordsOf(widget);
    words.removeAll(QByteArray());
    if (words.contains(word) == isSet) return;
    if (isSet)
        words.append(word);
    else
        words.removeAll(word);
    setKind(widget, words.join(' ').constData());
}

bool isKind(const QWidget* widget, const char* word) {
    return widget != nullptr && wordsOf(*widget).contains(word);
}

}  // namespace quorvane
