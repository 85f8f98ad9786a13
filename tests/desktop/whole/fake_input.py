"""A pointer for KWin, which takes one from programs that its protocol `org_kde_kwin_fake_input` is granted to. It says
so when it is there, and each line of standard input moves it. The few messages are put together here, as Python brings
no Wayland."""

import os
import socket
import struct
import sys

DISPLAY, REGISTRY, ROUND, INPUT = 1, 2, 3, 4
NAME = "org_kde_kwin_fake_input"


def text(value):
    data = value.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)


class FakeInput:
    def __init__(self):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(os.path.join(os.environ["XDG_RUNTIME_DIR"], os.environ["WAYLAND_DISPLAY"]))
        self._socket.settimeout(10)
        self._way = 1
        self._send(DISPLAY, 1, struct.pack("=I", REGISTRY))  # get_registry
        self._send(DISPLAY, 0, struct.pack("=I", ROUND))  # sync
        number = self._number_of(NAME)
        self._send(REGISTRY, 0, struct.pack("=I", number) + text(NAME) + struct.pack("=II", 1, INPUT))  # bind
        self._send(INPUT, 0, text("Quorvane's trial") + text("to move the pointer"))  # authenticate

    def move(self):
        """By one place, to and fro."""
        self._way = -self._way
        self._send(INPUT, 1, struct.pack("=ii", self._way * 256, 0))

    def _send(self, target, operation, arguments):
        self._socket.sendall(struct.pack("=II", target, (8 + len(arguments)) << 16 | operation) + arguments)

    def _number_of(self, interface):
        data = b""
        while True:
            while len(data) < 8 or len(data) < struct.unpack_from("=I", data, 4)[0] >> 16:
                more = self._socket.recv(65536)
                if not more:
                    raise RuntimeError("KWin has closed the connection")
                data += more
            target, head = struct.unpack_from("=II", data)
            message, data = data[8 : head >> 16], data[head >> 16 :]
            if target == REGISTRY and head & 0xFFFF == 0:
                number, length = struct.unpack_from("=II", message)
                if message[8 : 7 + length].decode() == interface:
                    return number
            elif target == ROUND:
                raise PermissionError(f"KWin does not grant {interface}")


def main():
    pointer = FakeInput()
    print("ready", flush=True)
    for _ in sys.stdin:
        pointer.move()


main()
