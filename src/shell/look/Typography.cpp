#include "shell/look/Typography.h"

#include "l10n/Localization.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

namespace quorvane {
namespace {

struct RoleMetrics {
    double size;
    double line;
    QFont::Weight weight = QFont::Normal;
    double letterSpacing = 0;  // logical pixels at 10 points
    bool isFixed = false;
};

RoleMetrics metricsOf(TypeRole role) {
    switch (role) {
    case TypeRole::display: return {28, 34, QFont::DemiBold, -0.015 * 28};
    case TypeRole::title: return {20, 28, QFont::DemiBold, -0.01 * 20};
    case TypeRole::head: return {15, 22, QFont::DemiBold};
    case TypeRole::body: return {13, 20};
    case TypeRole::bodyStrong: return {13, 20, QFont::Medium};
    case TypeRole::label: return {12, 16, QFont::Medium};
    case TypeRole::labelPlain: return {12, 16};
    case TypeRole::caption: return {11, 14};
    case TypeRole::bar: return {10, 14, QFont::DemiBold};
    case TypeRole::month: return {10, 13};
    case TypeRole::week: return {9, 12, QFont::Normal, -0.25};
    case TypeRole::weekSmall: return {8, 10, QFont::Normal, -0.25};
    case TypeRole::fixed: return {12, 19, QFont::Normal, 0, true};
    }
    return {13, 20};
}

constexpr std::size_t roleCount = static_cast<std::size_t>(TypeRole::fixed) + 1;

/// The font that the desktop gave the program, before ours took its place.
const QFont& desktopFont() {
    static const QFont font = QApplication::font();
    return font;
}

/// Chinese, Japanese and Korean share code points and differ in shapes: the language of the words comes first, then
/// that of the desktop, whose names and titles the user reads.
QStringList eastAsianFamilies() {
    const QStringList chinese{QStringLiteral("Noto Sans CJK SC"), QStringLiteral("WenQuanYi Micro Hei")};
    const QStringList japanese{QStringLiteral("Noto Sans CJK JP")};
    const QStringList korean{QStringLiteral("Noto Sans CJK KR")};
    const QLocale::Language desktop = QLocale::system().language();
    const bool areWordsChinese = Localization::fromEnvironment().language() == "zh";
    if (!areWordsChinese && desktop == QLocale::Japanese) return japanese + chinese + korean;
    if (!areWordsChinese && desktop == QLocale::Korean) return korean + chinese + japanese;
    return chinese + japanese + korean;
}

/// Only those that are there, as Qt would look for each missing one again and again.
QStringList present(const QStringList& wanted) {
    const QStringList installed = QFontDatabase::families();
    QStringList result;
    for (const QString& family : wanted) {
        if (installed.contains(family, Qt::CaseInsensitive)) result.append(family);
    }
    return result;
}

QStringList families(bool isFixed) {
    QStringList wanted = isFixed ? QStringList{QStringLiteral("Noto Sans Mono"), QStringLiteral("DejaVu Sans Mono")}
                                 : QStringList{QStringLiteral("Inter"), QStringLiteral("Noto Sans")};
    wanted += isFixed ? QFontDatabase::systemFont(QFontDatabase::FixedFont).family() : desktopFont().family();
    wanted += eastAsianFamilies();
    wanted += QStringLiteral("Noto Sans Arabic");
    QStringList result = present(wanted);
    if (result.isEmpty()) result.append(desktopFont().family());
    return result;
}

QFont makeFont(TypeRole role, const QStringList& proportional, const QStringList& fixed) {
    const RoleMetrics metrics = metricsOf(role);
    QFont font;
    font.setFamilies(metrics.isFixed ? fixed : proportional);
    font.setStyleHint(metrics.isFixed ? QFont::Monospace : QFont::SansSerif);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(metrics.size * typeScale()))));
    font.setWeight(metrics.weight);
    // Advances of the design, so that a text is as wide as its sizes say at every scale.
    font.setHintingPreference(QFont::PreferNoHinting);
    if (metrics.letterSpacing != 0) {
        font.setLetterSpacing(QFont::AbsoluteSpacing, metrics.letterSpacing * typeScale());
    }
    return font;
}

bool isDigit(QChar character) {
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

double widestDigit(const QFontMetricsF& metrics) {
    double widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit) {
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    }
    return widest;
}

/// Hands out the text's digits one by one and what stands between them in one piece, each with its offset and advance.
template <class Visit>
double forEachFigure(const QFontMetricsF& metrics, const QString& text, const Visit& visit) {
    const double cell = widestDigit(metrics);
    double x = 0;
    for (qsizetype at = 0; at < text.size();) {
        qsizetype end = at + 1;
        if (!isDigit(text[at])) {
            while (end < text.size() && !isDigit(text[end]))
                ++end;
        }
        const QString piece = text.mid(at, end - at);
        const double natural = metrics.horizontalAdvance(piece);
        const double advance = isDigit(text[at]) ? cell : natural;
        visit(x + (advance - natural) / 2, piece);
        x += advance;
        at = end;
    }
    return x;
}

}  // namespace

QFont font(TypeRole role) {
    static const std::array<QFont, roleCount> fonts = [] {
        const QStringList proportional = families(false);
        const QStringList fixed = families(true);
        std::array<QFont, roleCount> made;
        for (std::size_t index = 0; index < roleCount; ++index) {
            made[index] = makeFont(static_cast<TypeRole>(index), proportional, fixed);
        }
        return made;
    }();
    return fonts[static_cast<std::size_t>(role)];
}

int lineHeight(TypeRole role) {
    return static_cast<int>(std::lround(metricsOf(role).line * typeScale()));
}

double typeScale() {
    static const double scale = [] {
        // Where no desktop stands behind the program, the font is Qt's stand-in and nobody's wish.
        const QString platform = QGuiApplication::platformName();
        const bool hasDesktop = (platform == QLatin1String("xcb") || platform.startsWith(QLatin1String("wayland"))) &&
                                !qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP");
        const double points = desktopFont().pointSizeF();
        return hasDesktop && points > 0 ? std::clamp(points / 10, 0.8, 3.0) : 1.0;
    }();
    return scale;
}

double drawFigures(QPainter& painter, const QRectF& rectangle, int alignment, const QString& text) {
    const QFontMetricsF metrics(painter.font(), painter.device());
    const double width = forEachFigure(metrics, text, [](double, const QString&) {});
    double x = rectangle.left();
    if ((alignment & Qt::AlignRight) != 0) x = rectangle.right() - width;
    if ((alignment & Qt::AlignHCenter) != 0) x = rectangle.center().x() - width / 2;
    double baseline = rectangle.top() + metrics.ascent();
    if ((alignment & Qt::AlignBottom) != 0) baseline = rectangle.bottom() - metrics.descent();
    if ((alignment & Qt::AlignVCenter) != 0) {
        baseline = rectangle.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    }
    // The pieces stand from left to right in every language; so must what is in each of them.
    const Qt::LayoutDirection direction = painter.layoutDirection();
    painter.setLayoutDirection(Qt::LeftToRight);
    forEachFigure(metrics, text,
                  [&](double offset, const QString& piece) { painter.drawText(QPointF(x + offset, baseline), piece); });
    painter.setLayoutDirection(direction);
    return width;
}

double figuresWidth(const QFont& font, const QString& text) {
    return forEachFigure(QFontMetricsF(font), text, [](double, const QString&) {});
}

QString isolated(const QString& text) {
    return QChar(0x2068) + text + QChar(0x2069);
}

}  // namespace quorvane
