"""The desktops, each as a session of its own without a screen: folder, buses, logind, the compositor. They know how a
window comes to the front there, how somebody touches a key or the pointer, and how the screen is locked."""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from gi.repository import Gio, GLib

HERE = os.path.dirname(os.path.abspath(__file__))
LOGIND_SESSIONS = ("c1", "auto")  # KWin asks for the session that it belongs to as "auto"
KWIN_FOCUS = """(function () {
    var is6 = workspace.windowActivated !== undefined, windows = is6 ? workspace.windowList() : workspace.clientList();
    for (var i = 0; i < windows.length; i++)
        if (String(windows[i].resourceClass) === "%s") workspace[is6 ? "activeWindow" : "activeClient"] = windows[i];
})();
"""


class NotThere(Exception):
    """A program that the desktop needs is not installed."""


def wait_for(condition, what, limit=30):
    end = time.monotonic() + limit
    while not condition():
        if time.monotonic() > end:
            raise RuntimeError(f"waited {limit} s for {what}")
        time.sleep(0.05)


class Session:
    """What all desktops have."""

    needs = ()
    desktop = ""
    version = ("true",)
    locks = False
    aid = False  # is what the desktop needs installed by `quorvane-cli desktop install`?
    sees = True  # can Quorvane see the windows there?

    def __init__(self, cli):
        for program in self.needs + ("dbus-daemon",):
            if not shutil.which(program):
                raise NotThere(f"{program} is not installed")
        self.cli = cli
        self.folder = tempfile.mkdtemp(prefix="qd.")  # short: the path of a socket ends at 107 bytes
        self.processes = []
        self.log = open(os.path.join(self.folder, "log"), "w", encoding="utf-8")
        home, run = self.path("home"), self.path("run")
        for folder in (home, run, self.path("data/applications"), self.path("config"), self.path("cache")):
            os.makedirs(folder, 0o700)
        self.environment = {
            "PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "TZ": "UTC", "HOME": home, "USER": "somebody",
            "XDG_RUNTIME_DIR": run, "XDG_DATA_HOME": self.path("data"), "XDG_CONFIG_HOME": self.path("config"),
            "XDG_CACHE_HOME": self.path("cache"), "XDG_SESSION_ID": "c1", "XDG_SESSION_TYPE": "wayland",
            "XDG_CURRENT_DESKTOP": self.desktop, "WAYLAND_DISPLAY": "wayland-test"}
        if "LD_LIBRARY_PATH" in os.environ:
            self.environment["LD_LIBRARY_PATH"] = os.environ["LD_LIBRARY_PATH"]
        try:
            self.session_bus = self._bus("DBUS_SESSION_BUS_ADDRESS")
            self.system_bus = self._bus("DBUS_SYSTEM_BUS_ADDRESS")
            self._mock("--template", "logind")
            for name in LOGIND_SESSIONS:
                self._call_logind("/org/freedesktop/login1", "AddSession",
                                  GLib.Variant("(ssusb)", (name, "seat0", os.getuid(), "somebody", True)))
            self.start()
        except BaseException:
            self.show_log()
            self.close()
            raise

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)
        return self.path(name)

    def run(self, *command, **options):
        return subprocess.run(command, env=self.environment, stderr=self.log, stdout=subprocess.PIPE, text=True,
                              timeout=30, check=False, **options)

    def spawn(self, *command, **options):
        options = {"stdout": self.log, "stdin": subprocess.DEVNULL, **options}
        process = subprocess.Popen(command, env=self.environment, stderr=self.log, **options)
        self.processes.append(process)
        return process

    def close(self):
        """Ends what was started, the last one first; who forgets a request to end is made to."""
        for process in reversed(self.processes):
            for force in (signal.SIGTERM, signal.SIGTERM, signal.SIGKILL):
                if process.poll() is None:
                    process.send_signal(force)
                    try:
                        process.wait(2)
                    except subprocess.TimeoutExpired:
                        pass
        self.log.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    def show_log(self):
        with open(self.log.name, encoding="utf-8", errors="replace") as file:
            sys.stderr.writelines(file.readlines()[-40:])

    def version_text(self):
        found = re.search(r"[0-9]+(\.[0-9]+)*", self.run(*self.version).stdout)
        return found.group() if found else "?"

    def lock(self):
        self._tell_session("Lock")

    def unlock(self):
        self._tell_session("Unlock")

    def call(self, service, path, interface, method, arguments=None):
        answer = self.session_bus.call_sync(service, path, interface, method, arguments, None, 0, 5000, None).unpack()
        return answer[0] if answer else None

    def has_name(self, name):
        return self.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "NameHasOwner",
                         GLib.Variant("(s)", (name,)))

    def wait_for_socket(self):
        socket = self.path("run/" + self.environment["WAYLAND_DISPLAY"])
        wait_for(lambda: os.path.exists(socket), f"the compositor ({self.path('log')})")

    def _bus(self, variable):
        daemon = self.spawn("dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address",
                            stdout=subprocess.PIPE, text=True)
        self.environment[variable] = daemon.stdout.readline().strip()
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        return Gio.DBusConnection.new_for_address_sync(self.environment[variable], flags, None, None)

    def _mock(self, *arguments):
        self.spawn(sys.executable, "-m", "dbusmock", "--system", *arguments)

    def _call_logind(self, path, method, arguments):
        def call():
            try:
                self.system_bus.call_sync("org.freedesktop.login1", path, "org.freedesktop.DBus.Mock", method, arguments,
                                          None, 0, 5000, None)
                return True
            except GLib.Error:
                return False

        wait_for(call, "logind's stand-in")

    def _tell_session(self, signal_name):
        for name in LOGIND_SESSIONS:
            self._call_logind("/org/freedesktop/login1/session/" + name, "EmitSignal",
                              GLib.Variant("(sssav)", ("org.freedesktop.login1.Session", signal_name, "", [])))


