"""The user grants and revokes the access to the desktop's keys while the program runs."""

import os
import signal
import unittest

from harness.desktop import READY
from harness.session import SessionTestCase

LOSS = "Quillbox Loss in Functionality"
THANKS = "Quillbox Fully Functional"


class AccessTestCase(SessionTestCase):
    denied_at_start = False

    def setUp(self):
        super().setUp()
        self.addCleanup(self.end_programs)
        # Before that the program has not looked yet, and would see nothing change.
        self.wait(self.information.exists, "the access is not looked at")
        self.old = self.running_programs()
        self.assertEqual(len(self.old), 1)

    def start_program(self):
        self.deny_access(self.denied_at_start)
        super().start_program()

    def end_programs(self):
        """Also those that the program itself has started."""
        for pid in self.running_programs():
            os.kill(pid, signal.SIGTERM)
        self.wait(lambda: not self.running_programs(), "the new program does not end")

    def has_started_anew(self):
        running = self.running_programs()
        return len(running) == 1 and running != self.old

    def assert_started_anew(self):
        self.wait(self.has_started_anew, "the program does not start anew")
        # It goes on in the same log.
        self.wait(lambda: self.program.lines.count(READY) == 2, "the new program does not get ready")

    def assert_super_tab_raises_the_panel(self):
        """By its window: the preferences may have come up, and look different beneath it."""
        self.assert_input_is_free()
        with self.probe.holding("Super_L"):
            self.probe.tap("Tab")
            self.wait(self.panel_window_is_up, "the panel does not come")
        self.assert_input_is_free()


class Granted(AccessTestCase):
    def test_nothing_is_said_at_the_start(self):
        self.assertEqual(self.probe.focused_title(), "Gamma")
        self.assert_super_tab_raises_the_panel()

    def test_revoked_it_says_what_is_lost(self):
        self.deny_access(True)
        self.answer_dialog(LOSS)
        self.assert_super_tab_passes_on(self.gamma)
        self.assertEqual(self.running_programs(), self.old)

    def test_granted_again_while_that_is_being_said(self):
        self.deny_access(True)
        self.wait_for_dialog(LOSS)
        self.deny_access(False)
        self.wait_for_dialog_to_go(LOSS)
        # The thanks go by themselves as well: what tells of a loss is taken back again and again.
        self.assert_started_anew()
        self.assert_super_tab_raises_the_panel()


class NotGranted(AccessTestCase):
    denied_at_start = True

    def test_nothing_is_said_at_the_start(self):
        self.assertEqual(self.probe.focused_title(), "Gamma")
        self.assert_super_tab_passes_on(self.gamma)

    def test_granted_it_says_thanks_and_starts_anew(self):
        self.deny_access(False)
        self.answer_dialog(THANKS)
        self.assert_started_anew()
        self.assert_super_tab_raises_the_panel()

    def test_revoked_again_while_that_is_being_said(self):
        self.deny_access(False)
        self.wait_for_dialog(THANKS)
        self.deny_access(True)
        self.wait_for_dialog_to_go(THANKS)
        self.assert_started_anew()
        self.assert_super_tab_passes_on(self.gamma)


if __name__ == "__main__":
    unittest.main()
