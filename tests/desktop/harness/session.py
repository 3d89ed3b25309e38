"""A desktop with a session bus, and what only shows on one."""

import os
import pathlib

from . import PROGRAM
from .case import DesktopTestCase

PREFERENCES = PROGRAM.with_name("quillbox-preferences")
SIGNAL = "com.vorlane.Quillbox.DistributedNotifications.Posted"
OBJECT_PATH = "/com/vorlane/Quillbox/DistributedNotifications"
SENDER = "com.vorlane.quillboxPreferences"
DENIED = "InputAccessIsDenied"
# Unlike the system's own it starts only those of this machine's services that are put there.
BUS = """<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <servicedir>{}</servicedir>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class SessionTestCase(DesktopTestCase):
    """With a session bus that is the test's own."""

    services = ()  # Those that the bus may start, by their names.

    def start_window_manager(self):
        super().start_window_manager()
        configuration = self.desktop.folder / "bus.xml"
        configuration.write_text(BUS.format(self._services_folder()))
        self.bus = self.desktop.start(["dbus-daemon", f"--config-file={configuration}", "--nofork",
                                       "--nopidfile", "--print-address"])
        address = self.bus.wait_for_line(lambda line: line.startswith("unix:"))
        self.assertIsNotNone(address, "no session bus")
        lines = [line for line in self.bus.lines if line.startswith("unix:")]
        self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"] = lines[0]

    def _services_folder(self):
        folder = self.desktop.folder / "services"
        folder.mkdir()
        for name in self.services:
            (folder / f"{name}.service").symlink_to(f"/usr/share/dbus-1/services/{name}.service")
        return folder

    def post(self, name):
        self.desktop.run(["dbus-send", "--session", "--type=signal", OBJECT_PATH, SIGNAL,
                          "string:" + name, "string:" + SENDER])

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
        return self.probe.active_title() == "Quillbox Preferences"

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
