"""The base of all desktop tests."""

import unittest

from .desktop import Desktop, three_applications
from .panel import Panel


# Seconds until the next of several attempts.
SHORT = 3


class DesktopTestCase(unittest.TestCase):
    """A display with a window manager and three applications, of which Gamma is in front, and the
    program on top of them. What the program has logged is told when a test fails."""

    size = (1280, 800)
    server_options = ()
    settings = None  # Written before the start, unless None.
    variables = {}  # For the program's environment.
    starts_program = True

    def setUp(self):
        self.desktop = Desktop(self.size, self.server_options)
        self.addCleanup(self.desktop.end)
        self.addCleanup(self._tell_log)
        self.desktop.open_eyes()
        self.probe = self.desktop.probe
        self.start_window_manager()
        self.start_applications()
        if self.settings is not None:
            self.desktop.write_settings(self.settings)
        if self.starts_program:
            self.start_program()

    def start_window_manager(self):
        self.desktop.start_window_manager()

    def start_applications(self):
        self.applications = three_applications()
        self.alpha, self.beta, self.gamma = self.applications
        for application in self.applications:
            application.start(self.desktop)

    def start_program(self):
        self.program = self.desktop.start_program(**self.variables)
        self.assertTrue(self.desktop.wait_until_ready(), "the program does not get ready")
        scale = int(self.variables.get("QT_SCALE_FACTOR", 1))
        self.panel = Panel(self.probe, self.probe.size(), len(self.probe.clients()), scale)

    def _tell_log(self):
        result = self._outcome.result
        problems = result.failures + result.errors
        failed = any(test.id().startswith(self.id()) for test, _ in problems)
        if failed and self.desktop.program:
            print(f"\n--- the program's log in {self.id()}\n{self.desktop.program.output}\n---")

    # What many tests say.

    def wait(self, holds, message):
        self.assertTrue(self.desktop.wait_until(holds), message)

    def assert_active(self, name):
        self.assertTrue(
            self.probe.wait_active(name), f"{name} is not in front, but {self.probe.active()}"
        )

    def super_tab(self):
        """Super down, Tab, Super up, as quick as it goes; not before the last time is over."""
        self.assert_input_is_free()
        self.probe.tap("Super_L", "Tab")

    def go_round(self):
        """Through all applications back to the one in front, which then counts as the one before
        whatever comes next: the program looks by itself only once a second."""
        self.assert_input_is_free()
        with self.probe.holding("Super_L"):
            for _ in self.applications:
                self.probe.tap("Tab")
        self.assert_input_is_free()

    def open_panel(self, modifier="Super_L"):
        """Holds the modifier, presses Tab, and waits until the panel shows. The modifier stays
        down: `probe.up` ends it."""
        self.assert_input_is_free()
        self.panel.remember_hidden()
        self.probe.down(modifier)
        self.probe.tap("Tab")
        self.assert_panel_shows()

    def assert_panel_shows(self):
        self.assertTrue(self.panel.wait_shown(), "the panel does not show")

    def assert_panel_gone(self):
        self.assertTrue(self.panel.wait_hidden(), "the panel does not go away")

    def assert_input_is_free(self):
        """The last switch is over: the panel's window is away and nobody holds the keyboard. The
        application is in front some milliseconds before."""
        away = self.desktop.wait_until(lambda: not self.panel_window_is_up())
        self.assertTrue(away, "the panel's window stays")
        self.assertTrue(self.probe.wait_input_free(), "keyboard or pointer is grabbed")

    def panel_window_is_up(self):
        """A mapped window of the program's that is as high as the screen; a notice is smaller."""
        geometry = self.probe.geometry("quillbox")
        return geometry is not None and geometry[3] == self.probe.size()[1]

    def assert_panel_has_keyboard(self):
        """Again, after a dialog or a menu: keys that come before would go elsewhere."""
        self.wait(lambda: not self.probe.input_is_free(), "the panel does not take the keyboard")

    def assert_chord_is_free(self, modifier, key):
        """The server tidies up only after the program has ended."""
        self.wait(lambda: not self.probe.chord_is_taken(modifier, key), f"{modifier} {key} is taken")

    def assert_super_tab_passes_on(self, application):
        """Tried again: the program may not have heard of it yet, and another one that comes up just
        then has the keys itself."""

        def passes_on():
            start = len(application.events)
            self.assertTrue(self.probe.activate(application.name))
            self.assert_input_is_free()
            self.probe.tap("Super_L", "Tab")
            return application.receives("press Tab", start, SHORT)

        self.wait(passes_on, "Super-Tab is still taken")

    def assert_keys_reach(self, application):
        """A key that is pressed now arrives there: nobody else holds the keyboard."""
        self.assert_input_is_free()
        self.assertTrue(
            self.probe.wait_focused(application.name), f"{application.name} does not get the focus")
        start = len(application.events)
        self.probe.tap("m")
        self.assertTrue(application.receives("press m", start), "a key does not reach the client")

    def assert_order(self, *names):
        """The order of the row, as the icons on the visible panel show it."""
        colours = {application.colour: application.name for application in self.applications}
        for index, name in enumerate(names):
            application = next(one for one in self.applications if one.name == name)
            self.assertTrue(
                self.probe.wait_pixel(self.panel.icon(index), application.colour),
                f"{name} is not at place {index}, but "
                f"{colours.get(self.probe.pixel(self.panel.icon(index)))}",
            )

    # Dialogs.

    def dialog_has_keyboard(self, message):
        """A dialog of the program is up and takes what is typed; it is called by its message."""
        return self.probe.focused_title().startswith(message)

    def wait_for_dialog(self, message):
        self.wait(lambda: self.dialog_has_keyboard(message), f"no dialog says {message}")

    def wait_for_dialog_to_go(self, message):
        self.wait(lambda: not self.dialog_has_keyboard(message), f"{message} stays")

    def answer_dialog(self, message, key="Return"):
        """Returns once it is gone."""
        self.wait_for_dialog(message)
        self.probe.tap(key)
        self.wait_for_dialog_to_go(message)
