#include "platform/linux/accessibility/AtspiWindows.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr Seconds patienceForGreeting = 0.25s;
constexpr Seconds patienceForAnswer = 0.3s;
constexpr Seconds patienceForRegistry = 2s;
constexpr Seconds timeToAskAgain = 2s;
constexpr Seconds restFromFlood = 1s;
constexpr int mostSignalsASecond = 200;
constexpr qsizetype longestName = 4096;
constexpr qsizetype mostChildren = 100;
constexpr std::size_t mostWindows = 500;

/// Shells show themselves as windows while they have the keyboard: their overview, their lock screen.
constexpr std::array<std::string_view, 3> shells = {"gnome-shell", "cinnamon", "plasmashell"};

bool isOfShell(const ToplevelWindow& window) {
    return std::ranges::find(shells, window.appId) != shells.end();
}

const QString registryName = QStringLiteral("org.a11y.atspi.Registry");
const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
const QString windowEvents = QStringLiteral("org.a11y.atspi.Event.Window");
const QString objectEvents = QStringLiteral("org.a11y.atspi.Event.Object");

QDBusMessage questionTo(const AtspiReference& element, const QString& interface, const char* method,
                        const QVariantList& arguments = {}) {
    auto question =
        QDBusMessage::createMethodCall(element.bus, element.path.path(), interface, QString::fromLatin1(method));
    question.setArguments(arguments);
    return question;
}

AtspiReference registry(const char* path) {
    return {registryName, QDBusObjectPath(QString::fromLatin1(path))};
}

/// What happens to windows, and no more of all that is told there.
QStringList rules() {
    const QString window = "type='signal',interface='" + windowEvents + "',member='%1'";
    return {window.arg(QStringLiteral("Activate")),
            window.arg(QStringLiteral("Deactivate")),
            window.arg(QStringLiteral("Destroy")),
            "type='signal',interface='" + objectEvents + "',member='StateChanged',arg0='active'",
            QStringLiteral("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',member="
                           "'NameOwnerChanged',arg2=''"),
            BusListener::ownerRule(registryName)};
}

QString titleRule(const AtspiReference& window) {
    return "type='signal',sender='" + window.bus + "',path='" + window.path.path() + "',interface='" + objectEvents +
           "',member='PropertyChange',arg0='accessible-name'";
}

/// The question for an element's name.
QDBusMessage nameOf(const AtspiReference& element) {
    return questionTo(element, QStringLiteral("org.freedesktop.DBus.Properties"), "Get",
                      {accessibleInterface, QStringLiteral("Name")});
}

std::string textOf(const QVariant& variant) {
    return variant.value<QDBusVariant>().variant().toString().left(longestName).toStdString();
}

/// The elements in an answer, at most so many.
std::vector<AtspiReference> elements(const QDBusMessage& answer) {
    if (!BoundedBusConnection::isAnswer(answer, "a(so)")) return {};
    const auto all = qdbus_cast<QList<AtspiReference>>(answer.arguments().at(0));
    return {all.begin(), all.begin() + std::min(all.size(), mostChildren)};
}

}  // namespace

AtspiWindows::AtspiWindows(RunLoop& runLoop, const QString& address, std::function<void()> settled,
                           std::function<void()> ended)
    : runLoop_(runLoop), settled_(std::move(settled)), flood_(mostSignalsASecond),
      bus_(address, Deadline(patienceForGreeting)),
      heard_(bus_.observe([this](const QDBusMessage& signal) { hear(signal); })),
      ended_(bus_.observeEnd(std::move(ended))) {
    registerAtspiMessages();
    for (const char* member : {"Activate", "Deactivate", "Destroy"})
        bus_.hear("org.a11y.atspi.Event.Window", member);
    for (const char* member : {"StateChanged", "PropertyChange"})
        bus_.hear("org.a11y.atspi.Event.Object", member);
    bus_.hear("org.freedesktop.DBus", "NameOwnerChanged");
    listen();
}

bool AtspiWindows::isSettled() const {
    return std::ranges::none_of(windows_, [](const Window& window) { return window.isActive && window.open > 0; });
}

