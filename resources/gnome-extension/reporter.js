// Tells on the session bus which window has the focus and whose windows there are. Quorvane may come and go; nobody else
// is needed. While the screen is locked the shell turns extensions off, and then nobody owns the name.

const NAME = 'com.quorvane.Focus';
const PATH = '/com/quorvane/Focus';
const INTERFACE = `<node><interface name="com.quorvane.Focus1">
  <method name="Get">
    <arg type="a{sv}" direction="out" name="window"/>
    <arg type="aa{sv}" direction="out" name="applications"/>
  </method>
  <signal name="Changed">
    <arg type="a{sv}" name="window"/>
    <arg type="aa{sv}" name="applications"/>
  </signal>
</interface></node>`;

// Milliseconds between two signals, so that a title that runs like a clockwork wakes nobody up for each of its turns.
const SPACING = 50;

function text(value) {
    return new GLib.Variant('s', value || '');
}

/** The application of a window. Its identifier is "window:7" or so where no desktop file is known. */
function applicationOf(window) {
    const application = Shell.WindowTracker.get_default().get_window_app(window);
    return {
        app_id: text(application?.get_id().replace(/\.desktop$/, '')),
        app_name: text(application?.get_name()),
        wm_class: text(window.get_wm_class()),
        sandboxed_app_id: text(window.get_sandboxed_app_id()),
        gtk_application_id: text(window.get_gtk_application_id()),
        pid: new GLib.Variant('u', Math.max(0, window.get_pid())),
    };
}

/** Of each application one entry, without a title: those of the windows behind are nobody's business. */
function applications() {
    const found = new Map();
    for (const actor of global.get_window_actors()) {
        const window = actor.meta_window;
        if (!window || window.is_override_redirect()) continue;
        const application = applicationOf(window);
        found.set(`${application.app_id.unpack()} ${application.wm_class.unpack()} ${window.get_pid()}`, application);
    }
    return [...found.values()];
}

class FocusReporter {
    enable() {
        this._timer = 0;
        this._last = 0;
        this._window = null;
        this._object = Gio.DBusExportedObject.wrapJSObject(INTERFACE, this);
        this._object.export(Gio.DBus.session, PATH);
        this._name = Gio.DBus.session.own_name(NAME, Gio.BusNameOwnerFlags.NONE, null, null);
        this._tracker = Shell.WindowTracker.get_default();
        this._focusId = global.display.connect('notify::focus-window', () => this._follow());
        this._windowsId = this._tracker.connect('tracked-windows-changed', () => this._queue());
        this._follow();
    }

    disable() {
        global.display.disconnect(this._focusId);
        this._tracker.disconnect(this._windowsId);
        this._letGo();
        if (this._timer) GLib.source_remove(this._timer);
        this._timer = 0;
        Gio.DBus.session.unown_name(this._name);
        this._object.unexport();
        this._object = null;
    }

    Get() {
        const window = this._window ? {...applicationOf(this._window), title: text(this._window.get_title())} : {};
        return new GLib.Variant('(a{sv}aa{sv})', [window, applications()]);
    }

    _letGo() {
        if (this._window) this._window.disconnect(this._titleId);
        this._window = null;
    }

    _follow() {
        this._letGo();
        this._window = global.display.focus_window;
        if (this._window) this._titleId = this._window.connect('notify::title', () => this._queue());
        this._queue();
    }

    /** One signal for a burst of changes, the first of them at once. */
    _queue() {
        if (this._timer) return;
        const rest = Math.max(0, this._last + SPACING - GLib.get_monotonic_time() / 1000);
        this._timer = GLib.timeout_add(GLib.PRIORITY_DEFAULT, Math.ceil(rest), () => {
            this._timer = 0;
            this._last = GLib.get_monotonic_time() / 1000;
            this._object.emit_signal('Changed', this.Get());
            return GLib.SOURCE_REMOVE;
        });
    }
}
