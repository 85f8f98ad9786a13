#include "desktop/support/ApplicationScreen.h"

#include "base/Calendar.h"
#include "desktop/support/Waiting.h"
#include "platform/Clock.h"
#include "platform/linux/x11/X11Windows.h"

#include <chrono>
#include <cstdlib>
#include <fmt/format.h>
#include <stdexcept>
#include <utility>

namespace quorvane {
namespace {

constexpr int hourOfTests = 14;  // o'clock: a day with a past, far from both midnights
constexpr std::size_t longestRound = 60;

/// A zone where it is that hour now, "Etc/GMT-3" three hours ahead of UTC.
const std::string& zone() {
    static const std::string name = [] {
        const auto now = std::chrono::floor<std::chrono::hours>(platform::currentDate().time_since_epoch());
        return fmt::format("Etc/GMT{:+}", now.count() % 24 - hourOfTests);
    }();
    return name;
}

}  // namespace

ApplicationScreen::ApplicationScreen() {
    session_.environment().set("TZ", zone());
    setting_.folder = session_.dataHome();
    setting_.environment = {{"PATH", "/usr/bin:/bin"},
                            {"TZ", zone()},
                            {"LANG", "C.UTF-8"},
                            {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"},
                            {"QUORVANE_CONSOLE", "1"}};
    for (const char* name : {"HOME", "DISPLAY", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS",
                             "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "GSETTINGS_BACKEND"})
        if (const char* value = std::getenv(name)) setting_.environment[name] = value;
    std::filesystem::create_directories(session_.dataHome() / "quorvane");
}

void ApplicationScreen::start(const std::function<bool()>& isReady) {
    application_ = std::make_unique<ProgramRun>(QUORVANE, std::vector<std::string>(), setting_);
    const auto isThere = [&] {
        return window() == platform::X11Windows::active(x11_) && (!isReady || isReady()) && !focus().empty();
    };
    if (!waitUntil(isThere, 20s)) throw std::runtime_error("the window does not come");
}

ModelContainer ApplicationScreen::openStore() const {
    return ModelContainer({.file = session_.dataHome() / "quorvane/quorvane.sqlite"});
}

std::vector<std::string> ApplicationScreen::records() const {
    auto store = openStore();
    std::vector<std::string> found;
    for (const auto& record :
         store.mainContext().fetch<ActivityRecord>({.sort = {ascending(&ActivityRecord::startTime)}})) {
        found.push_back(record->appName().value_or(""));
        if (const auto category = record->category()) found.back() += " " + *category;
        if (!record->endTime()) found.back() += " open";
    }
    return found;
}

std::shared_ptr<ActivityRecord> ApplicationScreen::insertRecord(ModelContext& context, const std::string& app,
                                                                double start, double end) {
    auto record = std::make_shared<ActivityRecord>(ActivityRecord::Values{
        .startTime = today(start), .endTime = today(end), .appBundleId = "org.example." + app, .appName = app});
    context.insert(record);
    return record;
}

Date ApplicationScreen::today(double hour) {
    return Calendar::current().startOfDay(platform::currentDate()) + hour * 1h;
}

// --- What is shown

std::optional<AccessibleNode> ApplicationScreen::find(const std::string& role, const std::string& name) {
    std::optional<AccessibleNode> found;
    for (auto& node : nodes()) {
        if (node.role != role) continue;
        if (node.name == name) return std::move(node);
        if (!found && node.name.find(name) != std::string::npos) found = std::move(node);
    }
    return found;
}

bool ApplicationScreen::comes(const std::string& role, const std::string& name) {
    return waitUntil([&] { return find(role, name).has_value(); });
}

bool ApplicationScreen::goes(const std::string& role, const std::string& name) {
    return waitUntil([&] { return !find(role, name); });
}

AccessibleNode ApplicationScreen::part(const std::string& role, const std::string& name) {
    std::optional<AccessibleNode> found;
    if (!waitUntil([&] { return (found = find(role, name)).has_value(); }))
        throw std::runtime_error(fmt::format("there is no {} \"{}\"", role, name));
    return *found;
}

std::optional<AccessibleNode> ApplicationScreen::focused() {
    // The current item of a list, a table or a row of tabs says that it has the focus, whoever has it.
    std::optional<AccessibleNode> found;
    std::optional<AccessibleNode> item;
    std::vector<bool> isFocused;  // of the node and those around it, by depth
    for (auto& node : nodes()) {
        isFocused.resize(static_cast<std::size_t>(node.depth));
        const bool isIn = !isFocused.empty() && isFocused.back();
        isFocused.push_back(node.isFocused);
        if (!node.isFocused) continue;
        if (node.role == "filler" && found) continue;  // the inside of what has it
        const bool isItem =
            node.role == "cell" || node.role == "list item" || node.role == "tree item" || node.role == "page tab";
        (isItem && !isIn ? item : found) = std::move(node);
    }
    return found ? found : item;
}

std::string ApplicationScreen::focus() {
    const auto found = focused();
    return found ? found->name : "";
}

bool ApplicationScreen::focusComesTo(const std::string& name) {
    return waitUntil([&] { return focus() == name; });
}

std::vector<std::string> ApplicationScreen::unnamed() {
    std::vector<std::string> found;
    for (const auto& node : nodes())
        if (node.isFocusable && (node.name.empty() || node.role.empty() || node.role == "filler"))
            found.push_back(fmt::format("{} '{}' at {},{}", node.role, node.name, node.place.x(), node.place.y()));
    return found;
}

std::vector<std::string> ApplicationScreen::tabRound() {
    using Stop = std::pair<std::string, QPoint>;  // two may have one name, as in lists of the same controls
    const auto stop = [this] {
        const auto node = focused();
        return node ? Stop(node->name, node->place.topLeft()) : Stop();
    };
    // A field for a date stops at its day, month and year.
    const auto step = [&](const Stop& from) {
        Stop to = from;
        for (int presses = 0; presses < 4 && (to == from || to.first.empty()); ++presses) {
            press("Tab");
            (void)waitUntil([&] { return (to = stop()) != from && !to.first.empty(); }, 1s);
        }
        return to;
    };
    (void)waitUntil([&] { return staysTrue([&, now = stop()] { return stop() == now; }, 0.2s); });  // what comes moves
    const Stop first = stop();
    std::vector<std::string> round;
    Stop last = first;
    do {
        round.push_back((last = step(last)).first);
    } while (last != first && round.size() < longestRound);
    return round;
}

xcb_window_t ApplicationScreen::window() {
    for (const auto window : platform::X11Windows::all(x11_))
        if (platform::X11Windows::title(x11_, window) == "Quorvane") return window;
    return XCB_WINDOW_NONE;
}

unsigned ApplicationScreen::pixel(const QPoint& at) {
    const auto image = x11_.reply(xcb_get_image_reply, xcb_get_image(x11_.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, x11_.root(),
                                                                     static_cast<std::int16_t>(at.x()),
                                                                     static_cast<std::int16_t>(at.y()), 1, 1, ~0U));
    if (!image) return 0;
    const auto* bytes = xcb_get_image_data(image.get());
    return static_cast<unsigned>(bytes[2] << 16 | bytes[1] << 8 | bytes[0]);
}

// --- What the user does

void ApplicationScreen::xdotool(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "xdotool");
    EXPECT_EQ(run(std::move(arguments)), 0);
}

void ApplicationScreen::click(const std::string& role, const std::string& name, int times) {
    // What a sheet brings along moves until the sheet has come.
    QRect place = part(role, name).place;
    (void)waitUntil([&] {
        const QRect before = std::exchange(place, part(role, name).place);
        return before == place && staysTrue([&] { return part(role, name).place == place; }, 0.1s);
    });
    const auto at = place.center() * scale_;
    xdotool({"mousemove", std::to_string(at.x()), std::to_string(at.y()), "click", "--repeat", std::to_string(times),
             "--delay", "30", "1"});
}

}  // namespace quorvane
