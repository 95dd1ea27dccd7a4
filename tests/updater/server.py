#!/usr/bin/python3
"""server.py FOLDER: an update server on the loopback, honest and otherwise. Its certificate is
FOLDER/server.pem, which clients have to be told to trust. Prints its port once it serves
FOLDER/files. The last part of a path is always a file; what comes before says what is done with it.
"""

import http.server
import itertools
import pathlib
import ssl
import subprocess
import sys
import time

folder = pathlib.Path(sys.argv[1])


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        behaviour, _, name = self.path[1:].rpartition("/")
        file = folder / "files" / name
        if not file.exists():
            self.send_error(404)
            return
        body = file.read_bytes()
        if behaviour == "silent":
            time.sleep(60)
        elif behaviour.startswith("redirect-"):  # so often, then to the file
            left = int(behaviour.removeprefix("redirect-")) - 1
            self.answer(302, "Location", f"/redirect-{left}/{name}" if left else f"/plain/{name}")
        elif behaviour == "weaker":
            self.answer(302, "Location", f"http://127.0.0.1:1/{name}")
        elif behaviour == "named":
            self.answer(302, "Location", f"https://a:b@{self.headers['Host']}/password/{name}")
        elif behaviour == "password" and "Authorization" not in self.headers:
            self.answer(401, "WWW-Authenticate", 'Basic realm="a"')
        elif behaviour == "endless":
            self.send_body(itertools.repeat(bytes(65536)))
        elif behaviour == "slow":
            self.send_body(self.dribble(body))
        elif behaviour == "broken":  # announces all of it, sends half
            self.send_body([body[:len(body) // 2]], len(body))
        else:
            self.send_body([body], len(body))

    @staticmethod
    def dribble(body):
        for byte in body:
            yield bytes([byte])
            time.sleep(0.05)

    def answer(self, status, header, value):
        self.send_response(status)
        self.send_header(header, value)
        self.end_headers()

    def send_body(self, pieces, length=None):
        self.answer(200, *("Content-Length", str(length)) if length is not None else ("Age", "0"))
        for piece in pieces:
            self.wfile.write(piece)


certificate, key = folder / "server.pem", folder / "server.key"
subprocess.run(
    ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
     "-nodes", "-days", "2", "-subj", "/CN=localhost", "-addext", "subjectAltName=IP:127.0.0.1",
     "-keyout", key, "-out", certificate], check=True)
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(certificate, key)
server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
server.socket = context.wrap_socket(server.socket, server_side=True,
                                    do_handshake_on_connect=False)
print(server.server_port, flush=True)
server.serve_forever()
