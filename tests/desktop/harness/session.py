"""A desktop with a session bus, and the dialogs of the program on it."""

import os
import pathlib
import subprocess

from . import DEADLINE, PROGRAM
from .case import DesktopTestCase

PREFERENCES = PROGRAM.with_name("quillbox-preferences")
SIGNAL = "com.vorlane.Quillbox.DistributedNotifications.Posted"
OBJECT_PATH = "/com/vorlane/Quillbox/DistributedNotifications"
SENDER = "com.vorlane.quillboxPreferences"
DENIED = "InputAccessIsDenied"
# For what takes several programs, some of which have to start first.
LONG = 60


class SessionTestCase(DesktopTestCase):
    """With a session bus that is the test's own."""

    def start_window_manager(self):
        super().start_window_manager()
        self.bus = self.desktop.start(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address"])
        address = self.bus.wait_for_line(lambda line: line.startswith("unix:"))
        self.assertIsNotNone(address, "no session bus")
        lines = [line for line in self.bus.lines if line.startswith("unix:")]
        self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"] = lines[0]

    def post(self, name):
        self.desktop.run(["dbus-send", "--session", "--type=signal", OBJECT_PATH, SIGNAL,
                          "string:" + name, "string:" + SENDER])

    def wait(self, holds, message):
        self.assertTrue(self.desktop.wait_until(holds, LONG), message)

    @property
    def information(self):
        """What the program publishes for the preference program."""
        return self.desktop.folder / "runtime/quillbox/pasteboards/QuillboxInformation.pasteboard"

    def deny_access(self, denied):
        """As the switch in the preferences does."""
        values = self.desktop.read_user_defaults() if self.desktop.user_defaults_path.exists() else {}
        self.desktop.write_user_defaults({**values, DENIED: denied})

    def start_preferences(self, *arguments):
        """Returns once its window has the keyboard."""
        process = self.desktop.start([PREFERENCES, *arguments])
        self.wait(self.preferences_are_in_front, "the preferences do not show")
        return process

    def preferences_are_in_front(self):
        return self.title_of("getactivewindow") == "Quillbox Preferences"

    def title_of(self, which):
        """What a window is called: "getactivewindow", "getwindowfocus". Empty when there is none."""
        result = subprocess.run(
            ["xdotool", which, "getwindowname"], env=self.desktop.environment,
            capture_output=True, text=True, timeout=DEADLINE, check=False)
        return result.stdout.strip()

    def dialog_has_keyboard(self, message):
        """A dialog of the program is up and takes what is typed; it is called by its message."""
        return self.title_of("getwindowfocus").startswith(message)

    def wait_for_dialog(self, message):
        self.wait(lambda: self.dialog_has_keyboard(message), f"no dialog says {message}")

    def wait_for_dialog_to_go(self, message):
        self.wait(lambda: not self.dialog_has_keyboard(message), f"{message} stays")

    def answer_dialog(self, message, key="Return"):
        """Returns once it is gone."""
        self.wait_for_dialog(message)
        self.probe.tap(key)
        self.wait_for_dialog_to_go(message)

    def running_programs(self):
        """The processes of the program on this display."""
        found = []
        for entry in pathlib.Path("/proc").iterdir():
            try:
                if entry.name.isdigit() and os.readlink(entry / "exe") == str(PROGRAM.resolve()):
                    environment = (entry / "environ").read_bytes().split(b"\0")
                    if ("DISPLAY=" + self.desktop.environment["DISPLAY"]).encode() in environment:
                        found.append(int(entry.name))
            except OSError:
                continue
        return found
