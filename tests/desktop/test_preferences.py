"""The preference program, and what other programs of the session change."""

import os
import signal
import subprocess
import unittest

from harness import DEADLINE
from harness.case import SHORT, DesktopTestCase
from harness.session import PREFERENCES, SessionTestCase

NO_BUS = "No session bus ("
SILENT_BUS = "The session bus does not answer, so Quillbox goes on without it."


class PreferenceProgram(SessionTestCase):
    def test_a_switch_is_saved_and_counts_at_once(self):
        self.start_preferences("--page=activation")
        self.probe.tap("Tab")  # From the list of pages to the first switch: Super-Tab.
        self.probe.tap("space")
        self.wait(lambda: not self.desktop.read_settings()["ActivatesOnCommandTab"], "not saved")
        self.assertTrue(self.desktop.read_settings()["ActivatesOnOptionTab"])
        self.probe.tap("Escape")
        self.assert_active("Gamma")
        self.assert_super_tab_passes_on(self.gamma)

    def test_preview_shows_the_panel(self):
        self.start_preferences("--page=appearance")

        def shows():
            self.probe.tap("Alt_L", "p")
            return self.desktop.wait_until(self.panel_window_is_up, SHORT)

        self.wait(shows, "the panel does not show")
        self.probe.tap("Escape")

    def test_second_start_hands_over_to_the_first(self):
        self.start_preferences()
        second = subprocess.run([PREFERENCES, "--page=access"], env=self.desktop.environment,
                                timeout=DEADLINE, check=False)
        self.assertEqual(second.returncode, 0)

    def test_access_is_published_for_it(self):
        self.wait(self.information.exists, "nothing is published")
        self.assertEqual(self.information.stat().st_mode & 0o777, 0o600)


class SettingsOfAnotherProcess(SessionTestCase):
    def test_file_is_read_again_when_told(self):
        self.probe.move((640, 300))
        self.desktop.write_settings({"ActivatesViaTopLeftCorner": True})
        self.panel.remember_hidden()
        self.wait(self.corner_raises_the_panel, "the corner does nothing")

    def corner_raises_the_panel(self):
        self.post("Settings Changed")
        self.probe.move((640, 300))
        self.probe.move((0, 0))
        return self.panel.wait_shown(SHORT)

    def test_preview_is_shown_to_whoever_asks(self):
        self.panel.remember_hidden()
        self.wait(self.preview_shows_the_panel, "the panel does not show")
        self.probe.tap("Escape")

    def preview_shows_the_panel(self):
        # Again and again: the program may not have found the bus yet.
        self.post("Preview Quillbox")
        return self.panel.wait_shown(SHORT)


class NoSessionBus(DesktopTestCase):
    def test_is_logged_once_and_all_else_works(self):
        self.assertIsNotNone(
            self.program.wait_for_line(lambda line: line.startswith(NO_BUS)))
        self.super_tab()
        self.assert_active("Alpha")
        lines = [line for line in self.program.lines if line.startswith(NO_BUS)]
        self.assertEqual(len(lines), 1)


class SilentSessionBus(SessionTestCase):
    """It takes whatever is sent to it and never answers."""

    def start_program(self):
        os.kill(self.bus.pid, signal.SIGSTOP)
        self.addCleanup(os.kill, self.bus.pid, signal.SIGCONT)
        super().start_program()

    def test_is_done_without(self):
        self.super_tab()
        self.assert_active("Alpha")
        self.assertEqual(self.program.lines.count(SILENT_BUS), 1)
        self.program.terminate()
        self.assertEqual(self.program.wait(), 0)

    def test_dialog_comes_all_the_same(self):
        self.wait(self.information.exists, "the access is not looked at")
        self.deny_access(True)
        self.answer_dialog("Quillbox Loss in Functionality")
        self.assert_super_tab_passes_on(self.gamma)

    def test_preferences_open_and_close(self):
        preferences = self.start_preferences()
        self.probe.tap("Escape")
        self.assertEqual(preferences.wait(), 0)


if __name__ == "__main__":
    unittest.main()
