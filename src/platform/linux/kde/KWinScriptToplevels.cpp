#include "platform/linux/kde/KWinScriptToplevels.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace quorvane::platform {
namespace {

/// The next picture follows within some milliseconds, one after an answer that is late on purpose included.
constexpr Seconds untilNoneIsInFront = 0.2s;

ToplevelWindow windowOf(const QJsonValue& told) {
    return {.appId = told["app"].toString().toStdString(),
            .title = told["title"].toString().toStdString(),
            .processIdentifier = told["pid"].toInteger()};
}

}  // namespace

KWinScriptToplevels::KWinScriptToplevels(RunLoop& runLoop)
    : SettledToplevels(&runLoop, untilNoneIsInFront),
      script_(
          runLoop, [this](const QByteArray& picture) { show(picture); }, [this] { lose(); }) {}

void KWinScriptToplevels::show(const QByteArray& picture) {
    const auto told = QJsonDocument::fromJson(picture);
    std::vector<ToplevelWindow> all;
    for (const auto& window : told["windows"].toArray())
        all.push_back(windowOf(window));
    const auto front = told["front"];
    settle(front.isObject() ? std::optional(windowOf(front)) : std::nullopt, all);
}

Channel KWinScriptToplevels::channel() const {
    Channel channel{.question = "front window and activation", .name = "KWin script", .gives = Sight::applications};
    channel.reason = script_.problem();
    channel.isAvailable = channel.reason.empty();
    if (!channel.isAvailable) {
        channel.obstacle = Obstacle::other;
        channel.remedy = "Run quorvane-cli desktop install, so that KWin tells without a script.";
    }
    return channel;
}

}  // namespace quorvane::platform
