"""A small HTTP server of the tests' own, well behaved or as bad as they come."""

import hashlib
import http.server
import json
import socket
import struct
import threading

PACKAGE = b"a package\n" * 1000
HUGE = 1 << 30  # bytes


def item(number=1, **more) -> dict:
    """One of a catalog."""
    return {"id": f"tool.served{number}", "name": f"Served{number}+", "subtitle": "From a server",
            "icon": "star.fill", "version": "3.2.1", "minHubVersion": "1.0.0"} | more


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass

    def do_GET(self):
        self.server.owner.asked.append(self.path)
        mode = self.path.split("/")[1]
        try:
            getattr(self, "do_" + mode.replace("-", "_"))()
        except OSError:
            pass  # whoever asked has gone
        self.close_connection = True

    def answer(self, status: int, body=b"", **headers):
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), value)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def body(self) -> bytes:
        """What a good server would say at this place."""
        if self.path.endswith("/tools/catalog"):
            return json.dumps(self.server.owner.catalog).encode()
        return PACKAGE

    def do_good(self):
        self.answer(200, self.body())

    def do_empty(self):
        self.answer(204)

    def do_moved(self):
        self.answer(301, Location=self.path.replace("/moved/", "/good/"))

    def do_loop(self):
        self.answer(301, Location=self.path)

    def do_to_file(self):
        self.answer(302, Location="file:///etc/passwd")

    def do_missing(self):
        self.answer(404, self.body())

    def do_broken(self):
        self.answer(500, self.body())

    def do_wrong(self):
        self.answer(200, b"<html>Log in to this network</html>")

    def do_huge(self):
        """Says how much there is."""
        self.send_response(200)
        self.send_header("Content-Length", str(HUGE))
        self.end_headers()
        self.flood()

    def do_endless(self):
        """Does not say it."""
        self.send_response(200)
        self.end_headers()
        self.flood()

    def flood(self):
        piece = b" " * (1 << 20)
        for _ in range(HUGE // len(piece)):
            self.wfile.write(piece)

    def do_headers(self):
        self.wfile.write(b"HTTP/1.1 200 OK\r\n")
        while True:
            self.wfile.write(b"X-More: and more\r\n" * 1000)

    def do_slow(self):
        self.send_response(200)
        self.send_header("Content-Length", str(len(self.body())))
        self.end_headers()
        for byte in self.body():
            self.wfile.write(bytes([byte]))
            if self.server.owner.closing.wait(1):
                return

    def do_reset(self):
        self.send_response(200)
        self.send_header("Content-Length", str(2 * len(self.body())))
        self.end_headers()
        self.wfile.write(self.body())
        self.wfile.flush()
        self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))

    def do_never(self):
        self.server.owner.closing.wait()


class Server:
    """http://127.0.0.1:PORT/MODE/tools/catalog and .../MODE/package for each mode above."""

    def __init__(self):
        self.asked = []  # paths
        self.catalog = [item()]
        self.closing = threading.Event()
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self._server.daemon_threads = True
        self._server.owner = self
        self._thread = threading.Thread(target=self._server.serve_forever, daemon=True)
        self._thread.start()

    def address(self, mode: str) -> str:
        return f"http://127.0.0.1:{self._server.server_address[1]}/{mode}"

    def package(self, mode: str) -> str:
        return self.address(mode) + "/package"

    def close(self) -> None:
        self.closing.set()
        self._server.shutdown()
        self._server.server_close()


def digest(content=PACKAGE) -> str:
    return hashlib.sha256(content).hexdigest()
