"""A private tree of a Debian release: made with debootstrap, filled with apt, entered by
namespaces. Nothing of it touches the system that it lies on, except the folder that it lies in."""

import pathlib
import shutil
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
SOURCES = """Types: deb
URIs: {mirror}
Suites: {suite} {suite}-updates
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
"""
MIRROR = "http://deb.debian.org/debian"
# What was written last when a tree was made: without it the making was interrupted.
COMPLETE = "etc/tidewell-tree"


class TreeError(Exception):
    """A tree could not be made, filled or entered."""


class Tree:
    """The tree of one Debian release below `trees`, made when it is not there yet."""

    def __init__(self, trees, suite, results):
        self.suite, self.root, self.results = suite, trees / suite, results
        results.mkdir(parents=True, exist_ok=True)
        if not (self.root / COMPLETE).exists():
            self._make()

    def _make(self):
        shutil.rmtree(self.root, ignore_errors=True)
        self.root.parent.mkdir(parents=True, exist_ok=True)
        self._run("debootstrap", "--variant=minbase", self.suite, str(self.root), MIRROR,
                  log="debootstrap")
        etc = self.root / "etc"
        # As this system reaches the network, so does the tree: proxies and names.
        for path in ("resolv.conf", "hosts"):
            shutil.copy(pathlib.Path("/etc") / path, etc / path)
        for path in pathlib.Path("/etc/apt/apt.conf.d").glob("*prox*"):
            shutil.copy(path, etc / "apt/apt.conf.d")
        (etc / "apt/sources.list").unlink(missing_ok=True)
        (etc / "apt/sources.list.d/debian.sources").write_text(
            SOURCES.format(mirror=MIRROR, suite=self.suite))
        # Packages start no services in there.
        policy = self.root / "usr/sbin/policy-rc.d"
        policy.write_text("#!/bin/sh\nexit 101\n")
        policy.chmod(0o755)
        self._run("chroot", str(self.root), "useradd", "--create-home", "--uid", "1000", "--shell",
                  "/bin/bash", "ann", log="useradd")
        (etc / "machine-id").write_text("0123456789abcdef0123456789abcdef\n")
        (self.root / COMPLETE).touch()

    def install(self, *lists):
        """Installs the packages of tools/packages/LIST."""
        self.run("root", "/src/tools/install-packages", *lists, log="install")

    def build(self, *targets):
        """Builds the targets there; /build/bin/tidewell in the tree is the program."""
        for step in (["cmake", "-S", "/src", "-B", "/build", "--preset", "release"],
                     ["cmake", "--build", "/build", "--target", *targets]):
            # A preset is looked for where cmake is started.
            self.run("root", "env", "-C", "/src", *step, log="build")

    def run(self, user, *command, log):
        """Runs a command there; what it says goes to the results' LOG.log."""
        self._run(*self.command(user, *command), log=log)

    def command(self, user, *command):
        return [str(HERE / "enter-tree"), str(self.root), str(self.results), user, *command]

    def _run(self, *command, log):
        path = self.results / f"{log}.log"
        with open(path, "wb") as output:
            status = subprocess.call(command, stdin=subprocess.DEVNULL, stdout=output,
                                     stderr=subprocess.STDOUT)
        if status != 0:
            tail = "\n".join(path.read_text(errors="replace").splitlines()[-15:])
            raise TreeError(f"{' '.join(command)} ended with {status}:\n{tail}")
