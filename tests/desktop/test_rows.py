"""Rows under the pointer: their buttons, their menus, the small buttons of items, scrolling."""

import time
import unittest

from harness import DEADLINE
from harness.case import DesktopTestCase

# A hand that moves between two looks of the program at the pointer, which come every 0.05 s.
MOVE_SECONDS = 0.06


class RowTestCase(DesktopTestCase):
    settings = {"ActivatesViaTopLeftCorner": True}

    def open_by_corner(self):
        """The panel stays up without a key, and the pointer counts from the start."""
        self.probe.move((640, 300))
        self.panel.remember_hidden()
        self.probe.move((0, 0))
        self.assert_panel_shows()

    def menus(self):
        """The areas of the open menus."""
        height = self.probe.size()[1]
        return [
            area for area in self.probe.windows("quillbox") if area[2] > 40 and 20 < area[3] < height
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

    def add_row(self):
        """Below the only one, by its add button. Answers when it is there."""
        button = self.panel.in_row(self.panel.width // 2, -17)
        self.probe.remember("button", self.around(button))
        end = time.monotonic() + DEADLINE
        while not self.probe.wait_change("button", 0.3):
            self.assertLess(time.monotonic(), end, "the add button does not show")
            self.move_about(button)
        self.probe.click(button)
        self.assert_row_order(0, 2)

    def assert_row_order(self, applications_row, rows):
        """Of so many rows, one shows the applications."""
        place = self.panel.icon(0, applications_row, rows)
        self.assertTrue(
            self.probe.wait_pixel(place, self.gamma.colour),
            f"the applications are not in row {applications_row} of {rows}",
        )

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
        for index, application in enumerate((self.gamma, self.alpha, self.beta)):
            self.assertTrue(
                self.probe.wait_pixel(self.panel.icon(index, 1, 2), application.colour),
                f"{application.name} does not come to the new row",
            )


class Buttons(RowTestCase):
    def test_delete_button_takes_the_row_away(self):
        self.open_by_corner()
        self.add_row()
        delete = self.panel.in_row(12, 11, 1, 2)
        self.assert_changes(
            self.around(delete), lambda: self.probe.move(delete), "no delete button"
        )
        self.probe.click(delete)
        self.assert_row_order(0, 1)

    def test_drag_button_moves_the_row(self):
        self.open_by_corner()
        self.add_row()
        handle = self.panel.in_row(-12, 11, 0, 2)
        self.assert_changes(
            self.around(handle), lambda: self.probe.move(handle), "no drag button"
        )
        self.probe.ask("button", 1, "down")
        x, y = handle
        for step in range(1, 9):
            time.sleep(MOVE_SECONDS)
            self.probe.move((x, y + 20 * step))
        self.assertTrue(
            self.probe.wait_pixel(self.around_row_icon(160), self.gamma.colour),
            "the row does not follow the pointer",
        )
        self.probe.ask("button", 1, "up")
        self.assert_row_order(1, 2)

    def around_row_icon(self, distance):
        """The first icon of the upper of two rows, moved down."""
        x, y = self.panel.icon(0, 0, 2)
        return (x, y + min(distance, 155))

    def test_the_only_row_offers_neither(self):
        self.open_by_corner()
        delete = self.panel.in_row(12, 11)
        with self.probe.watching(self.around(delete)) as seen:
            self.move_about(delete)
            time.sleep(0.3)  # Longer than the fading takes.
        self.assertEqual(seen[0], 0)


class ItemMenu(RowTestCase):
    def point_at_icon(self, index):
        self.assert_changes(
            self.panel.halo(index),
            lambda: self.probe.move(self.panel.icon(index)),
            "the pointer does not select",
        )

    def test_a_right_click_opens_it_below_the_icon(self):
        self.open_by_corner()
        self.point_at_icon(1)
        self.probe.click(self.panel.icon(1), 3)
        x, y, width, _ = self.wait_menu()
        centre, middle = self.panel.icon(1)
        self.assertAlmostEqual(x + width / 2, centre, delta=2)
        self.assertAlmostEqual(y, middle + 75 // 2 + 10, delta=2)
        self.close_menu()

    def test_a_click_with_control_opens_it(self):
        self.open_by_corner()
        self.point_at_icon(1)
        with self.probe.holding("Control_L"):
            self.probe.click(self.panel.icon(1))
            self.wait_menu()
        self.close_menu()
        self.assertEqual(self.probe.active(), "Gamma")

    def test_configure_button_shows_after_a_rest_and_opens_it(self):
        self.open_by_corner()
        x, y = self.panel.icon(1)
        # The halo is 83 wide; the button's middle lies 2 left of its right edge, 3 below its top.
        button = (x + 41 - 2, y - 41 + 3)
        self.point_at_icon(1)
        self.assert_changes(self.around(button), lambda: None, "no configure button")
        self.probe.click(button)
        self.wait_menu()
        self.close_menu()

    def test_the_click_that_closes_it_does_not_invoke(self):
        self.open_by_corner()
        self.point_at_icon(1)
        self.probe.click(self.panel.icon(1), 3)
        self.wait_menu()
        self.probe.click(self.panel.icon(1))
        self.assertTrue(self.desktop.wait_until(lambda: not self.menus()), "the menu stays")
        self.assertFalse(self.probe.wait_active("Alpha", 0.3))
        self.assertTrue(self.panel_window_is_up())

    def test_a_right_click_beside_the_icons_opens_the_menu_of_the_row(self):
        self.open_by_corner()
        place = self.panel.in_row(8, 100)
        self.move_about(place)
        self.probe.click(place, 3)
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


class Wheel(RowTestCase):
    def test_wheel_goes_to_the_other_row(self):
        self.open_by_corner()
        self.add_row()
        self.choose_first_kind(1, 2)
        self.assertTrue(self.probe.wait_pixel(self.panel.icon(0, 1, 2), self.gamma.colour))

        def turn():
            for _ in range(6):
                self.probe.ask("button", 5, "down")
                self.probe.ask("button", 5, "up")

        self.assert_changes(self.panel.halo(0, 0, 2), turn, "the wheel does not change rows")


if __name__ == "__main__":
    unittest.main()
