"""What the menus of rows do: the selector's entries, the commands over all applications, and a row
of recent applications."""

import time
import unittest

from harness.desktop import Application
from harness.session import SessionTestCase
from test_rows import BESIDE_ROWS, MOVE_SECONDS, RowTestCase

LEFT, RIGHT = 1, 3
ABOUT = "Quillbox - Supercharge your Tab key!"
RECORDER = "Quillbox is supercharged by MASShortcut!"
# Entries of the selector menu, of those that can be chosen: a kind from the top, and from the bottom
# what comes below the kinds.
RECENT_APPLICATIONS = 2
MAKE_OPTION_TAB_DEFAULT = 4


class MenuTestCase(RowTestCase):
    def choose(self, downs=0, ups=0):
        """An entry of the open menu, counted from either end."""
        for key in ["Down"] * downs + ["Up"] * ups:
            self.probe.tap(key)
        self.probe.tap("Return")

    def wait_menu_gone(self):
        """Not for entries that bring up a dialog, which would pass for a menu."""
        self.assertTrue(self.desktop.wait_until(lambda: not self.menus()), "the menu stays")

    def choose_in_selector(self, row=0, rows=1, button=LEFT, **entry):
        self.probe.click(self.selector(row, rows), button)
        self.wait_menu()
        self.choose(**entry)

    def choose_in_configure_menu(self, **entry):
        """Of the row of applications: a right click beside its icons opens it."""
        place = self.panel.in_row(8, 100)
        self.move_about(place)
        time.sleep(MOVE_SECONDS)
        self.probe.click(place, RIGHT)
        self.wait_menu()
        self.choose(**entry)


    @property
    def recent_applications(self):
        return self.desktop.home / ".local/share/Quillbox/RecentApplications.plist"

    def wait_for_recent_applications(self):
        """Until the program has looked at what runs."""
        self.assertTrue(
            self.desktop.wait_until(self.recent_applications.exists), "nothing is taken note of")

    def assert_row_shows(self, row, rows, *applications):
        for index, application in enumerate(applications):
            place = self.panel.icon(index, row, rows)
            self.assertTrue(
                self.probe.wait_pixel(place, application.colour),
                f"{application.name} is not at place {index}, but {self.probe.pixel(place)}",
            )


class SelectorEntries(MenuTestCase, SessionTestCase):
    def test_quit_stands_last_for_the_right_button(self):
        self.open_by_corner()
        self.choose_in_selector(button=RIGHT, ups=1)
        self.assertEqual(self.program.wait(), 0)

    def test_quit_stands_last_with_the_left_control_key(self):
        self.open_by_corner()
        with self.probe.holding("Control_L"):
            self.probe.click(self.selector())
            self.wait_menu()
        self.choose(ups=1)
        self.assertEqual(self.program.wait(), 0)

    def test_the_right_control_key_adds_nothing(self):
        self.open_by_corner()
        with self.probe.holding("Control_R"):
            self.probe.click(self.selector())
            self.wait_menu()
        self.choose(ups=1)
        self.answer_dialog(ABOUT)
        self.assert_panel_gone()

    def test_about_tells_of_the_program_and_of_the_recorder(self):
        self.open_by_corner()
        self.choose_in_selector(ups=1)
        self.wait_for_dialog(ABOUT)
        self.probe.tap("Tab")
        self.probe.tap("space")
        self.answer_dialog(RECORDER)
        self.assert_panel_gone()

    def test_another_row_becomes_the_default_of_option_tab(self):
        self.wait_for_recent_applications()
        self.open_by_corner()
        self.add_row()
        self.choose_in_selector(1, 2, downs=RECENT_APPLICATIONS)
        self.wait_menu_gone()
        self.assert_row_shows(1, 2, self.gamma, self.beta, self.alpha)
        self.choose_in_selector(1, 2, ups=MAKE_OPTION_TAB_DEFAULT)
        self.wait_menu_gone()
        self.probe.tap("Escape")
        self.probe.move(BESIDE_ROWS)
        self.assert_input_is_free()
        # The first Tab selects nothing new there; the row of applications would come round to Gamma.
        with self.probe.holding("Alt_L"):
            for _ in range(3):
                self.probe.tap("Tab")
        self.assert_active("Alpha")
        # Super-Tab goes on as before.
        self.super_tab()
        self.assert_active("Gamma")


