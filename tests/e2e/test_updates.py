"""A new version, from the mark in the panel to the restarted program."""

import os
import pathlib
import signal
import subprocess
import tempfile

import dbus
from case import ScreenReaderCase
from desktop import wait_for
from installation import Signer, UpdateServer, enable_automatic_checks, install
from program import executable

ACTION = "org.a11y.atspi.Action"


def write_stand_in(file, program):
    """Something like an AppImage that starts a program."""
    source = f'#include <unistd.h>\nint main(int, char** a) {{ return execv("{program}", a); }}\n'
    subprocess.run(["c++", "-x", "c++", "-", "-o", file], input=source, text=True, check=True)
    content = file.read_bytes()
    file.write_bytes(content[:8] + b"AI\x02" + content[11:])


class UpdateWindows(ScreenReaderCase):
    def wait_for_button(self, name):
        def shown():
            try:
                return self.reader.parts().get(("push button", name))
            except dbus.DBusException:
                return None  # it changed while it was looked at
        return wait_for(f"the button {name!r}", shown)

    def begin_installing(self):
        """The update that was found, by way of the panel's mark."""
        self.reader.ask(self.wait_for_button("Update available!"), ACTION, "DoAction", "i", (0,))
        self.wait_for_button("Install")
        self.desktop.press("Return")


class Updates(UpdateWindows):
    def test_install_over_the_appimage_and_start_it(self):
        build = pathlib.Path(executable()).resolve().parent.parent
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(dir=build)))
        server = self.enterContext(UpdateServer(build))
        signer = Signer(build, folder)
        images, items = [], []
        for version in ("0.1.0", "0.10.0", "0.9.0"):
            program = install(build, folder / version, server, version, signer.key)
            images.append(folder / f"Tidewell-{version}.AppImage")
            write_stand_in(images[-1], program)
            server.files["/" + version] = images[-1].read_bytes()
            items.append(signer.item(version, server.address("/" + version), images[-1]))
        server.put_feed(*items)
        image, newest, _ = images
        os.environ["TIDEWELL"] = str(image)

        enable_automatic_checks(self.desktop)
        tidewell = self.start_with_panel(
            environment={"APPIMAGE": str(image), "APPDIR": str(folder)})
        tidewell.wait_for_log("Update available: 0.10.0")
        self.begin_installing()
        self.wait_for_button("Restart Now")
        self.assertEqual(image.read_bytes(), newest.read_bytes())
        self.desktop.press("Return")
        program = pathlib.Path(f"/proc/{tidewell.process.pid}/exe")
        wait_for("the new version's start", lambda: "/0.10.0/" in str(program.readlink()))
        tidewell.wait_for_item()
        tidewell.wait_for_log("No update found.")
        self.assertEqual(list((self.desktop.folder / "cache").glob("tidewell/updates/*")), [])

    def test_are_off_and_nobody_is_asked_where_something_for_them_lacks(self):
        build = pathlib.Path(executable()).resolve().parent.parent
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(dir=build)))
        server = self.enterContext(UpdateServer(build))
        server.put_feed()
        enable_automatic_checks(self.desktop)
        for lacking in (None, "SUFeedURL", "SUFeedPublicEDKey", "SUPublicEDKey"):
            with self.subTest(lacking):
                server.asked.clear()
                os.environ["TIDEWELL"] = str(
                    install(build, folder / str(lacking), server, lacking=lacking))
                tidewell = self.start_with_panel()
                self.desktop.press("ctrl+comma")
                wait_for("the settings",
                         lambda: self.desktop.windows("--name", "^Tidewell Settings$"))
                names = {name for _, name in self.reader.parts(lists=False)}
                self.assertIn("Confirm quit on exit", names)
                self.assertIs("Check for Updates now" in names, lacking is None)
                self.assertEqual(tidewell.end(signal.SIGTERM), 0)
                self.assertEqual(set(server.asked), set() if lacking else {"/feed.xml"})
