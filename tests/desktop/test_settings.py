"""The settings file, written and read by another language's property-list library."""

import plistlib
import unittest

from harness.case import DesktopTestCase


class SettingsFile(DesktopTestCase):
    starts_program = False

    def corner_raises_the_panel(self):
        self.start_program()
        self.probe.move((640, 300))
        self.panel.remember_hidden()
        self.probe.move((0, 0))
        return self.panel.wait_shown()

    def test_xml_takes_effect(self):
        self.desktop.write_settings({"ActivatesViaTopLeftCorner": True}, plistlib.FMT_XML)
        self.assertTrue(self.corner_raises_the_panel())

    def test_binary_takes_effect(self):
        self.desktop.write_settings({"ActivatesViaTopLeftCorner": True}, plistlib.FMT_BINARY)
        self.assertTrue(self.corner_raises_the_panel())

    def test_number_in_place_of_a_boolean_takes_effect(self):
        self.desktop.write_settings({"ActivatesViaTopLeftCorner": 1})
        self.assertTrue(self.corner_raises_the_panel())

    def test_string_in_place_of_a_boolean_takes_effect(self):
        self.desktop.write_settings({"ActivatesViaTopLeftCorner": "YES"})
        self.assertTrue(self.corner_raises_the_panel())

    def test_program_starts_with_the_defaults_on_an_unreadable_file_and_keeps_it(self):
        content = b"this is no property list"
        self.desktop.write_settings_bytes(content)
        self.desktop.start_program()
        # Nothing tells that it has run before, so it greets the user.
        path = self.desktop.settings_path
        kept = path.with_name(path.name + ".unreadable")
        self.assertTrue(self.desktop.wait_until(kept.exists), "the file is not moved aside")
        self.answer_dialog("Quillbox Installed")
        self.assertTrue(self.desktop.wait_until_ready())
        # The row starts from what is in front.
        self.assert_active("Gamma")
        self.super_tab()
        # It comes above Alpha, half a second later.
        self.answer_dialog("Quillbox Introduction")
        self.assert_active("Alpha")
        self.assertEqual(kept.read_bytes(), content)
        self.assert_is_whole_file_of_defaults(path)
        said = f"{path} could not be read and is kept as {kept}."
        self.assertIn(said, self.desktop.program.output)

    def assert_is_whole_file_of_defaults(self, path):
        settings = plistlib.loads(path.read_bytes())
        self.assertEqual(len(settings), 32)
        self.assertEqual(list(settings)[0], "ActivatesOnOptionTab")
        self.assertEqual(list(settings)[-1], "BackdropColorAlpha")
        self.assertIs(settings["ActivatesOnCommandTab"], True)
        self.assertIs(settings["HasPerformedOneTimeStartUp"], True)
        self.assertEqual(settings["UpperTabRowItemHaloHeight"], 85)
        self.assertEqual(settings["TabRowColorBlue"], 0.125)
        self.assertEqual(path.stat().st_mode & 0o777, 0o600)

    def test_row_colour_shows(self):
        self.desktop.write_settings(
            {"TabRowColorRed": 1.0, "TabRowColorGreen": 0.0, "TabRowColorBlue": 0.0,
             "TabRowColorAlpha": 1.0}
        )
        self.start_program()
        self.open_panel()
        x, y, _, height = self.panel.row
        self.assertTrue(self.probe.wait_pixel((x + 12, y + height // 2), "ff0000"))
        self.probe.up("Super_L")
        self.assert_active("Alpha")


if __name__ == "__main__":
    unittest.main()
