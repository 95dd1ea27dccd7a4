#!/usr/bin/python3
"""single_file.py APPIMAGE SIGN_UPDATE: an AppImage learns from a server on the loopback, over https, of
a newer one and is replaced by it through the windows that the user sees: killed at twenty points of
that, then to the end. Run in bare trees, by tools/packages-in-bare-trees; takes a minute, on a busy machine
three."""

import hashlib
import json
import os
import pathlib
import shlex
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest

from desktop import die_with_parent, wait_for
from installation import NAMESPACE, Signer, enable_automatic_checks
from test_updates import UpdateWindows

APPIMAGE, SIGN_UPDATE = map(pathlib.Path, sys.argv[1:3])
SERVER = pathlib.Path(__file__).resolve().parent.parent / "updater/server.py"
POINTS = 20


def image_offset(file):
    """Where the image begins, behind the ELF program."""
    with file.open("rb") as program:
        header = program.read(64)
    sections, = struct.unpack_from("<Q", header, 0x28)
    size, count = struct.unpack_from("<HH", header, 0x3A)
    return sections + size * count


def digest(file):
    return hashlib.sha256(file.read_bytes()).hexdigest()


class SingleFile(UpdateWindows):
    """The file that was built, as it would be with a feed, and the same as a newer version."""

    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.content = cls.folder / "AppDir"
        subprocess.run(["unsquashfs", "-quiet", "-no-progress", "-offset", str(image_offset(APPIMAGE)),
                        "-dest", cls.content, APPIMAGE], check=True, stdout=subprocess.DEVNULL)
        tool = cls.folder / "bin/sign-update"  # by the libraries in there
        tool.parent.mkdir()
        tool.write_text(f"#!/bin/sh\nLD_LIBRARY_PATH={shlex.quote(str(cls.content / 'usr/lib'))} "
                        f"exec {shlex.quote(str(SIGN_UPDATE))} \"$@\"\n")
        tool.chmod(0o755)
        cls.signer = Signer(cls.folder, cls.folder)
        (cls.folder / "files").mkdir()
        server = subprocess.Popen([sys.executable, SERVER, cls.folder], stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL, text=True, preexec_fn=die_with_parent)
        cls.addClassCleanup(server.communicate)
        cls.addClassCleanup(server.kill)
        cls.address = f"https://127.0.0.1:{server.stdout.readline().strip()}"
        cls.old, cls.new = cls.pack("0.1.0"), cls.pack("0.2.0")
        item = cls.signer.item("0.2.0", f"{cls.address}/{cls.new.name}", cls.new)
        (cls.folder / "files/feed.xml").write_bytes(cls.signer.feed(
            f"<rss version='2.0' xmlns:tidewell='{NAMESPACE}'><channel>{item}</channel></rss>"))

    @classmethod
    def pack(cls, version):
        information = cls.content / "usr/share/tidewell/Info.json"
        information.write_text(json.dumps(json.loads(information.read_text()) | {
            "SUFeedURL": cls.address + "/feed.xml", "SUFeedPublicEDKey": cls.signer.key,
            "SUPublicEDKey": cls.signer.key, "CFBundleShortVersionString": version}))
        image, file = cls.folder / "image", cls.folder / f"files/Tidewell-{version}.AppImage"
        subprocess.run(["mksquashfs", cls.content, image, "-noappend", "-all-root", "-no-xattrs",
                        "-quiet", "-no-progress", "-comp", "zstd", "-Xcompression-level", "1"],
                       check=True)
        file.write_bytes(APPIMAGE.read_bytes()[:image_offset(APPIMAGE)] + image.read_bytes())
        file.chmod(0o755)
        return file

    def put_old(self):
        self.place.unlink(missing_ok=True)  # what ran may run for a moment yet
        shutil.copy(self.old, self.place)

    def start_installing(self):
        tidewell = self.start_with_panel(
            environment={"SSL_CERT_FILE": str(self.folder / "server.pem")})
        tidewell.wait_for_log("Update available: 0.2.0")
        self.begin_installing()
        return tidewell

    def kill_at(self, tidewell, point):
        """When as much of the new file is there as the point says, or when it has taken its place."""
        size = self.new.stat().st_size * point // (POINTS - 1)
        identity = os.stat(self.place).st_ino
        deadline = time.monotonic() + 60
        while os.stat(self.place).st_ino == identity and time.monotonic() < deadline:
            try:
                if point < POINTS - 1 and os.stat(self.part).st_size >= size:
                    break
            except FileNotFoundError:
                pass
        tidewell.process.kill()
        tidewell.process.wait()


    def test_is_replaced_as_a_whole_or_not_at_all(self):
        self.place = self.folder / "Tidewell.AppImage"
        self.part = self.folder / ".Tidewell.AppImage.new"
        os.environ["TIDEWELL"] = str(self.place)
        known = {digest(self.old): "0.1.0", digest(self.new): "0.2.0"}
        enable_automatic_checks(self.desktop)
        found, begin = [], time.monotonic()
        for point in range(POINTS):
            self.put_old()
            self.kill_at(self.start_installing(), point)
            version = known[digest(self.place)]
            self.assertIn(version, subprocess.run(
                [self.place, "--version"], check=True, capture_output=True, text=True).stdout)
            found.append((version, self.part.exists()))
        print(f"killed {POINTS} times in {time.monotonic() - begin:.0f} s: "
              + ", ".join(f"{found.count(each)} times {each[0]}{' and a part' if each[1] else ''}"
                          for each in sorted(set(found))))
        self.assertEqual({version for version, _ in found}, {"0.1.0", "0.2.0"})

        self.put_old()
        tidewell = self.start_installing()
        begin = time.monotonic()
        self.wait_for_button("Restart Now")
        print(f"installed in {time.monotonic() - begin:.1f} s")
        self.assertEqual(digest(self.place), digest(self.new))
        self.assertFalse(self.part.exists())
        self.desktop.press("Return")
        tidewell.wait_for_log("No update found.")
        tidewell.wait_for_item()
        self.assertEqual(list((self.desktop.folder / "cache").glob("tidewell/updates/*")), [])
        tidewell.process.terminate()
        self.assertEqual(tidewell.process.wait(20), 0)
        wait_for("the mounted folders' end",
                 lambda: not list(pathlib.Path(tempfile.gettempdir()).glob(".single-file-*")))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
