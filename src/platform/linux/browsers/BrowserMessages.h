#pragma once

#include "platform/Channel.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvane::platform {

/// Listens to the hosts of browsers and knows which page each of their profiles has in front. Made and destroyed on the
/// main thread, whose loop it needs; between messages it causes no wake-up.
class BrowserMessages {
public:
    using Say = std::function<void(const std::string&)>;

    /// Listens from now on at `socket`, in a folder that it makes private to the user. `say` gets lines for people, on
    /// the main thread; it may be empty. Without a path, or where it can't listen, there is never an answer.
    BrowserMessages(const std::optional<std::filesystem::path>& socket, Say say);
    BrowserMessages(const BrowserMessages&) = delete;
    BrowserMessages& operator=(const BrowserMessages&) = delete;
    ~BrowserMessages();  ///< No other thread may be asking any more.

    /// Why it does not listen, in one line; empty: it does.
    [[nodiscard]] const std::string& problem() const;

    /// Does a browser tell its page now, or why doesn't any? Main thread only.
    [[nodiscard]] Channel channel() const;

    /// Has this browser, a process, said anything since its host connected? From any thread.
    [[nodiscard]] bool knows(std::int64_t processIdentifier) const;

    /// The address of the page that this browser has in front, if the page's title begins the title of the window: the
    /// page may be in another window than the one that is asked for. Of several profiles it is the one whose title fits
    /// best. Where the process is not known, 0, it may be any browser's page. None for a private one. From any thread;
    /// any but the main one waits up to a quarter of a second for a page that fits, as a window may be ahead of its
    /// message.
    [[nodiscard]] std::optional<std::string> url(std::int64_t processIdentifier, const std::string& windowTitle);

    /// Does it say now that this window shows a page of which it may speak? From any thread, and without waiting.
    [[nodiscard]] bool isOrdinary(std::int64_t processIdentifier, const std::string& windowTitle) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quorvane::platform
