"""A new version, from the mark in the panel to the restarted program."""

import os
import pathlib
import subprocess
import tempfile

import dbus
from case import ScreenReaderCase
from desktop import wait_for
from installation import Signer, UpdateServer, enable_automatic_checks, install
from program import executable

ACTION = "org.a11y.atspi.Action"


def stand_in(program, file):
    """The content of something like an AppImage, made with the help of `file`, that starts a
    program."""
    source = f'#include <unistd.h>\nint main(int, char** a) {{ return execv("{program}", a); }}\n'
    subprocess.run(["c++", "-x", "c++", "-", "-o", file], input=source, text=True, check=True)
    content = file.read_bytes()
    return content[:8] + b"AI\x02" + content[11:]


class Updates(ScreenReaderCase):

    def wait_for_button(self, name):
        def shown():
            try:
                return self.parts().get(("push button", name))
            except dbus.DBusException:
                return None  # it changed while it was looked at
        return wait_for(f"the button {name!r}", shown)

    def test_install_over_the_appimage_and_start_it(self):
        build = pathlib.Path(executable()).resolve().parent.parent
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(dir=build)))
        server = self.enterContext(UpdateServer())
        signer = Signer(build, folder)
        programs = {version: install(build, folder / version, server, version, signer.key)
                    for version in ("0.1.0", "0.9.0", "0.10.0")}
        images = {version: stand_in(program, folder / "stand-in")
                  for version, program in programs.items()}
        items = []
        for version in ("0.9.0", "0.10.0"):
            file = folder / f"Tidewell-{version}.AppImage"
            file.write_bytes(images[version])
            server.files[f"/{file.name}"] = images[version]
            items.append(signer.item(version, server.address(f"/{file.name}"), file))
        server.put_feed(*reversed(items))
        image = folder / "Tidewell.AppImage"
        image.write_bytes(images["0.1.0"])
        image.chmod(0o755)
        os.environ["TIDEWELL"] = str(image)

        enable_automatic_checks(self.desktop)
        tidewell = self.start_with_item(
            environment={"APPIMAGE": str(image), "APPDIR": str(folder)})
        tidewell.wait_for_log("Update available: 0.10.0")
        tidewell.click_item()
        tidewell.wait_for_panel()
        self.ask(self.wait_for_button("Update available!"), ACTION, "DoAction", "i", (0,))
        self.wait_for_button("Install")
        self.desktop.press("Return")
        self.wait_for_button("Restart Now")
        self.assertEqual(image.read_bytes(), images["0.10.0"])
        self.desktop.press("Return")
        program = f"/proc/{tidewell.process.pid}/exe"
        wait_for("the new version's start",
                 lambda: os.readlink(program) == str(programs["0.10.0"]))
        tidewell.wait_for_item()
        tidewell.wait_for_log("No update found.")
        self.assertEqual(list((self.desktop.folder / "cache").glob("tidewell/updates/*")), [])
