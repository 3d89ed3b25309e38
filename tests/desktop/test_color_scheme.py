"""Both programs are light or dark as the desktop says, at any time."""

import unittest

from harness.session import SessionTestCase

PORTAL = "/org/freedesktop/portal/desktop"
CHANGED = "org.freedesktop.portal.Settings.SettingChanged"
DARK, LIGHT = 1, 2
# Of the brightest channel.
HALF = 0x80


class ColorScheme(SessionTestCase):
    starts_program = False

    def tell(self, preference):
        """What the settings portal tells everybody when the user has changed it."""
        self.desktop.run(["dbus-send", "--session", "--type=signal", PORTAL, CHANGED,
                          "string:org.freedesktop.appearance", "string:color-scheme",
                          f"variant:uint32:{preference}"])

    def focused_window_is_dark(self):
        """By its upper left corner, where no control is. None before it is there."""
        fields = self.desktop.run(["xdotool", "getwindowfocus", "getwindowgeometry", "--shell"])
        area = dict(line.split("=") for line in fields.split())
        colour = self.probe.pixel((int(area["X"]) + 4, int(area["Y"]) + 4))
        if colour == "none":
            return None
        return max(int(colour[place : place + 2], 16) for place in (0, 2, 4)) < HALF

    def assert_follows(self):
        self.wait(lambda: self.focused_window_is_dark() is False, "it does not begin light")
        for preference in (DARK, LIGHT):
            # Again and again: the program may not have found the bus yet.
            def holds(preference=preference):
                self.tell(preference)
                return self.focused_window_is_dark() == (preference == DARK)

            self.wait(holds, f"preference {preference} has no effect")

    def test_preferences(self):
        self.start_preferences()
        self.assert_follows()

    def test_dialog(self):
        self.desktop.make_new()
        self.program = self.desktop.start_program()
        self.wait_for_dialog("Quillbox Installed")
        self.assert_follows()


if __name__ == "__main__":
    unittest.main()
