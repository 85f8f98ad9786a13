#include "shell/look/Chip.h"

#include "shell/look/Kind.h"
#include "shell/look/Theme.h"

namespace quorvane {
namespace {

constexpr struct {
    const char* word;
    QColor Theme::*ink;
} toneLooks[] = {
    {"", &Theme::text2}, {"info", &Theme::accInk}, {"ok", &Theme::ok}, {"warn", &Theme::warn}, {"bad", &Theme::bad}};

}  // namespace

const char* wordOf(Tone tone) {
    return toneLooks[static_cast<int>(tone)].word;
}

QColor Theme::*inkOf(Tone tone) {
    return toneLooks[static_cast<int>(tone)].ink;
}

Chip::Chip(const QString& text, Tone tone, QWidget* parent) : Label(text, TypeRole::label, &Theme::text2, parent) {
    setAlignment(Qt::AlignCenter);
    setContentsMargins(10, 4, 10, 4);
    setElided(true);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setTone(tone);
}

void Chip::setTone(Tone tone) {
    setKind(*this, (QByteArray("chip ") + wordOf(tone)).constData());
    setColor(inkOf(tone));
}

}  // namespace quorvane
