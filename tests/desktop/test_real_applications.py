"""Programs that know nothing of these tests, with the desktop entries that such programs have."""

import unittest

from harness.case import DesktopTestCase
from harness.panel import Panel


class RealApplications(DesktopTestCase):
    def start_applications(self):
        entries = self.desktop.home / ".local/share/applications"
        entries.mkdir()
        for name, wm_class in (("xcalc", "XCalc"), ("xedit", "Xedit")):
            (entries / f"{name}.desktop").write_text(
                f"[Desktop Entry]\nType=Application\nName={name}\nExec={name}\n"
                f"StartupWMClass={wm_class}\n"
            )
        # xterm brings an entry of its own.
        for wm_class, command in (
            ("XTerm", ["xterm", "-geometry", "40x10+20+40", "-e", "cat"]),
            ("XCalc", ["xcalc", "-geometry", "+960+40"]),
            ("Xedit", ["xedit", "-geometry", "300x200+20+540"]),
        ):
            self.desktop.start(command)
            self.assert_active(wm_class)

    def test_super_tab_goes_round(self):
        self.super_tab()
        self.assert_active("XTerm")
        self.super_tab()
        self.assert_active("Xedit")
        self.assert_input_is_free()
        with self.probe.holding("Super_L"):
            self.probe.tap("Tab")
            self.probe.tap("Tab")
        self.assert_active("XCalc")
        self.super_tab()
        self.assert_active("Xedit")

    def test_panel_and_icons(self):
        self.panel = Panel(self.probe, self.probe.size(), 3)
        self.open_panel()
        self.probe.up("Super_L")
        self.assert_active("XTerm")
        self.assert_panel_gone()


if __name__ == "__main__":
    unittest.main()
