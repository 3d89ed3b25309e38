"""Applications are installed while the program runs."""

import unittest

from harness.case import DesktopTestCase
from harness.desktop import Application
from harness.panel import Panel

ROOM = (940, 540, 300, 200)
LONG = 60


class InstalledMeanwhile(DesktopTestCase):
    def start_delta(self, colour):
        self.delta = Application("Delta", colour, ROOM)
        self.delta.start(self.desktop)
        self.panel = Panel(self.probe, self.probe.size(), 4)

    def assert_icon_becomes(self, colour):
        """On the first place of the panel, which shows what the program knows when it opens."""

        def shows():
            self.open_panel()
            found = self.probe.wait_pixel(self.panel.icon(0), colour, 0.1)
            self.probe.tap("Escape")
            self.probe.up("Super_L")
            self.assert_panel_gone()
            return found

        self.assertTrue(self.desktop.wait_until(shows, LONG), f"the icon does not become {colour}")

    def test_entry_is_known_soon(self):
        self.start_delta("c0c030")
        self.assert_icon_becomes("c0c030")

    def test_entry_that_is_rewritten_in_place_counts_anew(self):
        self.start_delta("c0c030")
        self.assert_icon_becomes("c0c030")
        data = self.desktop.home / ".local/share"
        entry = data / "applications/Delta.desktop"
        picture = data / "New.svg"
        picture.write_text((data / "Delta.svg").read_text().replace("c0c030", "30c0c0"))
        entry.write_text(entry.read_text().replace("Delta.svg", "New.svg"))
        self.assert_icon_becomes("30c0c0")


if __name__ == "__main__":
    unittest.main()