std::optional<ToplevelWindow> AtspiWindows::active() const {
    const Window* newest = nullptr;
    for (const Window& window : windows_)
        if (window.isActive && (newest == nullptr || window.since > newest->since)) newest = &window;
    const bool isKnown = newest != nullptr && newest->isKnown && !isOfShell(newest->told);
    return isKnown ? std::optional(newest->told) : std::nullopt;
}

std::vector<ToplevelWindow> AtspiWindows::all() const {
    std::vector<ToplevelWindow> found;
    for (const Window& window : windows_)
        if (window.isKnown && window.open == 0 && !isOfShell(window.told)) found.push_back(window.told);
    return found;
}

AtspiWindows::Found AtspiWindows::find(const QString& bus, const QString& path) {
    return std::ranges::find_if(windows_, [&](const Window& window) {
        return window.reference.bus == bus && window.reference.path.path() == path;
    });
}

void AtspiWindows::listen() {
    for (const QString& rule : rules())
        bus_.listen(rule);
    begin();
}

/// The registry comes with the first application, and once it has gone knows nothing of before.
void AtspiWindows::begin() {
    // Applications that nobody wants to hear don't tell.
    for (const char* event : {"window:activate", "window:deactivate", "window:destroy", "object:state-changed:active",
                              "object:property-change:accessible-name"})
        bus_.tell(questionTo(registry("/org/a11y/atspi/registry"), registryName, "RegisterEvent",
                             {QString::fromLatin1(event)}));
    askForApplications();
}

void AtspiWindows::hear(const QDBusMessage& signal) {
    if (isResting_) return;
    if (flood_.rises(runLoop_.uptime())) return rest();
    if (signal.service() == u"org.freedesktop.DBus") {
        if (signal.signature() == u"sss")
            noteOwner(signal.arguments().at(0).toString(), signal.arguments().at(2).toString());
        return;
    }
    // Type, two numbers, a value, and more that differs.
    if (!signal.signature().startsWith(u"siiv") || !signal.service().startsWith(u':')) return;
    const bool isOfWindow = signal.interface() == windowEvents;
    const auto detail = signal.arguments().at(0).toString();
    if (isOfWindow && signal.member() == u"Destroy")
        remove(signal);
    else if (isOfWindow)
        setActive(signal.service(), signal.path(), signal.member() == u"Activate");
    else if (signal.member() == u"StateChanged" && detail == u"active")
        setActive(signal.service(), signal.path(), signal.arguments().at(1).toInt() == 1);
    else if (signal.member() == u"PropertyChange" && detail == u"accessible-name")
        setTitle(signal);
}

/// Somebody tells more than anybody does who means it.
void AtspiWindows::rest() {
    isResting_ = true;
    for (const QString& rule : rules())
        bus_.forget(rule);
    for (const Window& window : windows_)
        if (window.isActive) bus_.forget(titleRule(window.reference));
    rest_ = runLoop_.after(restFromFlood, [this] {
        isResting_ = false;
        flood_.ebb();
        windows_.clear();
        listen();
    });
}

void AtspiWindows::setActive(const QString& bus, const QString& path, bool isActive) {
    auto found = find(bus, path);
    if (found == windows_.end()) {
        if (!isActive) return;
        found = add({bus, QDBusObjectPath(path)});
    }
    if (found == windows_.end() || found->isActive == isActive) return;
    if (isActive) {
        found->isActive = true;
        found->since = ++activations_;
        bus_.listen(titleRule(found->reference));
        askAbout(*found);
    } else {
        setInactive(*found);
    }
    settled_();
}

void AtspiWindows::setInactive(Window& window) {
    if (std::exchange(window.isActive, false)) bus_.forget(titleRule(window.reference));
}

/// The end if there are too many.
AtspiWindows::Found AtspiWindows::add(const AtspiReference& reference) {
    if (reference.isNull() || windows_.size() >= mostWindows) return windows_.end();
    return windows_.insert(windows_.end(), Window{.reference = reference});
}

void AtspiWindows::setTitle(const QDBusMessage& signal) {
    const auto found = find(signal.service(), signal.path());
    const auto title = signal.arguments().at(3);
    if (found == windows_.end() || title.value<QDBusVariant>().variant().typeId() != QMetaType::QString) return;
    found->told.title = textOf(title);
    settled_();
}

void AtspiWindows::remove(const QDBusMessage& signal) {
    if (const auto found = find(signal.service(), signal.path()); found != windows_.end()) {
        setInactive(*found);
        windows_.erase(found);
    }
    settled_();
}

