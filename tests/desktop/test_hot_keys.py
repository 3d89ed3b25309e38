"""Hot keys of items: in force everywhere and after a restart, and recorded with real keys."""

import os
import signal
import stat
import unittest

from harness import TOOLS
from harness.case import DesktopTestCase

CONTROL, OPTION = 0x40000, 0x80000
E, T, F5 = 14, 17, 96
CONTROL_ALT_T = (T, CONTROL | OPTION)
OPENED = "opened.txt"


class HotKeyTestCase(DesktopTestCase):
    starts_program = False

    def path_of(self, name):
        return str(self.desktop.home / f".local/share/applications/{name}.desktop")

    def tap_control_alt(self, key):
        self.assert_input_is_free()
        self.probe.tap("Control_L", "Alt_L", key)


class StoredHotKeys(HotKeyTestCase):
    def start_with(self, hot_keys, **variables):
        self.desktop.write_hot_keys(hot_keys)
        self.desktop.start_program(**variables)
        self.assertTrue(self.desktop.wait_until_ready())

    def test_running_application_comes_to_the_front(self):
        self.start_with({self.path_of("Alpha"): CONTROL_ALT_T, self.path_of("Beta"): (F5, 0)})
        self.tap_control_alt("t")
        self.assert_active("Alpha")
        self.assert_input_is_free()
        self.probe.tap("F5")
        self.assert_active("Beta")
        for application in self.applications:
            self.assertNotIn("press t", application.events)
            self.assertNotIn("press F5", application.events)

    def test_it_does_so_through_its_item_too(self):
        self.start_with({self.path_of("Beta"): CONTROL_ALT_T})
        # The row makes its items when it is shown.
        self.super_tab()
        self.assert_active("Alpha")
        self.tap_control_alt("t")
        self.assert_active("Beta")

    def test_after_a_restart(self):
        self.start_with({self.path_of("Alpha"): CONTROL_ALT_T})
        self.desktop.program.terminate()
        self.assertEqual(self.desktop.program.wait(), 0)
        self.assert_chord_is_free("control", "t")
        self.desktop.start_program()
        self.assertTrue(self.desktop.wait_until_ready())
        self.tap_control_alt("t")
        self.assert_active("Alpha")

    def test_application_that_does_not_run_is_started(self):
        delta = self.path_of("Delta")
        starter = self.desktop.folder / "delta"
        starter.write_text(f"#!/bin/sh\necho $$ > {starter}.pid\n"
                           f"exec {TOOLS}/xclient Delta 400 40 300 200 c0c030 > /dev/null\n")
        starter.chmod(starter.stat().st_mode | stat.S_IXUSR)
        with open(delta, "w", encoding="utf-8") as entry:
            entry.write("[Desktop Entry]\nType=Application\nName=Delta\n"
                        f"Exec={starter}\nStartupWMClass=Delta\n")
        self.start_with({delta: CONTROL_ALT_T})
        self.tap_control_alt("t")
        self.assert_active("Delta")
        os.kill(int(starter.with_suffix(".pid").read_text()), signal.SIGTERM)

    def test_file_is_opened(self):
        # The desktop's own tool, as far as this test goes.
        opener = self.desktop.folder / "bin/xdg-open"
        opener.parent.mkdir()
        opener.write_text('#!/bin/sh\nprintf %s "$1" > "$HOME/part" && mv "$HOME/part" "$HOME/'
                          f'{OPENED}"\n')
        opener.chmod(opener.stat().st_mode | stat.S_IXUSR)
        notes = self.desktop.home / "some notes.txt"
        notes.write_text("notes")
        self.start_with({str(notes): CONTROL_ALT_T},
                        PATH=f"{opener.parent}:{self.desktop.environment['PATH']}")
        self.tap_control_alt("t")
        opened = self.desktop.home / OPENED
        self.assertTrue(self.desktop.wait_until(opened.exists))
        self.assertEqual(opened.read_text(), str(notes))

    def test_without_the_desktops_opener_it_says_so(self):
        notes = self.desktop.home / "some notes.txt"
        notes.write_text("notes")
        self.start_with({str(notes): CONTROL_ALT_T}, PATH=str(self.desktop.home))
        self.tap_control_alt("t")
        told = f"{notes} cannot be opened: there is no xdg-open, which belongs to the package xdg-utils."
        self.assertIsNotNone(self.desktop.program.wait_for_line(lambda line: line == told))

    def test_killed_program_leaves_none_behind(self):
        self.start_with({self.path_of("Alpha"): (T, CONTROL)})
        self.assertTrue(self.probe.chord_is_taken("control", "t"))
        self.desktop.program.kill()
        self.assert_chord_is_free("control", "t")
        self.assert_keys_reach(self.gamma)

    def test_unreadable_file_is_no_harm(self):
        self.desktop.hot_keys_path.write_text("damaged")
        self.desktop.start_program()
        self.assertTrue(self.desktop.wait_until_ready())
        self.super_tab()
        self.assert_active("Alpha")
        self.assertEqual(self.desktop.hot_keys_path.read_text(), "damaged")


