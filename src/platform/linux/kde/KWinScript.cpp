#include "platform/linux/kde/KWinScript.h"

#include "base/Environment.h"
#include "platform/linux/kde/KWinScriptText.h"

#include <QDBusPendingCallWatcher>
#include <QDir>
#include <algorithm>

namespace quorvane::platform {
namespace {

const QString kwinService = QStringLiteral("org.kde.KWin");
const QString scriptingPath = QStringLiteral("/Scripting");
const QString scriptingInterface = QStringLiteral("org.kde.kwin.Scripting");
const QString scriptInterface = QStringLiteral("org.kde.kwin.Script");
const QString ownPath = QStringLiteral("/Windows");
const QString ownInterface = QStringLiteral("com.quorvane.Windows1");
const QString isNotThere = QStringLiteral("KWin is not on the session bus");
const QString hasNotAnswered = QStringLiteral("KWin hasn't answered yet");

constexpr int kwinPatienceInMilliseconds = 5000;
constexpr int endPatienceInMilliseconds = 200;
constexpr Seconds firstReload = 1s;
constexpr Seconds longestReload = 30s;

/// A title that never rests gets so many answers in a second at once, and the further ones late. KWin sends the next
/// picture only after an answer.
constexpr int promptAnswers = 20;
constexpr Seconds lateness = 0.1s;

QDBusMessage toKWin(const QString& path, const QString& interface, const QString& method,
                    const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(kwinService, path, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return message;
}

}  // namespace

KWinScript::KWinScript(RunLoop& runLoop, std::function<void(const QByteArray&)> show, std::function<void()> lose)
    : runLoop_(runLoop), show_(std::move(show)), lose_(std::move(lose)), session_(DBusConnection::toSession()),
      problem_(hasNotAnswered) {
    if (!session_.isConnected()) return;
    name_ = "quorvane-" + session_.bus().baseService().mid(1);
    session_.bus().registerVirtualObject(ownPath, this);
    watcher_.setConnection(session_.bus());
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher_.addWatchedService(kwinService);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { follow(owner); });
    auto question =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
    question << kwinService;
    auto* pending = new QDBusPendingCallWatcher(session_.bus().asyncCall(question, kwinPatienceInMilliseconds), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        if (!pending->isError())
            follow(pending->reply().arguments().value(0).toString());
        else if (owner_.isEmpty())
            problem_ = isNotThere;
    });
}

KWinScript::~KWinScript() {
    if (!session_.isConnected()) return;
    if (!owner_.isEmpty())
        session_.bus().call(toKWin(scriptingPath, scriptingInterface, QStringLiteral("unloadScript"), {name_}),
                            QDBus::Block, endPatienceInMilliseconds);
    session_.bus().unregisterObject(ownPath);
}

void KWinScript::follow(const QString& owner) {
    if (owner == owner_) return;
    owner_ = owner;
    ++attempt_;
    problem_ = owner.isEmpty() ? isNotThere : hasNotAnswered;
    untilRetry_ = firstReload;
    retry_.reset();
    lateAnswer_.reset();
    lose_();
    if (!owner_.isEmpty()) load();
}

void KWinScript::load() {
    ++attempt_;
    const auto runtimeDirectory = environment("XDG_RUNTIME_DIR");
    const auto folder = runtimeDirectory.empty() ? QDir::tempPath() : QString::fromStdString(runtimeDirectory);
    file_ = std::make_unique<QTemporaryFile>(folder + "/quorvane-XXXXXX.js");
    const auto text = kwinScriptText(session_.bus().baseService().toStdString(), name_.toStdString());
    if (!file_->open() || file_->write(text.data(), static_cast<qint64>(text.size())) < 0 || !file_->flush())
        return fail("the script for KWin can't be written to " + folder + ": " + file_->errorString());
    // One that is left from an attempt without an answer would be in the way.
    call(scriptingPath, scriptingInterface, QStringLiteral("unloadScript"), {name_}, [this](const QDBusMessage&) {
        call(scriptingPath, scriptingInterface, QStringLiteral("loadScript"), {file_->fileName(), name_},
             [this](const QDBusMessage& loaded) {
                 const int number = loaded.arguments().value(0).toInt();
                 if (loaded.type() != QDBusMessage::ReplyMessage || number < 0)
                     return fail("KWin doesn't take the script: " + loaded.errorMessage());
                 run({QStringLiteral("/Scripting/Script%1").arg(number), QStringLiteral("/%1").arg(number)});
             });
    });
}

/// The first path is that of newer versions.
void KWinScript::run(const QStringList& paths) {
    call(paths.first(), scriptInterface, QStringLiteral("run"), {}, [this, paths](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage && paths.size() > 1) return run(paths.mid(1));
        if (answer.type() != QDBusMessage::ReplyMessage)
            return fail("KWin doesn't run the script: " + answer.errorMessage());
        file_.reset();
        untilRetry_ = firstReload;
    });
}

void KWinScript::fail(const QString& problem) {
    problem_ = problem;
    file_.reset();
    retry_ = runLoop_.after(untilRetry_, [this] { load(); });
    untilRetry_ = std::min(untilRetry_ * 2, longestReload);
}

/// `answered` isn't called any more when KWin has gone meanwhile, or the script is loaded anew.
void KWinScript::call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments, const std::function<void(const QDBusMessage&)>& answered) {
    auto* pending = new QDBusPendingCallWatcher(
        session_.bus().asyncCall(toKWin(path, interface, method, arguments), kwinPatienceInMilliseconds), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, answered, attempt = attempt_] {
        pending->deleteLater();
        if (attempt == attempt_) answered(pending->reply());
    });
}

QString KWinScript::introspect(const QString&) const {
    return {};
}

bool KWinScript::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    if (owner_.isEmpty() || message.service() != owner_ || message.interface() != ownInterface) return false;
    if (message.member() == u"Show" && message.signature() == u"s") {
        problem_.clear();
        answer(message);
        show_(message.arguments().at(0).toString().toUtf8());
        return true;
    }
    if (message.member() != u"Ended") return false;
    load();
    return true;
}

void KWinScript::answer(const QDBusMessage& message) {
    if (const Seconds now = runLoop_.uptime(); now - countedSince_ >= 1s) {
        countedSince_ = now;
        answers_ = 0;
    }
    auto reply = [this, message] { session_.bus().send(message.createReply()); };
    if (++answers_ <= promptAnswers)
        reply();
    else
        lateAnswer_ = runLoop_.after(lateness, reply);
}

std::string KWinScript::problem() const {
    return session_.isConnected() ? problem_.toStdString() : "no session bus";
}

}  // namespace quorvane::platform
