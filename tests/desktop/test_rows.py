"""Rows under the pointer: their buttons, their menus, the small buttons of items, scrolling."""

import time
import unittest

from harness import DEADLINE
from harness.case import SHORT, DesktopTestCase

# A hand that moves between two looks of the program at the pointer, which come every 0.05 s.
MOVE_SECONDS = 0.06
# Two looks of the program at the corners, which come every 0.25 s.
LOOK_SECONDS = 0.5
# Longer than anything fades or glides from one look to the next, on a busy machine too.
STILL_SECONDS = 1
BESIDE_ROWS = (640, 700)


class RowTestCase(DesktopTestCase):
    settings = {"ActivatesViaTopLeftCorner": True}

    notice = []

    def start_program(self):
        super().start_program()
        self.wait_notice()

    def wait_notice(self):
        """The notice of the launch would pass for a menu."""
        self.assertTrue(self.desktop.wait_until(self.menus), "no notice tells of the launch")
        self.notice = self.menus()

    def open_by_corner(self):
        """The panel stays up without a key, and the pointer counts from the start."""
        self.probe.move((640, 300))
        self.panel.remember_hidden()
        self.probe.move((0, 0))
        self.assert_panel_shows()
        self.assert_panel_has_keyboard()

    def open_again(self):
        """The program has to see the pointer away from the corner first, and looks now and then."""
        self.panel.remember_hidden()

        def shows():
            self.probe.move((640, 300))
            if self.panel.wait_shown(LOOK_SECONDS):
                return True
            self.probe.move((0, 0))
            return self.panel.wait_shown(SHORT)

        self.wait(shows, "the panel does not show")
        self.assert_panel_has_keyboard()

    def menus(self):
        """The areas of the open menus."""
        height = self.probe.size()[1]
        return [
            area
            for area in self.probe.windows("quillbox")
            if area[2] > 40 and 20 < area[3] < height and area not in self.notice
        ]

    def wait_menu(self):
        self.assertTrue(self.desktop.wait_until(self.menus), "no menu opens")
        return self.menus()[0]

    def close_menu(self):
        self.probe.tap("Escape")
        self.assertTrue(self.desktop.wait_until(lambda: not self.menus()), "the menu stays")
        self.assertTrue(self.panel_window_is_up(), "the panel has gone with the menu")

    def assert_changes(self, area, act, message):
        self.probe.remember("before", area)
        act()
        self.assertTrue(self.probe.wait_change("before"), message)

    def select(self, halo, icon):
        """By the pointer. The panel may still be changing there when it begins to show."""
        self.wait_still(halo)
        self.assert_changes(halo, lambda: self.probe.move(icon), "the pointer does not select")

    def wait_still(self, area):
        """Until nothing fades or glides there any more."""
        end = time.monotonic() + DEADLINE
        self.probe.remember("still", area)
        while self.probe.wait_change("still", STILL_SECONDS):
            self.assertLess(time.monotonic(), end, "the picture does not come to rest")
            self.probe.remember("still", area)

    def hover(self, button):
        """Moves onto a button that comes only then, and waits until it is wholly there."""
        area = self.around(button)
        self.wait_still(area)
        self.assert_changes(area, lambda: self.probe.move(button), "the button does not show")
        self.wait_still(area)

    def move_about(self, position):
        """Two movements that the program sees as two."""
        x, y = position
        self.probe.move((x, y + 1))
        time.sleep(MOVE_SECONDS)
        self.probe.move(position)

    def around(self, position, size=8):
        x, y = position
        return (x - size // 2, y - size // 2, size, size)

    def selector(self, row=0, rows=1):
        return self.panel.in_row(self.panel.width // 2, 12, row, rows)

    def press_add_button(self, rows=1):
        """That of the top one of so many rows."""
        button = self.panel.in_row(self.panel.width // 2, -17, 0, rows)
        self.probe.remember("button", self.around(button))
        end = time.monotonic() + DEADLINE
        while not self.probe.wait_change("button", 0.3):
            self.assertLess(time.monotonic(), end, "the add button does not show")
            self.move_about(button)
        self.wait_still(self.around(button))
        self.probe.click(button)

    def add_row(self, rows=1):
        """Below the top one of so many. The pointer is beside the rows afterwards."""
        self.press_add_button(rows)
        self.assert_row_order(0, rows + 1)
        self.probe.move(BESIDE_ROWS)
        self.wait_still(self.panel.row_area(0, rows + 1))

    def assert_row_order(self, applications_row, rows):
        """Of so many rows, one shows the applications."""
        place = self.panel.icon(0, applications_row, rows)
        self.assertTrue(
            self.probe.wait_pixel(place, self.gamma.colour),
            f"the applications are not in row {applications_row} of {rows}",
        )

    def assert_shows_applications(self, row, rows):
        """In whatever order."""
        wanted = sorted(application.colour for application in self.applications)

        def found():
            places = [self.panel.icon(index, row, rows) for index in range(len(wanted))]
            return sorted(self.probe.pixel(place) for place in places) == wanted

        self.assertTrue(self.desktop.wait_until(found), "the applications do not come to the row")

    def choose_first_kind(self, row, rows):
        self.probe.click(self.selector(row, rows))
        self.wait_menu()
        self.probe.tap("Down")
        self.probe.tap("Return")
        self.assertTrue(self.desktop.wait_until(lambda: not self.menus()), "the menu stays")


class Selector(RowTestCase):
    def test_lights_up_under_the_pointer(self):
        self.open_by_corner()
        x, y = self.selector()
        self.assert_changes(
            (x - 90, y - 8, 180, 16),
            lambda: self.probe.move(self.selector()),
            "the selector does not light up",
        )

    def test_a_press_opens_the_menu_below_it_and_escape_closes_it(self):
        self.open_by_corner()
        self.probe.click(self.selector())
        x, y, width, _ = self.wait_menu()
        centre, top = self.panel.in_row(self.panel.width // 2, 2 + 20 + 6)
        self.assertAlmostEqual(x + width / 2, centre, delta=2)
        self.assertAlmostEqual(y, top, delta=2)
        self.close_menu()

    def test_the_right_button_opens_it_too(self):
        self.open_by_corner()
        self.probe.click(self.selector(), 3)
        self.wait_menu()
        self.close_menu()
        self.assertFalse(self.menus())

    def test_a_new_row_throbs_until_a_kind_is_chosen(self):
        self.open_by_corner()
        self.add_row()
        x, y = self.selector(1, 2)
        title = (x - 60, y - 6, 120, 12)
        for _ in range(3):
            self.assert_changes(title, lambda: None, "the new row does not throb")
        self.choose_first_kind(1, 2)
        self.assert_shows_applications(1, 2)


class Gear(RowTestCase):
    acknowledged = "Configure Tip Acknowledged for: ActiveApplicationsProvider"

    def find_gear(self, row, rows, beside_tip=False):
        """The first that is bright left of the title, once the selector is lit, but for the arrow of
        a tip."""
        x, y = self.selector(row, rows)
        self.probe.move((x, y))

        def starts():
            self.wait_still((x - 110, y - 8, 110, 16))
            bright = [self.probe.pixel((place, y)) > "c0c0c0" for place in range(x - 110, x)]
            return [at for at in range(1, len(bright)) if bright[at] and not bright[at - 1]]

        self.wait(lambda: len(starts()) > 1, "no gear beside the title")
        return (x - 110 + starts()[1 if beside_tip else 0] + 2, y)

    def test_gear_opens_the_menu_of_what_the_row_shows(self):
        self.open_by_corner()
        self.probe.click(self.find_gear(0, 1))
        self.wait_menu()
        self.close_menu()

    def test_tip_points_at_the_gear_until_that_is_used(self):
        self.open_by_corner()
        self.add_row()
        x, y = self.selector(1, 2)
        tip = (x - 300, y - 8, 150, 16)
        self.wait_still(tip)
        self.probe.remember("tipless", tip)
        self.choose_first_kind(1, 2)
        self.assertTrue(self.probe.wait_change("tipless"), "no tip comes")
        self.assertNotIn(self.acknowledged, self.desktop.read_user_defaults())
        self.probe.click(self.find_gear(1, 2, beside_tip=True))
        self.wait_menu()
        self.close_menu()
        self.assertTrue(self.probe.wait_same("tipless"), "the tip stays")
        written = self.desktop.wait_until(
            lambda: self.acknowledged in self.desktop.read_user_defaults()
        )
        self.assertTrue(written, "that the tip was seen is not kept")


    def test_tip_that_sticks_out_of_a_narrow_row_can_be_closed_there(self):
        self.open_by_corner()
        self.add_row()
        x, y = self.selector(1, 2)
        area = (x - 420, y - 8, 200, 16)
        self.assertLess(area[0] + area[2], self.panel.row_area(1, 2)[0])
        self.wait_still(area)
        self.probe.remember("tipless", area)
        self.choose_first_kind(1, 2)
        self.assertTrue(self.probe.wait_change("tipless"), "no tip comes")
        self.wait_still(area)

        def bright():
            places = range(area[0], area[0] + area[2])
            return [place for place in places if self.probe.pixel((place, y)) > "c0c0c0"]

        self.wait(bright, "the tip has no button")
        self.probe.click((bright()[0] + 9, y))
        self.assertTrue(self.probe.wait_same("tipless"), "the tip stays")
        self.assertTrue(self.panel_window_is_up(), "the panel has gone with the tip")
        written = self.desktop.wait_until(
            lambda: self.acknowledged in self.desktop.read_user_defaults()
        )
        self.assertTrue(written, "that the tip was seen is not kept")


class Buttons(RowTestCase):
    def test_delete_button_takes_the_row_away(self):
        self.open_by_corner()
        self.add_row()
        delete = self.panel.in_row(12, 11, 1, 2)
        self.hover(delete)
        self.probe.click(delete)
        self.assert_row_order(0, 1)

    def test_drag_button_moves_the_row(self):
        self.open_by_corner()
        self.add_row()
        handle = self.panel.in_row(-12, 11, 0, 2)
        self.hover(handle)
        self.probe.ask("button", 1, "down")
        x, y = handle
        for step in range(1, 9):
            time.sleep(MOVE_SECONDS)
            self.probe.move((x, y + 20 * step))
        x, y = self.panel.icon(0, 0, 2)
        self.assertTrue(
            self.probe.wait_pixel((x, y + 155), self.gamma.colour),
            "the row does not follow the pointer",
        )
        self.probe.ask("button", 1, "up")
        self.assert_row_order(1, 2)

    def test_the_only_row_offers_neither(self):
        self.open_by_corner()
        delete = self.panel.in_row(12, 11)
        with self.probe.watching(self.around(delete)) as seen:
            self.move_about(delete)
            time.sleep(0.3)  # Longer than the fading takes.
        self.assertEqual(seen[0], 0)


class ItemButtons(RowTestCase):
    def test_configure_button_shows_after_a_rest_and_goes_with_the_selection(self):
        self.open_by_corner()
        x, y = self.panel.icon(1)
        # The halo is 83 wide; of the button's 20, 8 lie right of that. The halo comes at once.
        button = (x + 41 + 2, y - 41, 3, 6)
        self.wait_still(button)
        self.probe.remember("without", button)
        self.probe.move(self.panel.icon(1))
        self.assertTrue(self.probe.wait_change("without"), "no configure button")
        self.probe.move(BESIDE_ROWS)
        self.assertTrue(self.probe.wait_same("without"), "the configure button stays")


class RowMenu(RowTestCase):
    def test_a_right_click_beside_the_icons_opens_the_menu_of_the_row(self):
        self.open_by_corner()
        place = self.panel.in_row(8, 100)
        self.move_about(place)
        self.probe.click(place, 3)
        self.wait_menu()
        self.close_menu()

    def test_a_click_with_control_beside_the_icons_opens_it_too(self):
        self.open_by_corner()
        place = self.panel.in_row(8, 100)
        self.move_about(place)
        with self.probe.holding("Control_L"):
            self.probe.click(place)
            self.wait_menu()
        self.close_menu()


class Scrolling(RowTestCase):
    # Wide enough for two of the three icons.
    settings = {**RowTestCase.settings, "MaxHostViewWidthPercent": 20, "LowerTabRowItemHaloHeight": 83}

    def start_program(self):
        super().start_program()
        self.panel = self.panel.with_count(2)

    def test_resting_on_an_indicator_scrolls(self):
        self.open_by_corner()
        first, second = self.panel.icon(0), self.panel.icon(1)
        self.assertTrue(self.probe.wait_pixel(first, self.gamma.colour))
        self.assertTrue(self.probe.wait_pixel(second, self.alpha.colour))
        self.move_about(self.panel.in_row(-8, 67))
        self.assertTrue(self.probe.wait_pixel(second, self.beta.colour), "the row does not scroll")
        self.assertTrue(self.probe.wait_pixel(first, self.alpha.colour))
        self.move_about(self.panel.in_row(8, 67))
        self.assertTrue(self.probe.wait_pixel(first, self.gamma.colour), "it does not scroll back")

    def test_keys_scroll_to_what_they_select(self):
        self.open_by_corner()
        for _ in range(3):
            self.probe.tap("Tab")
        self.assertTrue(self.probe.wait_pixel(self.panel.icon(1), self.beta.colour))


class ChangingRows(RowTestCase):
    def open_two_rows(self):
        self.open_by_corner()
        self.add_row()
        self.choose_first_kind(1, 2)
        self.assert_shows_applications(1, 2)
        self.probe.move(BESIDE_ROWS)
        for row in (0, 1):
            self.wait_still(self.panel.halo(0, row, 2))
            self.probe.remember(f"unselected{row}", self.panel.halo(0, row, 2))

    def assert_selected(self, selected, other):
        self.assertTrue(self.probe.wait_change(f"unselected{selected}"), f"row {selected}: no halo")
        self.assertTrue(self.probe.wait_same(f"unselected{other}"), f"row {other} keeps its halo")

    def test_arrows_go_down_and_up_and_round(self):
        self.open_two_rows()
        self.probe.tap("Down")
        # The pointer was on the lower row last, so that from there it goes round.
        self.assert_selected(0, 1)
        for key, row in (("Down", 1), ("Up", 0), ("Up", 1), ("Down", 0)):
            self.probe.tap(key)
            self.assert_selected(row, 1 - row)

    def test_wheel_goes_to_the_other_row(self):
        self.open_by_corner()
        self.add_row()
        self.choose_first_kind(1, 2)
        self.assert_shows_applications(1, 2)

        self.probe.remember("unselected", self.panel.halo(0, 0, 2))
        end = time.monotonic() + DEADLINE
        while not self.probe.wait_change("unselected", 0.2):
            self.assertLess(time.monotonic(), end, "the wheel does not change rows")
            self.probe.ask("button", 5, "down")
            self.probe.ask("button", 5, "up")


if __name__ == "__main__":
    unittest.main()