class RecentApplications(MenuTestCase):
    def test_what_was_started_last_comes_first_and_stays_when_it_ends(self):
        self.wait_for_recent_applications()
        self.open_by_corner()
        self.add_row()
        self.choose_in_selector(1, 2, downs=RECENT_APPLICATIONS)
        self.wait_menu_gone()
        self.assert_row_shows(1, 2, self.gamma, self.beta, self.alpha)
        self.probe.tap("Escape")
        self.assert_input_is_free()

        self.beta.process.end()
        self.assertTrue(self.probe.wait_clients(2))
        known = self.recent_applications.read_bytes()
        self.beta.start(self.desktop)
        self.assertTrue(
            self.desktop.wait_until(lambda: self.recent_applications.read_bytes() != known),
            "the start is not taken note of",
        )
        self.beta.process.end()
        self.assertTrue(self.probe.wait_clients(2))
        self.open_again()
        self.assert_row_shows(1, 2, self.beta, self.gamma, self.alpha)


class FitNotice(SessionTestCase, RowTestCase):
    small = {"LowerTabRowItemHaloHeight": 30}
    settings = {**RowTestCase.settings, **small}

    def change_settings(self, sizes):
        self.desktop.write_settings({**RowTestCase.settings, **sizes})
        self.post("Settings Changed")

    def make_icons_too_large(self):
        """Of 170 points and more, two rows fit the screen. Anew each time: the program looks at who
        is in front only when the settings have changed, and may not have heard of it yet."""
        for height in range(170, 200):
            self.change_settings(
                {"LowerTabRowItemHaloHeight": height, "UpperTabRowItemHaloHeight": height})
            if self.desktop.wait_until(self.menus, 2):
                return
        self.fail("no notice of rows that do not fit")

    def assert_notice_gone(self):
        self.assertTrue(self.desktop.wait_until(lambda: not self.menus()), "the notice stays")

    def test_warns_whoever_is_in_the_settings_while_the_rows_do_not_fit(self):
        # The notice of the launch is another one.
        self.assertTrue(self.desktop.wait_until(lambda: not self.probe.windows("quillbox")))
        self.notice = []
        self.open_by_corner()
        self.add_row()
        self.add_row(2)
        self.probe.tap("Escape")
        self.assert_input_is_free()
        Application("quillbox-preferences", "808080", (600, 40, 200, 100)).start(self.desktop)

        self.make_icons_too_large()
        self.probe.activate("Alpha")
        self.assert_notice_gone()
        self.probe.activate("quillbox-preferences")
        self.make_icons_too_large()
        self.change_settings(self.small)
        self.assert_notice_gone()


class MostRows(SessionTestCase, RowTestCase):
    # Four rows of icons that do not shrink fit the screen.
    settings = {**RowTestCase.settings, "LowerTabRowItemHaloHeight": 83}

    def test_one_row_more_than_fits_is_refused_with_a_message(self):
        self.open_by_corner()
        for rows in (1, 2, 3):
            self.add_row(rows)
        self.press_add_button(4)
        self.answer_dialog("Maximum Tab Rows")
        self.assert_row_order(0, 4)
        self.assertTrue(self.panel_window_is_up(), "the panel has gone with the message")


class AllApplications(MenuTestCase):
    def test_hide_all_leaves_the_one_in_front(self):
        self.open_by_corner()
        self.choose_in_configure_menu(downs=1)
        for name, is_hidden in (("Alpha", True), ("Beta", True), ("Gamma", False)):
            self.assertTrue(
                self.desktop.wait_until(lambda: self.is_iconic(name) == is_hidden),
                f"{name} is hidden: {not is_hidden}",
            )
        self.assert_panel_gone()
        self.assert_active("Gamma")
        self.assert_keys_reach(self.gamma)

    def test_quit_all_ends_them(self):
        self.open_by_corner()
        self.choose_in_configure_menu(downs=2)
        self.assertTrue(self.probe.wait_clients(0), "some application stays")

    def test_keeping_the_background_hidden_is_saved(self):
        self.open_by_corner()
        self.choose_in_configure_menu(downs=3)
        key = "ActiveApplicationsProviderHidesAllBackgroundApplications"
        # What it means is told first.
        self.assertFalse(self.desktop.read_settings().get(key))
        self.assertTrue(
            self.desktop.wait_until(
                lambda: self.probe.tap("Return") or self.desktop.read_settings().get(key)),
            "the choice is not saved",
        )

    def is_iconic(self, name):
        return "Iconic" in self.desktop.run(["xprop", "-name", name, "WM_STATE"])


if __name__ == "__main__":
    unittest.main()