class Sway(Session):
    needs = ("sway", "wtype")
    desktop = "sway"
    version = ("sway", "--version")

    def start(self):
        self.locks = bool(shutil.which("swaylock"))
        self.environment.update(WLR_BACKENDS="headless", WLR_LIBINPUT_NO_DEVICES="1", WLR_RENDERER="pixman",
                                SWAYSOCK=self.path("run/ipc"), WAYLAND_DISPLAY="wayland-1")
        config = self.write("sway", "xwayland disable\noutput HEADLESS-1 resolution 800x600\nfocus_follows_mouse no\n")
        compositor = {name: value for name, value in self.environment.items() if name != "WAYLAND_DISPLAY"}
        self.processes.append(subprocess.Popen(["sway", "-c", config], env=compositor, stdout=self.log, stderr=self.log))
        wait_for(lambda: self.run("swaymsg", "nop").returncode == 0, "sway")

    def front(self, application):
        self.run("swaymsg", f"[app_id={application}] focus")

    def touch(self):
        self.run("wtype", "-P", "Shift_L", "-p", "Shift_L")

    def lock(self):
        self.locker = self.spawn("swaylock", stdout=subprocess.DEVNULL)

    def unlock(self):
        self.locker.send_signal(signal.SIGUSR1)
        self.locker.wait(10)


class KWin(Session):
    needs = ("kwin_wayland",)
    desktop = "KDE"
    locks = True

    def start(self):
        # KWin hands out its pointer to programs whose desktop file asks for it. The interpreter has one that does not,
        # so that a copy asks.
        python = shutil.copy(os.path.realpath(sys.executable), self.path("python"))
        self.write("data/applications/trial.desktop", "[Desktop Entry]\nType=Application\nName=Trial\n"
                   f"Exec={python}\nX-KDE-Wayland-Interfaces=org_kde_kwin_fake_input\n")
        # What comes with Plasma, and KWin alone would not look for desktop files without.
        self.write("config/menus/applications.menu", "<Menu><Name>Applications</Name><DefaultAppDirs/>"
                   "<Include><All/></Include></Menu>\n")
        self.environment.update(KWIN_COMPOSE="Q", PYTHONHOME=sys.base_prefix)
        # The copy has no capabilities, which a container could not grant.
        program = shutil.copy(shutil.which("kwin_wayland"), self.path("kwin_wayland"))
        self.version = (program, "--version")
        knows = self.run(program, "--help").stdout
        self.spawn(program, "--virtual", "--width", "800", "--height", "600", "--socket", "wayland-test",
                   *(option for option in ("--no-global-shortcuts", "--no-kactivities") if option in knows))
        self.wait_for_socket()
        wait_for(lambda: self.has_name("org.kde.KWin"), "KWin's name")
        self.pointer = self.spawn(python, os.path.join(HERE, "fake_input.py"), stdin=subprocess.PIPE,
                                  stdout=subprocess.PIPE, text=True)
        if not self.pointer.stdout.readline():
            raise RuntimeError("KWin grants no pointer")
        self.scripts = 0

    def front(self, application):
        # KWin reads the file later, and takes no second script of the same name.
        self.scripts += 1
        file = self.write(f"focus-{self.scripts}.js", KWIN_FOCUS % application)
        scripting = ("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting")
        self.call(*scripting, "loadScript", GLib.Variant("(ss)", (file, f"focus-{self.scripts}")))
        self.call(*scripting, "start")

    def touch(self):
        self.pointer.stdin.write("\n")
        self.pointer.stdin.flush()


class KWinGranted(KWin):
    aid = True


