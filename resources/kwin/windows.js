// Tells the receiver which window is in front and which others there are, whenever that changes. The next picture waits
// for the answer to the last one, so that nobody gets more of them than he reads; after half a minute without an answer
// the script ends. Quorvane puts its own names in the place of those in capitals.
(function () {
    var isPlasma6 = workspace.windowActivated !== undefined;
    var front = null;
    var askedAt = 0;  // milliseconds; 0: there is an answer to everything
    var isStale = false;

    function described(window) {
        return {
            app: String(window.desktopFileName || window.resourceClass || ""),
            title: String(window.caption || ""),
            pid: Number(window.pid) || 0
        };
    }

    function picture() {
        var list = isPlasma6 ? workspace.windowList() : workspace.clientList();
        var windows = [];
        for (var i = 0; i < list.length; i++) windows.push(described(list[i]));
        return JSON.stringify({ front: front ? described(front) : null, windows: windows });
    }

    function answered() {
        askedAt = 0;
        if (isStale) tell();
    }

    function end() {
        callDBus("RECEIVER", "/Windows", "com.quorvane.Windows1", "Ended");
        callDBus("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting", "unloadScript", "SCRIPT");
    }

    function tell() {
        isStale = askedAt !== 0;
        if (!isStale) {
            askedAt = Date.now();
            callDBus("RECEIVER", "/Windows", "com.quorvane.Windows1", "Show", picture(), answered);
        } else if (Date.now() - askedAt > 30000) {
            end();
        }
    }

    function setFront(window) {
        if (front) {
            try { front.captionChanged.disconnect(tell); } catch (gone) {}
        }
        front = window || null;
        if (front) front.captionChanged.connect(tell);
        tell();
    }

    function removed(window) {
        if (window === front) front = null;
        tell();
    }

    (isPlasma6 ? workspace.windowActivated : workspace.clientActivated).connect(setFront);
    (isPlasma6 ? workspace.windowAdded : workspace.clientAdded).connect(function () { tell(); });
    (isPlasma6 ? workspace.windowRemoved : workspace.clientRemoved).connect(removed);
    setFront(isPlasma6 ? workspace.activeWindow : workspace.activeClient);
})();
