"""Super-Tab from press to switch, as the window manager and the applications see it."""

import time
import unittest

from harness.case import DesktopTestCase
from harness.desktop import Application


class SuperTab(DesktopTestCase):
    def test_tap_switches_to_the_previous_application_and_the_next_tap_back(self):
        self.super_tab()
        self.assert_active("Alpha")
        self.super_tab()
        self.assert_active("Gamma")
        self.super_tab()
        self.assert_active("Alpha")

    def test_two_tabs_switch_to_the_second_application_behind(self):
        with self.probe.holding("Super_L"):
            self.probe.tap("Tab")
            self.probe.tap("Tab")
        self.assert_active("Beta")

    def test_tabs_wrap_around_to_the_front_application(self):
        self.go_round()
        self.super_tab()
        # The first one ended on Gamma, which was in front, so this one leads to Alpha.
        self.assert_active("Alpha")

    def test_shift_super_tab_steps_backward(self):
        self.open_panel()
        self.probe.tap("Tab")
        self.probe.tap("Shift_L", "Tab")
        self.probe.up("Super_L")
        self.assert_active("Alpha")

    def test_shift_super_tab_opens_at_the_last_application(self):
        with self.probe.holding("Super_L", "Shift_L"):
            self.probe.tap("Tab")
        self.assert_active("Beta")

    def test_quick_tap_shows_nothing(self):
        with self.probe.watching(self.panel.row) as seen:
            self.super_tab()
            self.assert_active("Alpha")
        changed, looks = seen
        self.assertGreater(looks, 0)
        self.assertEqual(changed, 0)

    def test_holding_shows_the_panel_after_a_delay(self):
        self.panel.remember_hidden()
        self.probe.down("Super_L")
        pressed = time.monotonic()
        self.probe.tap("Tab")
        self.assert_panel_shows()
        self.assertGreaterEqual(time.monotonic() - pressed, 0.3)
        self.probe.up("Super_L")
        self.assert_active("Alpha")
        self.assert_panel_gone()

    def test_panel_shows_the_applications_by_recency(self):
        self.open_panel()
        self.assert_order("Gamma", "Alpha", "Beta")
        self.probe.up("Super_L")
        self.assert_active("Alpha")
        self.assert_panel_gone()
        self.open_panel()
        self.assert_order("Alpha", "Gamma", "Beta")
        self.probe.up("Super_L")
        self.assert_active("Gamma")

    def test_application_that_starts_later_joins_the_row(self):
        self.go_round()
        delta = Application("Delta", "c0c030", (940, 540, 300, 200))
        delta.start(self.desktop)
        self.super_tab()
        self.assert_active("Gamma")
        self.super_tab()
        self.assert_active("Delta")

    def test_application_that_ended_leaves_the_row(self):
        self.alpha.process.end()
        self.assertTrue(self.probe.wait_clients(2))
        self.super_tab()
        self.assert_active("Beta")


class KeysOnThePanel(DesktopTestCase):
    def test_right_and_left_step_like_tab(self):
        self.open_panel()
        self.probe.tap("Right")
        self.probe.tap("Right")
        self.probe.tap("Left")
        self.probe.up("Super_L")
        self.assert_active("Beta")

    def test_escape_ends_it_without_a_switch(self):
        self.open_panel()
        self.probe.tap("Escape")
        self.assert_panel_gone()
        self.probe.up("Super_L")
        self.assert_keys_reach(self.gamma)
        # Had something been invoked after all, this would lead elsewhere.
        self.super_tab()
        self.assert_active("Alpha")

    def test_return_switches_while_super_is_still_down(self):
        self.open_panel()
        self.probe.tap("Tab")
        self.probe.tap("Return")
        self.assert_active("Beta")
        self.assert_panel_gone()
        self.probe.up("Super_L")
        self.assert_keys_reach(self.beta)

    def test_keys_reach_no_application_while_the_panel_is_up(self):
        self.open_panel()
        starts = [len(application.events) for application in self.applications]
        for key in ("x", "1", "F5", "Down"):
            self.probe.tap(key)
        self.probe.tap("Escape")
        self.assert_panel_gone()
        self.probe.up("Super_L")
        self.assert_keys_reach(self.gamma)
        for application, start in zip(self.applications, starts):
            keys = [line for line in application.events[start:] if " " in line]
            leaked = [line for line in keys if line.split()[1] not in ("m", "Super_L")]
            self.assertEqual(leaked, [], application.name)

    def test_super_tab_itself_reaches_no_application(self):
        start = len(self.gamma.events)
        self.super_tab()
        self.assert_active("Alpha")
        self.assert_keys_reach(self.alpha)
        for application in self.applications:
            self.assertNotIn("press Tab", application.events)
            self.assertNotIn("release Tab", application.events)
        self.assertTrue(self.gamma.receives("blur", start))

    def test_other_chords_with_tab_reach_the_application(self):
        self.probe.tap("Control_L", "Tab")
        self.assertTrue(self.gamma.receives("press Tab"))
        start = len(self.gamma.events)
        self.probe.tap("Super_L", "Control_L", "Tab")
        self.assertTrue(self.gamma.receives("press Tab", start))
        self.assertEqual(self.probe.active(), "Gamma")

    def test_super_tab_with_the_locks_on(self):
        for lock in ("Caps_Lock", "Num_Lock"):
            with self.subTest(lock):
                before = self.probe.active()
                self.probe.tap(lock)
                self.super_tab()
                self.assert_active({"Gamma": "Alpha", "Alpha": "Gamma"}[before])
        self.probe.tap("Caps_Lock")
        self.probe.tap("Num_Lock")


class Pointer(DesktopTestCase):
    def test_click_on_an_icon_switches_to_it(self):
        self.open_panel()
        self.probe.remember("unselected", self.panel.halo(2))
        self.probe.move(self.panel.icon(2))
        self.assertTrue(self.probe.wait_change("unselected"), "the pointer does not select")
        self.probe.click(self.panel.icon(2))
        self.assert_active("Beta")
        self.assert_panel_gone()
        self.probe.up("Super_L")
        self.assert_keys_reach(self.beta)

    def test_click_beside_the_row_ends_it_and_reaches_no_application(self):
        self.open_panel()
        self.probe.click(self.panel.beside_row)
        self.assert_panel_gone()
        self.probe.up("Super_L")
        self.assert_keys_reach(self.gamma)

    def test_click_over_an_application_beside_the_row_does_not_reach_it(self):
        self.open_panel()
        self.probe.click((100, 140))  # In the middle of Alpha.
        self.assert_panel_gone()
        self.probe.up("Super_L")
        self.assert_keys_reach(self.gamma)
        self.assertNotIn("button 1", self.alpha.events)
        self.assertEqual(self.probe.active(), "Gamma")

    def test_panel_stays_after_super_is_let_go_once_the_pointer_has_moved(self):
        self.open_panel()
        self.probe.remember("unselected", self.panel.halo(2))
        self.probe.move(self.panel.icon(2))
        self.assertTrue(self.probe.wait_change("unselected"), "the pointer does not select")
        self.probe.up("Super_L")
        self.assertFalse(self.probe.wait_active("Beta", timeout=0.6))
        self.probe.tap("Return")
        self.assert_active("Beta")
        self.assert_panel_gone()


if __name__ == "__main__":
    unittest.main()
