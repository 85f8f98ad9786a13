#include "platform/linux/bus/MprisTrack.h"

#include <QDBusArgument>
#include <QUrl>
#include <algorithm>

namespace quorvane::platform {
namespace {

const QString path = QStringLiteral("/org/mpris/MediaPlayer2");
const QString application = QStringLiteral("org.mpris.MediaPlayer2");
const QString player = QStringLiteral("org.mpris.MediaPlayer2.Player");

std::string textOf(const QVariant& value) {
    return value.typeId() == QMetaType::QString ? value.toString().toStdString() : std::string();
}

/// A map arrives as it was on the wire; one that isn't of this form must not be read as one.
QVariantMap mapOf(const QVariant& value) {
    if (value.typeId() != qMetaTypeId<QDBusArgument>()) return value.toMap();
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == u"a{sv}" ? qdbus_cast<QVariantMap>(argument) : QVariantMap();
}

MprisTrack trackOf(SessionBusQuestions& bus, const QString& name) {
    const auto metadata = mapOf(bus.property(name, path, player, QStringLiteral("Metadata")));
    const QUrl url(QString::fromStdString(textOf(metadata.value(QStringLiteral("xesam:url")))));
    return {.title = textOf(metadata.value(QStringLiteral("xesam:title"))), .file = url.toLocalFile().toStdString()};
}

QString statusOf(SessionBusQuestions& bus, const QString& name) {
    return bus.property(name, path, player, QStringLiteral("PlaybackStatus")).toString();
}

std::optional<MprisTrack> bestTrack(SessionBusQuestions& bus, const QStringList& players) {
    QString paused;
    for (const auto& name : players) {
        const auto status = statusOf(bus, name);
        if (status == u"Playing") return trackOf(bus, name);
        if (status == u"Paused" && paused.isEmpty()) paused = name;
    }
    return paused.isEmpty() ? std::nullopt : std::optional(trackOf(bus, paused));
}

QStringList playersOf(SessionBusQuestions& bus, pid_t pid, const QStringList& all) {
    QStringList players;
    for (const auto& name : all)
        if (pid > 0 && bus.processOf(name) == pid) players += name;
    return players;
}

QStringList playersOf(SessionBusQuestions& bus, pid_t pid,
                      const std::function<bool(const std::string&)>& isApplication) {
    const auto all = bus.names(application + u'.');
    auto players = playersOf(bus, pid, all);
    if (players.isEmpty())
        for (const auto& name : all)
            if (isApplication(textOf(bus.property(name, path, application, QStringLiteral("DesktopEntry")))))
                players += name;
    return players;
}

}  // namespace

std::optional<MprisTrack> mprisTrack(SessionBusQuestions& bus, pid_t pid,
                                     const std::function<bool(const std::string&)>& isApplication) {
    return bestTrack(bus, playersOf(bus, pid, isApplication));
}

bool mprisPlays(SessionBusQuestions& bus, pid_t pid, const std::function<bool(const std::string&)>& isApplication) {
    const auto players = playersOf(bus, pid, isApplication);
    return std::any_of(players.begin(), players.end(),
                       [&](const QString& name) { return statusOf(bus, name) == u"Playing"; });
}

std::optional<MprisTrack> mprisTrack(SessionBusQuestions& bus, pid_t pid) {
    return bestTrack(bus, playersOf(bus, pid, bus.names(application + u'.')));
}

}  // namespace quorvane::platform
