"""The program is told to end, or killed, while something modal is up."""

import unittest

from harness.session import SessionTestCase
from test_rows import RowTestCase


class EndingUnderADialog(SessionTestCase):
    starts_program = False

    def assert_ends_in_order(self):
        self.program.terminate()
        self.assertEqual(self.program.wait(), 0, self.program.output)
        self.assertTrue(self.probe.wait_unmapped("quillbox"))
        self.assert_active("Gamma")
        self.assert_keys_reach(self.gamma)
        self.assert_chord_is_free("super", "Tab")
        self.assertEqual(self.running_programs(), [])

    def test_that_of_the_launch(self):
        self.desktop.make_new()
        self.program = self.desktop.start_program()
        self.wait_for_dialog("Quillbox Installed")
        self.assert_ends_in_order()

    def test_that_which_tells_of_a_loss(self):
        self.start_program()
        self.wait(self.information.exists, "the access is not looked at")
        self.deny_access(True)
        self.wait_for_dialog("Quillbox Loss in Functionality")
        self.assert_ends_in_order()

    def test_that_which_would_start_the_program_anew(self):
        self.deny_access(True)
        self.start_program()
        self.wait(self.information.exists, "the access is not looked at")
        self.deny_access(False)
        self.wait_for_dialog("Quillbox Fully Functional")
        self.assert_ends_in_order()
        self.assertNotIn("relauncher", self.program.output.lower())


class EndingUnderAMenu(RowTestCase):
    def open_menu(self):
        self.open_by_corner()
        self.probe.click(self.selector())
        self.wait_menu()

    def assert_nothing_is_left(self):
        self.assertTrue(self.probe.wait_unmapped("quillbox"))
        self.assertTrue(self.probe.wait_input_free(), "keyboard or pointer is grabbed")
        self.assertTrue(self.probe.activate("Gamma"))
        self.assert_keys_reach(self.gamma)

    def test_told_to_end(self):
        self.open_menu()
        self.program.terminate()
        self.assertEqual(self.program.wait(), 0, self.program.output)
        self.assert_nothing_is_left()

    def test_killed(self):
        self.open_menu()
        self.program.kill()
        self.assert_nothing_is_left()


if __name__ == "__main__":
    unittest.main()
