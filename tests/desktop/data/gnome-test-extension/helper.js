// Does for a test what its user would do with the pointer: brings windows to the front. It owns its name once the shell
// is up and shows windows instead of the overview.

const INTERFACE = `<node><interface name="com.quorvane.Test1">
  <method name="Activate"><arg type="s" direction="in"/><arg type="b" direction="out"/></method>
</interface></node>`;

class Helper {
    enable() {
        IBusManager.getIBusManager()._spawn = () => {};
        this._object = Gio.DBusExportedObject.wrapJSObject(INTERFACE, this);
        this._object.export(Gio.DBus.session, '/com/quorvane/Test');
        const ready = () => {
            Main.overview.hide();
            this._name = Gio.DBus.session.own_name('com.quorvane.Test', 0, null, null);
        };
        if (!Main.layoutManager._startingUp) return ready();
        Main.sessionMode.hasOverview = false;
        this._startId = Main.layoutManager.connect('startup-complete', ready);
    }

    disable() {
        if (this._startId) Main.layoutManager.disconnect(this._startId);
        if (this._name) Gio.DBus.session.unown_name(this._name);
        this._startId = this._name = 0;
        this._object.unexport();
    }

    Activate(wmClass) {
        const actor = global.get_window_actors().find(a => a.meta_window.get_wm_class() === wmClass);
        if (actor) Main.activateWindow(actor.meta_window);
        return Boolean(actor);
    }
}
