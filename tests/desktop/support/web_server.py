"""A web server that misbehaves on request: web_server.py FOLDER READY, where FOLDER holds server.pem and the files of
"/api/..." and READY is a descriptor that gets the port. What any other path does is its first word.

What is posted to "/api/.../NAME" is kept as NAME.1.headers and NAME.1.body, NAME.2.headers and so on, before it is answered
as the file NAME says: with a status, or as a path of that word would."""

import http.server
import os
import socket
import ssl
import struct
import sys
import threading

stop = threading.Event()


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def answer(self, status, body=b"", headers=()):
        self.send_response(status)
        for name, value in headers:
            self.send_header(name, value)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def begin(self, length):
        self.send_response(200)
        self.send_header("Content-Length", str(length))
        self.end_headers()

    def do_GET(self):
        getattr(self, "act_" + self.path.split("?")[0].split("/")[1])()

    def do_POST(self):
        sent = self.rfile.read(int(self.headers["Content-Length"]))
        if self.path.startswith("/api/"):
            self.take(sent)
            return
        self.answer(202, self.headers["Content-Type"].encode() + b"|" + sent)

    def take(self, sent):
        file = os.path.join(sys.argv[1], os.path.basename(self.path))
        count = 1
        while os.path.exists(f"{file}.{count}.body"):
            count += 1
        for name, content in (("headers", self.told()), ("body", sent)):
            with open(f"{file}.{count}.{name}", "wb") as kept:
                kept.write(content)
        with open(file, encoding="ascii") as wanted:
            answer = wanted.read()
        if answer.isdigit():
            self.answer(int(answer), headers=[("Location", "/ok")] if answer == "301" else [])
        else:
            getattr(self, "act_" + answer)()

    def told(self):
        told = [f"{name}: {value}" for name, value in self.headers.items() if name != "Host"]
        return "\n".join(sorted(told)).encode()

    def act_ok(self):
        self.answer(200, b"hello\0\xff", [("X-Kind", "greeting"), ("Set-Cookie", "a=b")])

    def act_headers(self):
        self.answer(200, self.told())

    def act_packed(self):
        self.answer(200, b"\x1f\x8b not packed at all", [("Content-Encoding", "gzip")])

    def act_api(self):
        name = os.path.basename(self.path.split("?")[0])
        with open(os.path.join(sys.argv[1], name), "rb") as file:
            self.answer(200, file.read())

    def act_missing(self):
        self.answer(404, b"no such page")

    def act_password(self):
        self.answer(401, b"who?", [("WWW-Authenticate", 'Basic realm="x"')])

    def act_broken(self):
        self.answer(503, b"later")

    def act_moved(self):
        self.answer(302, b"moved", [("Location", "/ok")])

    def act_plain(self):
        self.answer(302, headers=[("Location", f"http://localhost:{self.server.server_port}/ok")])

    def act_elsewhere(self):
        self.answer(302, headers=[("Location", f"https://127.0.0.1:{self.server.server_port}/ok")])

    def act_file(self):
        self.answer(302, headers=[("Location", "file:///etc/passwd")])

    def act_round(self):
        self.answer(302, headers=[("Location", "/round")])

    def act_large(self):
        self.answer(200, b"x" * 100001)

    def act_endless(self):
        self.send_response(200)
        self.send_header("Connection", "close")
        self.end_headers()
        self.close_connection = True
        try:
            while not stop.is_set():
                self.wfile.write(b"x" * 65536)
        except OSError:
            pass

    def act_drip(self):
        self.begin(1000)
        try:
            while not stop.wait(0.02):
                self.wfile.write(b"x")
        except OSError:
            pass

    def act_hang(self):
        stop.wait()

    def act_cut(self):
        self.begin(1000)
        self.wfile.write(b"half of it")
        self.close_connection = True

    def act_reset(self):
        self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        self.close_connection = True

    def log_message(self, *_):
        pass


def main():
    folder, ready = sys.argv[1], int(sys.argv[2])
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    server.handle_error = lambda *_: None
    server.daemon_threads = True
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(os.path.join(folder, "server.pem"))
    server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
    os.write(ready, f"{server.server_port}\n".encode())
    server.serve_forever()


main()
