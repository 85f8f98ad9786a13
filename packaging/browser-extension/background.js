// Tells Quorvane's host which page is in front, at each change and only then. Of private windows it tells that there is
// one, or rather that no page of which it may speak is in front.
"use strict";

const api = globalThis.browser ?? globalThis.chrome;
const hostName = "org.zelkor.quorvane";
const longestUrl = 8192;
const longestTitle = 1024;
const shortestPause = 1_000; // milliseconds
const longestPause = 300_000;
const nothing = { v: 1, private: true };

let port = null;
let pause = shortestPause; // before the next connection, once this one has ended
let isPausing = false;
let lastTold = "";
let isAway = false; // no window that is seen has the focus
let isLooking = false;
let mustLook = false;

// A text that any reader of JSON accepts: halves of a character are not UTF-8.
function bounded(text, length) {
    return (text ?? "").slice(0, length).replace(/\p{Surrogate}/gu, "\ufffd");
}

// The page that has the user's attention. The extension does not see private windows: when one of them takes the focus,
// as when another application does, none of the windows that it sees has it. The event says so at once, the window
// itself a little later.
async function pageInFront() {
    if (isAway) return nothing;
    try {
        const window = await api.windows.getLastFocused();
        if (!window.focused || window.incognito) return nothing;
        const [tab] = await api.tabs.query({ active: true, windowId: window.id });
        if (!tab || tab.incognito || isAway) return nothing;
        return {
            v: 1,
            url: bounded(tab.url || tab.pendingUrl, longestUrl),
            title: bounded(tab.title, longestTitle),
        };
    } catch {
        return nothing; // no window is left, or it went while it was looked at
    }
}

function connect() {
    const opened = api.runtime.connectNative(hostName);
    const openedAt = Date.now();
    port = opened;
    lastTold = "";
    opened.onDisconnect.addListener(() => {
        // Reading the cause keeps the browser from calling it an error of the extension.
        void api.runtime.lastError;
        if (port !== opened) return;
        port = null;
        // A host that served for a while is worth a quick return; one that is missing is not.
        if (Date.now() - openedAt > longestPause) pause = shortestPause;
        isPausing = true;
        setTimeout(() => {
            isPausing = false;
            report();
        }, pause);
        pause = Math.min(2 * pause, longestPause);
    });
}

function tell(message) {
    if (isPausing) return;
    if (!port) connect();
    const text = JSON.stringify(message);
    if (text === lastTold) return;
    lastTold = text;
    port.postMessage(message);
}

// Events come in bursts, and each look takes a while: one look at a time, and one more if something happened meanwhile.
async function report() {
    mustLook = true;
    if (isLooking) return;
    isLooking = true;
    while (mustLook) {
        mustLook = false;
        tell(await pageInFront());
    }
    isLooking = false;
}

api.tabs.onActivated.addListener(report);
api.tabs.onUpdated.addListener((id, change, tab) => {
    if (tab.active && (change.url || change.title !== undefined || change.status === "complete")) report();
});
api.tabs.onReplaced?.addListener(report);
api.windows.onFocusChanged.addListener((id) => {
    isAway = id === api.windows.WINDOW_ID_NONE;
    report();
});
api.windows.onRemoved.addListener(report);
api.runtime.onStartup.addListener(report);
api.runtime.onInstalled.addListener(report);
report();
