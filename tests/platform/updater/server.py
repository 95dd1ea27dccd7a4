#!/usr/bin/python3
"""server.py FOLDER: an update server on the loopback, honest and otherwise, until its standard
input closes. Its certificate is FOLDER/server.pem, which clients have to be told to trust. Prints
the ports of https and http once it serves FOLDER/files.

The last part of a path is always a file; what comes before says what is done with it.
"""

import http.server
import pathlib
import ssl
import subprocess
import sys
import threading
import time

folder = pathlib.Path(sys.argv[1])
ports = []


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        behaviour, _, name = self.path[1:].rpartition("/")
        try:
            self.answer(*behaviour.split("-", 1), name=name)
        except (BrokenPipeError, ConnectionError, ssl.SSLError):
            self.close_connection = True  # the client had enough
        except FileNotFoundError:
            self.send_error(404)

    def answer(self, behaviour, argument="", name=""):
        if behaviour == "silent":
            time.sleep(60)
        elif behaviour == "redirect":  # so often, then to the file
            left = int(argument) - 1
            self.redirect(f"/redirect-{left}/{name}" if left else f"/plain/{name}")
        elif behaviour == "weaker":
            self.redirect(f"http://127.0.0.1:{ports[1]}/plain/{name}")
        elif behaviour == "status":
            self.send_body(int(argument), [self.file(name)])
        elif behaviour == "endless":
            self.send_body(200, (bytes(65536) for _ in iter(int, 1)))
        elif behaviour == "slow":
            self.send_body(200, self.dribble(self.file(name)))
        elif behaviour == "broken":  # announces all of it, sends half
            body = self.file(name)
            self.send_body(200, [body[:len(body) // 2]], length=len(body))
            self.close_connection = True
        else:
            self.send_body(200, [self.file(name)])

    @staticmethod
    def file(name):
        return (folder / "files" / name).read_bytes()

    @staticmethod
    def dribble(body):
        for byte in body:
            yield bytes([byte])
            time.sleep(0.05)

    def redirect(self, target):
        self.send_response(302)
        self.send_header("Location", target)
        self.send_header("Content-Length", "0")
        self.end_headers()

    def send_body(self, status, pieces, length=None):
        self.send_response(status)
        if isinstance(pieces, list) and length is None:
            length = sum(map(len, pieces))
        if length is not None:
            self.send_header("Content-Length", str(length))
        self.end_headers()
        for piece in pieces:
            self.wfile.write(piece)

    def log_message(self, *_):
        pass


def main():
    certificate, key = folder / "server.pem", folder / "server.key"
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
         "-nodes", "-days", "2", "-subj", "/CN=localhost", "-addext",
         "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out", certificate],
        check=True, stderr=subprocess.DEVNULL)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    for wrap in [lambda plain: context.wrap_socket(plain, server_side=True,
                                                   do_handshake_on_connect=False),
                 lambda plain: plain]:
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        server.handle_error = lambda *_: None
        server.daemon_threads = True
        server.socket = wrap(server.socket)
        ports.append(server.server_port)
        threading.Thread(target=server.serve_forever, daemon=True).start()
    print(*ports, flush=True)
    sys.stdin.read()


if __name__ == "__main__":
    main()
