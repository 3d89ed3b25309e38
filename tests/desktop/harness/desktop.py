"""One desktop: display, home folder, window manager, applications, the program."""

import datetime
import os
import pathlib
import plistlib
import shutil
import subprocess
import tempfile
import time

from . import DEADLINE, PROGRAM, TOOLS
from .probe import Probe
from .processes import Process

NO_KEYS = pathlib.Path(__file__).resolve().parents[1] / "openbox/no-keys.xml"
READY = "Quillbox is ready"
SETTINGS = "Library/Preferences/com.vorlane.quillbox.settings"
HOT_KEYS = "Library/Preferences/com.vorlane.quillbox.hotkeys"
USER_DEFAULTS = "Library/Preferences/com.vorlane.quillbox.plist"
VERSION = "1.0.0"


def replace(path, content):
    """As a whole: a program that watches the file must not come upon half of it."""
    path.parent.mkdir(parents=True, exist_ok=True)
    part = path.with_name(path.name + ".part")
    part.write_bytes(content)
    part.replace(path)


class Application:
    """One of the recording clients: a window of one colour that tells what reaches it. Its icon is
    a square of that colour, too, so that a test can see where in the panel it is."""

    def __init__(self, name, colour, area):
        self.name = name
        self.colour = colour
        self.area = area
        self.process = None

    def start(self, desktop):
        self.write_entry(desktop)
        self.process = desktop.start([TOOLS / "xclient", self.name, *self.area, self.colour])
        if self.process.wait_for_line(lambda line: line == "ready") is None:
            raise RuntimeError(self.name + " does not start")
        if not desktop.probe.wait_active(self.name):
            raise RuntimeError(self.name + " does not get the focus")

    def write_entry(self, desktop):
        """What makes it an installed application."""
        data = desktop.home / ".local/share"
        (data / "applications").mkdir(parents=True, exist_ok=True)
        icon = data / f"{self.name}.svg"
        icon.write_text(
            '<svg xmlns="http://www.w3.org/2000/svg" width="128" height="128">'
            f'<rect width="128" height="128" fill="#{self.colour}"/></svg>'
        )
        (data / f"applications/{self.name}.desktop").write_text(
            "[Desktop Entry]\nType=Application\n"
            f"Name={self.name}\nExec={TOOLS}/xclient\nIcon={icon}\nStartupWMClass={self.name}\n"
        )

    @property
    def events(self):
        """What has reached it: "press a", "release a", "button 1", "focus", "blur"."""
        return self.process.lines

    def receives(self, event, start=0, timeout=DEADLINE):
        return self.process.wait_for_line(lambda line: line == event, start, timeout) is not None


def three_applications():
    """At the screen's edges: the middle, where the panel shows, is left free."""
    return [
        Application("Alpha", "c03030", (20, 40, 300, 200)),
        Application("Beta", "30a030", (940, 40, 300, 200)),
        Application("Gamma", "3030c0", (20, 540, 300, 200)),
    ]


