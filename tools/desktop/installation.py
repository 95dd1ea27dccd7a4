"""An installation of the program with a feed of its own, and a server for that."""

import http.server
import json
import os
import pathlib
import subprocess
import tempfile
import threading
import time

NAMESPACE = "https://tidewell.example/ns/updates/1"


class UpdateServer:
    """Serves what is put into `files`, by path, over plain http, which the program accepts of the
    loopback alone. `asked` lists the paths that were asked for. Of what is `held`, only the first
    half arrives as long as it is. Feeds are signed with a key of the server's own."""

    def __init__(self, build):
        self.folder = tempfile.TemporaryDirectory()
        self.signer = Signer(build, pathlib.Path(self.folder.name))
        self.files, self.asked, self.held = {}, [], set()
        outer = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                outer.asked.append(self.path)
                body = outer.files.get(self.path)
                self.send_response(404 if body is None else 200)
                self.send_header("Content-Length", str(len(body or b"")))
                self.end_headers()
                half = len(body or b"") // 2
                self.wfile.write((body or b"")[:half])
                while self.path in outer.held:
                    time.sleep(0.05)
                self.wfile.write((body or b"")[half:])

            def log_message(self, *_):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.shutdown()
        self.server.server_close()
        self.folder.cleanup()

    def address(self, path):
        return f"http://127.0.0.1:{self.server.server_port}{path}"

    def put_feed(self, *items):
        self.files["/feed.xml"] = self.signer.feed(
            f"<rss version='2.0' xmlns:tidewell='{NAMESPACE}'><channel>" + "".join(items)
            + "</channel></rss>")


def install(build, place, server, version="0.1.0", key=None, lacking=None):
    """The built program once more, of the version given, getting its updates from the server.
    `lacking` is what its information leaves out. Returns its path. `place` has to be on the file system of `build`."""
    for program in ["bin/tidewell", "libexec/tidewell/tidewell-fetch"]:
        (place / program).parent.mkdir(parents=True)
        # No copy: its pages would count as the process's own until they are on the disk.
        os.link(build / program, place / program)
    information = json.loads((build / "share/tidewell/Info.json").read_text())
    information |= {"SUFeedURL": server.address("/feed.xml"),
                    "SUFeedPublicEDKey": server.signer.key,
                    "SUPublicEDKey": key or server.signer.key,
                    "CFBundleShortVersionString": version}
    information.pop(lacking, None)
    (place / "share/tidewell").mkdir(parents=True)
    (place / "share/tidewell/Info.json").write_text(json.dumps(information))
    (place / "share/tidewell/translations").symlink_to(
        (build / "share/tidewell/translations").resolve())
    return place / "bin/tidewell"


def enable_automatic_checks(desktop):
    """Before the program starts for the first time."""
    store = desktop.folder / "config/tidewell/defaults.json"
    store.parent.mkdir(parents=True)
    store.write_text(json.dumps({"SUEnableAutomaticChecks": True}))


class Signer:
    """A key pair, and what tools/sign-update makes with it."""

    def __init__(self, build, folder):
        self.tool, self.key_file = build / "bin/sign-update", folder / "key"
        self.key = self._run("make-key", self.key_file).strip()

    def _run(self, *arguments):
        return subprocess.run([self.tool, *arguments], check=True, text=True,
                              stdout=subprocess.PIPE).stdout

    def feed(self, text):
        """The signed form of a list of releases."""
        file = self.key_file.with_name("feed.xml")
        file.write_text(text)
        return self._run("feed", "--key", self.key_file, file).encode()

    def item(self, version, address, file, *options):
        return self._run("item", "--key", self.key_file, "--version", version, "--address", address,
                         *options, file)