class Gnome(Session):
    needs = ("gnome-shell",)
    desktop = "GNOME"
    version = ("gnome-shell", "--version")
    aid = True

    def start(self):
        self.locks = bool(shutil.which("gjs")) and os.path.isdir("/run/systemd/seats")
        self.environment.update(LIBGL_ALWAYS_SOFTWARE="1", GSETTINGS_BACKEND="keyfile")
        self.write("config/glib-2.0/settings/keyfile", "[org/gnome/shell]\nenabled-extensions=['test@quorvane.com']\n"
                   "welcome-dialog-last-shown-version='999'\n")
        self._write_helper(self.version_text().split(".", maxsplit=1)[0])
        # Without a display manager the shell does not lock.
        manager = "org.gnome.DisplayManager"
        self._mock(manager, "/org/gnome/DisplayManager/Manager", manager + ".Manager")
        add = GLib.Variant("(ssv)", (manager + ".Manager", "Version", GLib.Variant("s", "43.0")))

        def has_manager():
            try:
                self.system_bus.call_sync(manager, "/org/gnome/DisplayManager/Manager", "org.freedesktop.DBus.Mock",
                                          "AddProperty", add, None, 0, 5000, None)
                return True
            except GLib.Error:
                return False

        wait_for(has_manager, "the display manager's stand-in")
        if self.aid:  # as before a login: a bus without the shell would say that this isn't GNOME
            self.run("env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent", self.cli, "desktop", "install")
        self.spawn("gnome-shell", "--headless", "--wayland", "--no-x11", "--wayland-display", "wayland-test",
                   "--virtual-monitor", "800x600")
        self.wait_for_socket()
        wait_for(lambda: self.has_name("com.quorvane.Test"), "GNOME Shell")
        service = "org.gnome.Mutter.RemoteDesktop"
        self.keyboard = self.call(service, "/org/gnome/Mutter/RemoteDesktop", service, "CreateSession")
        self._type("Start")

    def front(self, application):
        self.call("com.quorvane.Test", "/com/quorvane/Test", "com.quorvane.Test1", "Activate",
                  GLib.Variant("(s)", (application,)))

    def touch(self):
        for is_down in (True, False):  # the left shift key
            self._type("NotifyKeyboardKeycode", GLib.Variant("(ub)", (42, is_down)))

    def _type(self, method, arguments=None):
        self.call("org.gnome.Mutter.RemoteDesktop", self.keyboard, "org.gnome.Mutter.RemoteDesktop.Session", method,
                  arguments)

    def _write_helper(self, version):
        """The tests' own extension, in the form that the shell understands."""
        with open(os.path.join(HERE, "../data/gnome-test-extension/helper.js"), encoding="utf-8") as file:
            body = file.read()
        if int(version) >= 45:
            text = ("import Gio from 'gi://Gio';\nimport * as Main from 'resource:///org/gnome/shell/ui/main.js';\n"
                    "import * as IBusManager from 'resource:///org/gnome/shell/misc/ibusManager.js';\n"
                    + body + "export default Helper;\n")
        else:
            text = ("const {Gio} = imports.gi;\nconst Main = imports.ui.main;\n"
                    "const IBusManager = imports.misc.ibusManager;\n" + body
                    + "function init() {\n    return new Helper();\n}\n")
        folder = "data/gnome-shell/extensions/test@quorvane.com/"
        self.write(folder + "extension.js", text)
        self.write(folder + "metadata.json", '{"uuid": "test@quorvane.com", "name": "Test", "description": "Test", '
                   f'"shell-version": ["{version}"]}}')


class GnomePlain(Gnome):
    aid = False


class Weston(Session):
    needs = ("weston",)
    desktop = "weston"
    version = ("weston", "--version")
    sees = False

    def start(self):
        major = int(self.version_text().split(".", maxsplit=1)[0])
        self.spawn("weston", "--backend=" + ("headless" if major >= 12 else "headless-backend.so"), "--no-config",
                   "--socket=wayland-test")
        self.wait_for_socket()

    def front(self, application):
        """Only a pointer could, and there is none; a new window comes to the front by itself."""

    def touch(self):
        pass


class X11(Session):
    needs = ("Xvfb", "openbox", "xdotool", "xauth")
    version = ("sh", "-c", "dpkg-query -W -f '${Version}' xvfb | sed 's/^[0-9]*://'")

    def start(self):
        for variable in ("WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP"):
            del self.environment[variable]
        self.environment.update(XDG_SESSION_TYPE="x11", XAUTHORITY=self.path("cookies"))
        # A file with one cookie, so that nobody else's client comes in.
        self.run("xauth", "add", ":0", ".", "0123456789abcdef0123456789abcdef")
        server = self.spawn("Xvfb", "-displayfd", "1", "-screen", "0", "800x600x24", "-nolisten", "tcp", "-noreset",
                            "-auth", self.path("cookies"), stdout=subprocess.PIPE, text=True)
        self.environment["DISPLAY"] = ":" + server.stdout.readline().strip()
        self.run("xauth", "add", self.environment["DISPLAY"], ".", "0123456789abcdef0123456789abcdef")
        self.spawn("openbox", "--sm-disable")
        wait_for(lambda: self.run("xdotool", "get_num_desktops").returncode == 0, "openbox")

    def front(self, application):
        self.run("xdotool", "search", "--onlyvisible", "--class", f"^{application}$", "windowactivate")

    def touch(self):
        self.run("xdotool", "key", "shift")


DESKTOPS = {"sway": Sway, "kwin": KWin, "kwin-granted": KWinGranted, "gnome": Gnome, "gnome-plain": GnomePlain,
            "weston": Weston, "x11": X11}
