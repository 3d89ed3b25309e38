"""What other programs copy, and what becomes of it in the clipboard history."""

import plistlib
import subprocess

from . import DEADLINE, TOOLS

HISTORY = ".local/share/Quillbox/Clipboard History"
HINT = "x-kde-passwordManagerHint"


class Clipboard:
    """Of one desktop."""

    def __init__(self, desktop):
        self.desktop = desktop
        self._number = 0

    @property
    def folder(self):
        return self.desktop.home / HISTORY

    def offer(self, contents, command="offer"):
        """Another program has these bytes by these names; it is running and has them on return."""
        words = []
        for target, content in contents.items():
            self._number += 1
            path = self.desktop.folder / f"copied-{self._number}"
            path.write_bytes(content)
            words += [target, path]
        process = self.desktop.start([TOOLS / "clipboardclient", command, *words])
        if process.wait_for_line(lambda line: line == "offered") is None:
            raise RuntimeError("nothing is offered: " + process.output)
        return process

    def copy_text(self, text):
        return self.offer({"text/plain": text.encode()})

    def copy_secret(self, text):
        """As programs that keep passwords do."""
        return self.offer({"text/plain": text.encode(), HINT: b"secret"})

    def read(self, target):
        """What another program finds there; None when there is no such thing."""
        words = [TOOLS / "clipboardclient", "read", target]
        read = subprocess.run(words, env=self.desktop.environment, capture_output=True,
                              timeout=DEADLINE, check=False)
        return read.stdout if read.returncode == 0 else None

    def history(self):
        """(extension, type, bytes) of each clipping, sorted."""
        return sorted(self._clipping(path) for path in self.folder.iterdir()
                      if path.suffix.endswith("clip"))

    @staticmethod
    def _clipping(path):
        state = plistlib.loads(path.read_bytes())
        return path.suffix, state["Type"], state["Data"]

    def texts(self):
        return [data.decode() for _, kind, data in self.history()
                if kind == "public.utf8-plain-text"]


def gives(process, target):
    """Whether somebody has asked it for that; waits for it."""
    return process.wait_for_line(lambda line: line == "gives " + target) is not None


def has_given(process, target):
    """Up to now."""
    return "gives " + target in process.lines