class Desktop:
    """Everything that it starts ends with it. The home folder is its own."""

    def __init__(self, size=(1280, 800), server_options=()):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillbox-test."))
        self.home = self.folder / "home"
        (self.home / ".local/share").mkdir(parents=True)
        (self.folder / "runtime").mkdir(mode=0o700)
        self.environment = self._make_environment()
        self._processes = []
        self.probe = None
        self.window_manager = None
        self.compositor = None
        self.program = None
        self.note_launched_before()
        self._start_server(size, server_options)

    def _make_environment(self):
        kept = {key: os.environ[key] for key in ("PATH", "LD_LIBRARY_PATH") if key in os.environ}
        return {
            **kept,
            "HOME": str(self.home),
            "XDG_RUNTIME_DIR": str(self.folder / "runtime"),
            "LANG": "C.UTF-8",
            # Clients of a test must not come upon the session bus of whoever runs it.
            "DBUS_SESSION_BUS_ADDRESS": "disabled:",
            # Sanitized builds report at once, and leak checks belong to the unit tests.
            "ASAN_OPTIONS": "detect_leaks=0",
        }

    def _start_server(self, size, options):
        reading, writing = os.pipe()
        command = ["Xvfb", "-displayfd", str(writing), "-screen", "0"]
        command += ["{}x{}x24".format(*size), "-nolisten", "tcp", "-noreset", *options]
        with open(self.folder / "server.log", "w", encoding="utf-8") as log:
            self._server = subprocess.Popen(command, pass_fds=[writing], stdout=log, stderr=log)
        os.close(writing)
        with os.fdopen(reading) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise RuntimeError((self.folder / "server.log").read_text())
        self.environment["DISPLAY"] = ":" + number

    def start(self, command, **variables):
        process = Process(command, {**self.environment, **variables})
        self._processes.append(process)
        return process

    def run(self, command):
        return subprocess.run(
            [str(part) for part in command],
            env=self.environment, capture_output=True, text=True, timeout=DEADLINE, check=True,
        ).stdout

    def open_eyes(self):
        self.probe = Probe(self.environment)

    def start_window_manager(self, configuration=NO_KEYS):
        """openbox with the given configuration; None stands for the one that it is shipped with."""
        running = self.folder / "openbox-runs"
        running.unlink(missing_ok=True)
        command = ["openbox", "--sm-disable", "--startup", f"touch {running}"]
        if configuration:
            command += ["--config-file", configuration]
        self.start_manager(command)
        # It announces itself early, and forgets the windows that ask to be mapped soon after.
        if not self.wait_until(running.exists):
            raise RuntimeError("openbox does not get to run: " + self.window_manager.output)

    def start_manager(self, command):
        self.window_manager = self.start(command)
        if not self.wait_until(self.is_managed):
            raise RuntimeError("no window manager: " + self.window_manager.output)

    def is_managed(self):
        """Whether a window manager has announced itself and its window is alive."""
        answer = self.run(["xprop", "-root", "-notype", "_NET_SUPPORTING_WM_CHECK"])
        if "window id # " not in answer:
            return False
        window = answer.split("# ")[1].strip()
        check = subprocess.run(
            ["xprop", "-id", window, "_NET_SUPPORTING_WM_CHECK"],
            env=self.environment, capture_output=True, text=True, timeout=DEADLINE, check=False,
        )
        return window in check.stdout

    @staticmethod
    def wait_until(holds, timeout=DEADLINE):
        """For what no event tells, in files or other programs."""
        end = time.monotonic() + timeout
        while not holds():
            if time.monotonic() > end:
                return False
            time.sleep(0.01)
        return True

    def start_compositor(self):
        width, height = self.probe.size()
        self.probe.remember("uncomposed", (width // 2, height // 2, 8, 8))
        self.compositor = self.start(["picom", "--backend", "xrender", "--config", "/dev/null"])
        if not self.probe.wait_selection("_NET_WM_CM_S0"):
            raise RuntimeError("no compositor")
        # Where there is nothing but the root window, it paints a colour of its own.
        if not self.probe.wait_change("uncomposed"):
            raise RuntimeError("the compositor does not paint")

    def note_launched_before(self):
        """A home folder in which this version has run: the program greets nobody."""
        self.write_settings({})
        self.write_user_defaults({
            "kInitialApplicationLaunchVersionTwoKey": datetime.datetime(2023, 3, 8), VERSION: "Welcomed",
        })

    def make_new(self):
        """A home folder in which the program has never run."""
        self.settings_path.unlink()
        self.user_defaults_path.unlink()

    def write_user_defaults(self, values):
        replace(self.user_defaults_path, plistlib.dumps(values))

    def read_user_defaults(self):
        return plistlib.loads(self.user_defaults_path.read_bytes())

    def read_settings(self):
        return plistlib.loads(self.settings_path.read_bytes())

    @property
    def user_defaults_path(self):
        return self.home / USER_DEFAULTS

    def write_settings(self, values, fmt=plistlib.FMT_XML):
        """Both generation marks are set unless given: without them most keys are not read."""
        marks = {"OnePointOneSettingsHaveBeenSaved": True, "TwoPointOhSettingsHaveBeenSaved": True}
        self.write_settings_bytes(plistlib.dumps({**DEFAULTS, **marks, **values}, fmt=fmt))

    def write_settings_bytes(self, content):
        replace(self.settings_path, content)

    @property
    def settings_path(self):
        return self.home / SETTINGS

    def write_hot_keys(self, hot_keys):
        """From identifiers to pairs of a key code and modifier flags."""
        replace(self.hot_keys_path, plistlib.dumps({
            identifier: plistlib.dumps({"keyCode": key_code, "modifierFlags": flags})
            for identifier, (key_code, flags) in hot_keys.items()
        }))

    def read_hot_keys(self):
        """The same; empty without a file."""
        if not self.hot_keys_path.exists():
            return {}
        archives = plistlib.loads(self.hot_keys_path.read_bytes())
        hot_keys = {name: plistlib.loads(archive) for name, archive in archives.items()}
        return {name: (key["keyCode"], key["modifierFlags"]) for name, key in hot_keys.items()}

    @property
    def hot_keys_path(self):
        return self.home / HOT_KEYS

    def start_program(self, **variables):
        self.program = self.start([PROGRAM], **variables)
        return self.program

    def wait_until_ready(self):
        """Until the program has taken its keys."""
        return self.program.wait_for_line(lambda line: READY in line) is not None

    def end(self):
        if self.probe:
            self.probe.end()
        for process in reversed(self._processes):
            process.end()
        self._server.terminate()
        self._server.wait(DEADLINE)
        shutil.rmtree(self.folder, ignore_errors=True)


# What a file has to hold for a program that reads it to behave as without one.
DEFAULTS = {
    "ActivatesOnOptionTab": True,
    "ActivatesOnCommandTab": True,
    "HasPerformedOneTimeStartUp": True,
    "KeepQuillboxActiveWhenMouseMovedWithCommandTabActivation": True,
    "KeepQuillboxActiveWhenMouseMovedWithOptionTabActivation": True,
    "LowerTabRowItemHaloHeight": 50,
    "UpperTabRowItemHaloHeight": 85,
    "TabRowColorBlue": 0.125,
    "TabRowColorAlpha": 0.5,
    "NotifyUserOfApplicationLaunch": True,
    "ClipboardManagerHistoryCaptureMode": 1,
    "MaxHostViewWidthPercent": 66,
}
