"""window.py APPLICATION TITLE: a window of that application with that title. It says when it is there. Each line of
standard input is a new title; the end of the input closes the window."""

import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402  (the versions come first)


def main():
    application, title = sys.argv[1:]
    GLib.set_prgname(application)
    Gdk.set_program_class(application)
    window = Gtk.Window(title=title, default_width=300, default_height=200)
    window.add(Gtk.Entry())
    window.connect("destroy", Gtk.main_quit)
    window.connect("map-event", lambda *_: print("ready", flush=True))

    def hear(*_):
        line = sys.stdin.readline()
        if line:
            window.set_title(line.rstrip("\n"))
        else:
            window.destroy()
        return bool(line)

    GLib.io_add_watch(0, GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN | GLib.IOCondition.HUP, hear)
    window.show_all()
    Gtk.main()


main()
