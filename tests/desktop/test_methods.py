"""The other ways to raise the panel: Alt-Tab, screen corners, the double tap of Super."""

import time
import unittest

from harness.case import SHORT, DesktopTestCase

# More than from one look at the corners to the next.
LOOK_SECONDS = 0.3
# A tap as a hand makes it: long enough to be seen by a look at the keyboard every 0.05 second.
TAP_SECONDS = 0.12


class AltTab(DesktopTestCase):
    def test_tap_switches_and_the_next_tap_back(self):
        self.probe.tap("Alt_L", "Tab")
        self.assert_active("Alpha")
        self.assert_input_is_free()
        self.probe.tap("Alt_L", "Tab")
        self.assert_active("Gamma")

    def test_holding_shows_the_panel(self):
        self.open_panel("Alt_L")
        self.assert_order("Gamma", "Alpha", "Beta")
        self.probe.tap("Tab")
        self.probe.up("Alt_L")
        self.assert_active("Beta")
        self.assert_panel_gone()

    def test_shift_steps_backward(self):
        with self.probe.holding("Alt_L", "Shift_L"):
            self.probe.tap("Tab")
        self.assert_active("Beta")

    def test_escape_ends_it_without_a_switch(self):
        self.open_panel("Alt_L")
        self.probe.tap("Escape")
        self.assert_panel_gone()
        self.probe.up("Alt_L")
        self.assert_keys_reach(self.gamma)


class AltTabOff(DesktopTestCase):
    settings = {"ActivatesOnOptionTab": False}

    def test_chord_passes_on_to_the_application(self):
        self.probe.tap("Alt_L", "Tab")
        self.assertTrue(self.gamma.receives("press Tab"))
        self.super_tab()
        self.assert_active("Alpha")


class SuperTabOff(DesktopTestCase):
    settings = {"ActivatesOnCommandTab": False}

    def test_chord_passes_on_to_the_application(self):
        self.probe.tap("Super_L", "Tab")
        self.assertTrue(self.gamma.receives("press Tab"))
        self.probe.tap("Alt_L", "Tab")
        self.assert_active("Alpha")


class AltTabOfTheWindowManager(DesktopTestCase):
    def start_window_manager(self):
        self.desktop.start_window_manager(configuration=None)

    def test_log_names_the_chord_that_another_program_holds(self):
        for chord in ("Alt+Tab", "Alt+Shift+Tab"):
            told = f"{chord} is held by another program"
            self.assertIsNotNone(self.program.wait_for_line(lambda line, told=told: line == told))
            self.assertEqual(self.program.lines.count(told), 1, self.program.output)

    def test_super_tab_works_all_the_same(self):
        self.super_tab()
        self.assert_active("Alpha")


class Corner(DesktopTestCase):
    settings = {"ActivatesViaTopLeftCorner": True}

    def test_corner_raises_the_panel_and_return_invokes(self):
        self.probe.move((640, 300))
        self.panel.remember_hidden()
        self.probe.move((0, 0))
        self.assert_panel_shows()
        self.assert_panel_has_keyboard()
        self.probe.tap("Tab")
        self.probe.tap("Tab")
        self.probe.tap("Return")
        self.assert_active("Alpha")
        self.assert_panel_gone()

    def test_pointer_back_in_the_corner_ends_it(self):
        self.probe.move((640, 300))
        self.panel.remember_hidden()
        self.probe.move((0, 0))
        self.assert_panel_shows()
        self.probe.remember("unselected", self.panel.halo(2))
        self.probe.move(self.panel.icon(2))
        self.assertTrue(self.probe.wait_change("unselected"), "the pointer does not select")

        def ends_it():
            self.probe.move(self.panel.icon(2))
            # That it has left the corner is seen by looks, which may come late.
            time.sleep(LOOK_SECONDS)
            self.probe.move((0, 0))
            return self.panel.wait_hidden(SHORT)

        self.wait(ends_it, "the panel does not go away")
        self.assert_keys_reach(self.gamma)

    def test_other_corners_do_nothing(self):
        self.probe.move((640, 300))
        width, height = self.probe.size()
        with self.probe.watching(self.panel.row) as seen:
            for corner in ((width - 1, 0), (0, height - 1), (width - 1, height - 1)):
                self.probe.move(corner)
                time.sleep(LOOK_SECONDS)
        self.assertEqual(seen[0], 0)


class DoubleTap(DesktopTestCase):
    settings = {"ActivatesOnCommandKeyDoubleTap": True}

    def tap_super(self):
        self.probe.down("Super_L")
        time.sleep(TAP_SECONDS)
        self.probe.up("Super_L")
        time.sleep(TAP_SECONDS)

    def open_by_double_tap(self):
        """Tapped again where the looks at the keyboard come too late for a hand so quick."""
        self.panel.remember_hidden()

        def raises_the_panel():
            if not self.panel_window_is_up():
                self.tap_super()
                self.tap_super()
            return self.panel.wait_shown(1)

        self.wait(raises_the_panel, "the panel does not show")
        self.assert_panel_has_keyboard()

    def test_double_tap_raises_the_panel_and_escape_ends_it(self):
        self.open_by_double_tap()
        self.probe.tap("Escape")
        self.assert_panel_gone()
        self.assert_keys_reach(self.gamma)

    def test_fresh_press_of_super_ends_it(self):
        self.open_by_double_tap()
        self.probe.down("Super_L")
        self.assert_panel_gone()
        self.probe.up("Super_L")
        self.assert_keys_reach(self.gamma)

    def test_key_between_the_taps_spoils_it(self):
        with self.probe.watching(self.panel.row) as seen:
            self.tap_super()
            self.assert_keys_reach(self.gamma)
            self.tap_super()
            time.sleep(TAP_SECONDS)
        self.assertEqual(seen[0], 0)


if __name__ == "__main__":
    unittest.main()
