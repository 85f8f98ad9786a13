#include "shell/look/Chip.h"

#include "shell/look/Kind.h"
#include "shell/look/Theme.h"

namespace quorvane {

Chip::Chip(const QString& text, Tone tone, QWidget* parent) : Label(text, TypeRole::label, &Theme::text2, parent) {
    setAlignment(Qt::AlignCenter);
    setContentsMargins(10, 4, 10, 4);
    setElided(true);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setTone(tone);
}

void Chip::setTone(Tone tone) {
    static constexpr struct {
        const char* kind;
        QColor Theme::*ink;
    } looks[] = {{"chip", &Theme::text2},
                 {"chip info", &Theme::accInk},
                 {"chip ok", &Theme::ok},
                 {"chip warn", &Theme::warn},
                 {"chip bad", &Theme::bad}};
    const auto& look = looks[static_cast<int>(tone)];
    setKind(*this, look.kind);
    setColor(look.ink);
}

}  // namespace quorvane
