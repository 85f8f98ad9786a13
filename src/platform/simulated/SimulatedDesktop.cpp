#include "platform/simulated/SimulatedDesktop.h"

#include <algorithm>
#include <utility>

namespace quorvane::platform {

void SimulatedDesktop::bringToFront(std::optional<std::string> bundleId, std::optional<std::string> name) {
    const ForegroundApplication application{std::move(bundleId), std::move(name)};
    foreground_.setFrontmost(application);
    foreground_.sendActivation(application);
}

void SimulatedDesktop::sendMalformedActivation() {
    foreground_.sendActivation(std::nullopt);
}

void SimulatedDesktop::setFrontmostSilently(std::optional<std::string> bundleId, std::optional<std::string> name) {
    foreground_.setFrontmost(ForegroundApplication{std::move(bundleId), std::move(name)});
}

void SimulatedDesktop::noFrontmost() {
    foreground_.setFrontmost(std::nullopt);
}

void SimulatedDesktop::closeLastWindow() {
    noFrontmost();
    foreground_.sendVacancy();
}

void SimulatedDesktop::setWindowTitle(std::optional<std::string> title) {
    if (foreground_.underlying()) foreground_.setWindowTitle(*foreground_.underlying(), std::move(title));
}

void SimulatedDesktop::setWindowTitle(std::string bundleId, std::optional<std::string> title) {
    foreground_.setWindowTitle({.bundleIdentifier = std::move(bundleId)}, std::move(title));
}

void SimulatedDesktop::noteInput() {
    idle_.noteInput();
    returns_.noteInput();
}

void SimulatedDesktop::pressKey() {
    noteInput();
    keys_.press();
}

void SimulatedDesktop::releaseKey() {
    noteInput();
    keys_.release();
}

void SimulatedDesktop::click(Over over) {
    act(over);
}

void SimulatedDesktop::scroll(Over over) {
    act(over);
}

void SimulatedDesktop::act(Over over) {
    noteInput();
    pointer_.act(over == Over::ownWindow);
}

void SimulatedDesktop::movePointer(Point position) {
    noteInput();
    pointer_.moveTo(position);
}

void SimulatedDesktop::typeUntil(Date end, Seconds interval) {
    typist_.reset();
    if (runLoop_.now() <= end) type(end, interval);
}

void SimulatedDesktop::type(Date end, Seconds interval) {
    pressKey();
    releaseKey();
    const Seconds left = end - runLoop_.now();
    if (left <= 0s) return typist_.reset();
    typist_ = runLoop_.after(std::min(interval, left), [this, end, interval] { type(end, interval); });
}

void SimulatedDesktop::lock() {
    foreground_.setCovered(lockerShowsLoginWindow_);
    systemEvents_.send(SystemEvent::screenLocked);
}

void SimulatedDesktop::unlock() {
    foreground_.setCovered(false);
    systemEvents_.send(SystemEvent::screenUnlocked);
}

}  // namespace quorvane::platform
