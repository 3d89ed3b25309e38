"""Keys that act on the selected application while Super is held, and what the row makes of it."""

import unittest

from harness.case import DesktopTestCase


class KeysOnApplications(DesktopTestCase):
    """Gamma is in front. The other two have not been since the program started, and stand in the
    order in which they came."""

    def open_on_alpha(self):
        self.open_panel()
        self.assert_order("Gamma", "Alpha", "Beta")

    def assert_selected(self, index):
        x, y = self.panel.icon(index)
        # In the border of the halo, which is 83 wide.
        self.assertTrue(self.probe.wait_pixel((x - 41, y), "ffffff"), f"{index} is not selected")

    def is_iconic(self, name):
        return "Iconic" in self.desktop.run(["xprop", "-name", name, "WM_STATE"])

    def test_q_quits_the_selected_one_and_the_next_is_selected(self):
        self.open_on_alpha()
        self.probe.tap("q")
        self.assertTrue(self.probe.wait_clients(2), "Alpha goes on")
        self.assertFalse(any("press q" in one.events for one in self.applications))
        self.panel = self.panel.with_count(2)
        self.assert_order("Gamma", "Beta")
        self.assert_selected(1)
        self.assertTrue(self.panel_window_is_up(), "the panel has gone")
        self.probe.up("Super_L")
        self.assert_active("Beta")

    def test_h_hides_the_selected_one_and_the_panel_stays(self):
        self.open_on_alpha()
        self.probe.tap("h")
        self.assertTrue(self.desktop.wait_until(lambda: self.is_iconic("Alpha")), "Alpha stays")
        self.assertTrue(self.panel_window_is_up(), "the panel has gone")
        self.assertFalse(self.is_iconic("Gamma"))
        # It is still the selected one.
        self.probe.up("Super_L")
        self.assert_active("Alpha")
        self.wait(lambda: not self.is_iconic("Alpha"), "Alpha stays hidden")

    def test_one_that_is_started_anew_goes_to_the_end(self):
        self.open_on_alpha()
        self.alpha.process.end()
        self.assertTrue(self.probe.wait_clients(2))
        # Under the panel nobody counts as having been in front.
        self.alpha.start(self.desktop)
        self.assert_order("Gamma", "Beta", "Alpha")
        self.probe.tap("Escape")
        self.probe.up("Super_L")


if __name__ == "__main__":
    unittest.main()
