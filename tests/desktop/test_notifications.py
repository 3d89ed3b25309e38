"""Notifications of the desktop, posted by an item that the keys invoke, and desktops without them."""

import os
import signal
import unittest

from harness import TOOLS
from harness.session import SessionTestCase
from test_items import GreyItems

NO_DAEMON = "No desktop notifications: "
NO_BUS = "No session bus ("


class NotificationTestCase(GreyItems):
    def invoke_item(self):
        """Answers its name."""
        start = len(self.program.lines)
        self.open_panel()
        self.probe.tap("Down")
        self.probe.up("Super_L")
        line = self.program.wait_for_line(lambda line: line.startswith("invoked "), start)
        self.assertIsNotNone(line, "no item is invoked")
        self.assert_panel_gone()
        return self.program.lines[line].removeprefix("invoked ")

    def assert_super_tab_works(self):
        self.super_tab()
        self.assert_active("Alpha")

    def assert_logged_once(self, beginning):
        self.assertIsNotNone(
            self.program.wait_for_line(lambda line: line.startswith(beginning)), "nothing is logged")
        lines = [line for line in self.program.lines if line.startswith(beginning)]
        self.assertEqual(len(lines), 1, lines)


class Daemon(NotificationTestCase, SessionTestCase):
    def start_applications(self):
        super().start_applications()
        self.daemon = self.desktop.start([TOOLS / "notificationdaemon"])
        ready = self.daemon.wait_for_line(lambda line: line == "ready")
        self.assertIsNotNone(ready, "no notification daemon")

    def assert_notified(self, item, start=1):
        """Though this program has the keyboard while it posts."""
        self.assertIsNotNone(
            self.daemon.wait_for_line(lambda line: line.startswith("sound "), start),
            "no notification comes")
        # Daemons read markup.
        self.assertEqual(
            self.daemon.lines[start:],
            ["title Item Invoked", f"text It was &lt;{item}&gt;.", "sound message"])

    def test_gets_title_text_and_sound(self):
        self.assert_notified(self.invoke_item())

    def test_one_that_hangs_holds_nobody_up(self):
        os.kill(self.daemon.pid, signal.SIGSTOP)
        self.addCleanup(os.kill, self.daemon.pid, signal.SIGCONT)
        item = self.invoke_item()
        self.assert_super_tab_works()
        # Whoever waited for it has given up by now.
        self.assertFalse(any(NO_DAEMON in line for line in self.program.lines))
        self.assertEqual(self.daemon.lines, ["ready"])
        os.kill(self.daemon.pid, signal.SIGCONT)
        self.assert_notified(item)


class NoDaemon(NotificationTestCase, SessionTestCase):
    def test_is_logged_once_and_all_else_works(self):
        self.invoke_item()
        self.assert_super_tab_works()
        self.invoke_item()
        self.assert_super_tab_works()
        self.assert_logged_once(NO_DAEMON)

    def test_one_that_comes_later_is_found(self):
        self.invoke_item()
        self.assert_logged_once(NO_DAEMON)
        daemon = self.desktop.start([TOOLS / "notificationdaemon"])
        self.assertIsNotNone(daemon.wait_for_line(lambda line: line == "ready"))
        self.invoke_item()
        self.assertIsNotNone(daemon.wait_for_line(lambda line: line == "title Item Invoked"))


class NoBus(NotificationTestCase):
    def test_is_logged_once_and_all_else_works(self):
        self.invoke_item()
        self.assert_super_tab_works()
        self.invoke_item()
        self.assert_logged_once(NO_BUS)
        self.assertFalse(any(NO_DAEMON in line for line in self.program.lines))


if __name__ == "__main__":
    unittest.main()
