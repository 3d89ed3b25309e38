"""The program runs in this home folder for the first time."""

import unittest

from harness import PROGRAM
from harness.desktop import VERSION
from harness.panel import Panel
from harness.session import SessionTestCase

GREETING = "Quillbox Installed"
INTRODUCTION = "Quillbox Introduction"


class FirstRun(SessionTestCase):
    starts_program = False

    def setUp(self):
        super().setUp()
        self.desktop.make_new()
        self.panel = Panel(self.probe, self.probe.size(), len(self.probe.clients()))
        self.start_in_new_home()

    def start_in_new_home(self):
        self.program = self.desktop.start_program()

    def get_ready(self):
        self.answer_dialog(GREETING)
        self.assertTrue(self.desktop.wait_until_ready())
        # The dialog is gone some milliseconds before Gamma has its turn again, and the row starts
        # from what is in front.
        self.assert_active("Gamma")

    def test_greets_and_adds_the_login_item(self):
        entry = self.desktop.home / ".config/autostart/com.vorlane.quillbox.desktop"
        self.wait(entry.exists, "no login item")
        self.wait(lambda: f'Exec="{PROGRAM.resolve()}"' in entry.read_text(), "it starts another one")
        self.assertTrue(self.desktop.read_settings()["HasPerformedOneTimeStartUp"])
        self.get_ready()
        self.assertIn(VERSION, self.desktop.read_user_defaults())
        self.super_tab()
        # It comes above Alpha, half a second later.
        self.answer_dialog(INTRODUCTION)
        self.assert_active("Alpha")

    def test_greets_once(self):
        self.get_ready()
        self.program.terminate()
        self.assertEqual(self.program.wait(), 0)
        self.start_in_new_home()
        # It gets ready without an answer.
        self.assertTrue(self.desktop.wait_until_ready(), self.program.output)
        self.assertEqual(self.probe.focused_title(), "Gamma")

    def test_introduction_stands_above_the_panel_and_takes_what_is_typed(self):
        self.get_ready()
        start = len(self.gamma.events)
        self.open_panel()
        self.wait_for_dialog(INTRODUCTION)
        self.assertTrue(self.panel_window_is_up())
        area = self.area_of_focus()
        place = (area[0] + 20, area[1] + 60)
        self.wait(lambda: self.window_under_pointer_at(place) == self.focus(), "the panel covers it")
        self.probe.up("Super_L")
        self.answer_dialog(INTRODUCTION)
        self.assertNotIn("press Return", self.gamma.events[start:])
        self.assert_panel_has_keyboard()
        self.probe.tap("Escape")
        self.assert_panel_gone()
        self.assertTrue(self.probe.activate("Gamma"))
        self.assert_keys_reach(self.gamma)

    def test_killed_under_the_greeting_it_leaves_nothing_grabbed(self):
        self.wait_for_dialog(GREETING)
        self.assertTrue(self.probe.input_is_free(), "a dialog grabs nothing")
        self.program.kill()
        self.assertTrue(self.probe.activate("Gamma"))
        self.assert_keys_reach(self.gamma)

    def focus(self):
        return self.desktop.run(["xdotool", "getwindowfocus"]).strip()

    def area_of_focus(self):
        fields = self.desktop.run(["xdotool", "getwindowfocus", "getwindowgeometry", "--shell"])
        area = dict(line.split("=") for line in fields.split())
        return tuple(int(area[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))

    def window_under_pointer_at(self, position):
        self.probe.move(position)
        fields = self.desktop.run(["xdotool", "getmouselocation", "--shell"])
        return dict(line.split("=") for line in fields.split())["WINDOW"]


if __name__ == "__main__":
    unittest.main()