class Recorder(HotKeyTestCase):
    """The dialog, in a program that is whole otherwise."""

    def open_dialog(self, **variables):
        self.alpha_path = self.path_of("Alpha")
        self.program = self.desktop.start(
            [TOOLS / "hotkeydialog", self.alpha_path, "Alpha"], **variables)
        self.desktop.program = self.program
        self.wait_until_it_listens()

    def wait_until_it_listens(self):
        """It keeps the keyboard then."""
        self.assertTrue(self.desktop.wait_until(lambda: not self.probe.input_is_free()),
                        "the recorder does not listen")

    def close_dialog(self):
        self.assert_input_is_free()
        self.probe.tap("Return")
        self.assert_closed()

    def assert_closed(self):
        closed = self.program.wait_for_line(lambda line: "dialog closed" in line)
        self.assertIsNotNone(closed, "the dialog stays")

    def assert_recorded(self, hot_key):
        self.desktop.wait_until(lambda: self.alpha_path in self.desktop.read_hot_keys())
        self.assertEqual(self.desktop.read_hot_keys().get(self.alpha_path), hot_key)

    def record(self, *keys):
        self.probe.tap(*keys)

    def test_recorded_hot_key_works_everywhere_and_after_a_restart(self):
        self.open_dialog()
        self.record("Control_L", "Alt_L", "t")
        self.assert_recorded(CONTROL_ALT_T)
        self.close_dialog()
        self.assert_active("Gamma")
        self.tap_control_alt("t")
        self.assert_active("Alpha")
        self.program.end()
        self.assertTrue(self.probe.activate("Gamma"))
        self.desktop.start_program()
        self.assertTrue(self.desktop.wait_until_ready())
        self.tap_control_alt("t")
        self.assert_active("Alpha")
        self.assertNotIn("press t", self.gamma.events)

    def test_return_closes_it_while_it_listens(self):
        self.open_dialog()
        self.probe.tap("Return")
        self.assert_closed()
        self.assert_keys_reach(self.gamma)
        self.assertEqual(self.desktop.read_hot_keys(), {})

    def test_backspace_clears(self):
        self.desktop.write_hot_keys({self.path_of("Alpha"): (F5, 0), self.path_of("Beta"): (E, CONTROL)})
        self.open_dialog()
        self.probe.tap("BackSpace")
        cleared = self.desktop.wait_until(
            lambda: self.desktop.read_hot_keys() == {self.path_of("Beta"): (E, CONTROL)})
        self.assertTrue(cleared, self.desktop.read_hot_keys())
        self.close_dialog()
        self.assert_chord_is_free("control", "F5")

    def test_keys_of_the_program_itself_reach_it(self):
        self.open_dialog()
        self.record("Super_L", "h")
        self.record("Super_L", "Tab")
        self.record("Alt_L", "Tab")
        # It has refused them and listens on.
        self.record("Control_L", "Alt_L", "t")
        self.assert_recorded(CONTROL_ALT_T)
        self.close_dialog()
        self.assert_active("Gamma")
        self.assert_keys_reach(self.gamma)

    def test_hot_key_of_another_item_is_taken(self):
        self.desktop.write_hot_keys({self.path_of("Beta"): CONTROL_ALT_T})
        self.open_dialog()
        self.record("Control_L", "Alt_L", "t")
        # The alert above the recorder has the focus and lets the keyboard go.
        self.wait_for_dialog("Hot Key Taken")
        self.assertTrue(self.probe.wait_input_free())
        self.answer_dialog("Hot Key Taken")
        self.wait_until_it_listens()
        self.assertEqual(self.desktop.read_hot_keys(), {self.path_of("Beta"): CONTROL_ALT_T})
        self.record("Control_L", "Alt_L", "e")
        self.assert_recorded((E, CONTROL | OPTION))
        self.close_dialog()
        self.assert_active("Gamma")

    def test_killed_while_it_listens_it_leaves_nothing_grabbed(self):
        self.open_dialog()
        self.program.kill()
        self.assertTrue(self.probe.wait_input_free())
        self.assert_keys_reach(self.gamma)

    def test_user_who_turns_away_has_the_keyboard(self):
        self.open_dialog()
        x, y, width, height = self.alpha.area
        self.probe.click((x + width // 2, y + height // 2))
        self.assertTrue(self.probe.wait_input_free(), "it goes on listening")
        self.assert_keys_reach(self.alpha)
        self.assertEqual(self.desktop.read_hot_keys(), {})


class RecorderWithShortcutsOfTheWindowManager(Recorder):
    def start_window_manager(self):
        self.desktop.start_window_manager(configuration=None)

    def test_they_reach_it_and_are_refused(self):
        self.open_dialog()
        # To the window manager these mean to close the window and to show the desktop.
        self.record("Alt_L", "F4")
        self.record("Super_L", "d")
        self.record("Control_L", "Alt_L", "t")
        self.assert_recorded(CONTROL_ALT_T)
        self.close_dialog()
        self.assert_active("Gamma")
        self.assert_keys_reach(self.gamma)


class RecorderAtScaleTwo(Recorder):
    size = (2560, 1600)

    def open_dialog(self, **variables):
        super().open_dialog(QT_SCALE_FACTOR="2")


class RecorderWithoutAccess(Recorder):
    """The user has not granted the access that the tap needs."""

    def open_dialog(self, **variables):
        super().open_dialog(QUILLBOX_NO_INPUT_ACCESS="1")


if __name__ == "__main__":
    unittest.main()