void AtspiWindows::noteOwner(const QString& name, const QString& owner) {
    if (name == registryName) {
        hasAnswered_ = false;
        if (!owner.isEmpty()) begin();
    } else if (owner.isEmpty()) {
        removeApplication(name);
    }
}

void AtspiWindows::removeApplication(const QString& bus) {
    const auto isItsOwn = [&](const Window& window) { return window.reference.bus == bus; };
    for (auto& window : windows_)
        if (isItsOwn(window)) setInactive(window);
    if (std::erase_if(windows_, isItsOwn) > 0) settled_();
}

/// A question about a window that may be gone when the answer comes.
void AtspiWindows::ask(Window& window, const QDBusMessage& question, const char* signature, Take take) {
    ++window.open;
    bus_.ask(question, patienceForAnswer,
             [this, reference = window.reference, signature, take](const QDBusMessage& answer) {
                 const auto found = find(reference.bus, reference.path.path());
                 if (found == windows_.end()) return;
                 if (BoundedBusConnection::isAnswer(answer, signature))
                     take(*found, answer.arguments().at(0));
                 else
                     found->isKnown = false;
                 if (--found->open <= 0) noteAnswered(found);
             });
}

void AtspiWindows::noteAnswered(Found window) {
    if (window->isKnown && !window->isWindow) {
        setInactive(*window);
        windows_.erase(window);
    } else if (!window->isKnown && window->isActive) {
        // Who has just been started may be busy.
        again_ = runLoop_.after(timeToAskAgain, [this] { askAgain(); });
    }
    settled_();
}

void AtspiWindows::askAgain() {
    for (Window& window : windows_)
        if (window.isActive && !window.isKnown && window.open == 0) askAbout(window);
}

void AtspiWindows::askAbout(Window& window) {
    window.isKnown = true;  // until an answer fails
    const AtspiReference application{window.reference.bus, QDBusObjectPath(AtspiReference::applicationPath())};
    ask(window, questionTo(window.reference, accessibleInterface, "GetRole"), "u",
        [](Window& of, const QVariant& role) { of.isWindow = AtspiRole::isWindow(role.toUInt()); });
    ask(window, nameOf(window.reference), "v", [](Window& of, const QVariant& name) { of.told.title = textOf(name); });
    ask(window, nameOf(application), "v", [](Window& of, const QVariant& name) { of.told.appId = textOf(name); });
    ask(window, BusListener::busQuestion("GetConnectionUnixProcessID", {window.reference.bus}), "u",
        [](Window& of, const QVariant& id) { of.told.processIdentifier = id.toUInt(); });
}

/// Which windows there are, and which is active: nobody tells that again.
void AtspiWindows::askForApplications() {
    bus_.ask(questionTo(registry("/org/a11y/atspi/accessible/root"), accessibleInterface, "GetChildren"),
             patienceForRegistry, [this](const QDBusMessage& answer) {
                 hasAnswered_ = answer.type() == QDBusMessage::ReplyMessage;
                 for (const auto& application : elements(answer))
                     askForWindows(application);
                 settled_();
             });
}

void AtspiWindows::askForWindows(const AtspiReference& application) {
    bus_.ask(questionTo(application, accessibleInterface, "GetChildren"), patienceForAnswer,
             [this](const QDBusMessage& answer) {
                 for (const auto& window : elements(answer)) {
                     if (find(window.bus, window.path.path()) != windows_.end()) continue;
                     const auto added = add(window);
                     if (added == windows_.end()) return;
                     askAbout(*added);
                     askForState(window);
                 }
             });
}

void AtspiWindows::askForState(const AtspiReference& window) {
    bus_.ask(questionTo(window, accessibleInterface, "GetState"), patienceForAnswer,
             [this, window](const QDBusMessage& answer) {
                 if (!BoundedBusConnection::isAnswer(answer, "au")) return;
                 const auto words = qdbus_cast<QList<uint>>(answer.arguments().at(0));
                 const bool isActive = !words.isEmpty() && (words.front() >> AtspiState::active & 1U) != 0;
                 if (isActive) setActive(window.bus, window.path.path(), true);
             });
}

}  // namespace quorvane::platform
