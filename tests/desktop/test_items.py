"""Items under the hand: decorations, hot keys and removal by their menus."""

import plistlib
import unittest

from harness import TOOLS
from harness.panel import Panel
from test_rows import RowTestCase

# Seconds until the next of several attempts that must not come too soon.
LONG = 20
CONTROL_ALT_T = (17, 0x40000 | 0x80000)
CONTROL_ALT_E = (14, 0x40000 | 0x80000)
GREY = "808080"
RED_TINT = ((255, 128, 128), 0.33)
# How it is offered, and on which ground.
RED_TILE = ((255, 128, 128), 0.8)
TILE_GROUND = "ffffff"
# The menu of decorations: its own edge, a heading, the badges, a separator, a heading, the tints.
MENU_EDGE = 5
# Of the entry that shows the keys: their picture with all that is around it.
KEYS_HEIGHT = 24 + 16 + 30 + 6
HEADING = 16
GRID_WIDTH = 280
TINTS_HEIGHT = 50
FIRST_CELL = 30
CELL_DISTANCE = 44


def parts_of(colour):
    return [int(colour[at : at + 2], 16) for at in (0, 2, 4)]


def tinted(colour, tint):
    other, alpha = tint
    return [part * (1 - alpha) + one * alpha for part, one in zip(parts_of(colour), other)]


class ItemTestCase(RowTestCase):
    """What all of them do."""

    def decorations_path(self):
        return self.desktop.home / "Library/Preferences/com.vorlane.quillbox.decorations"

    def decorations(self):
        path = self.decorations_path()
        return plistlib.loads(path.read_bytes()) if path.exists() else {}

    def wait_decorations(self, kind, expected):
        self.desktop.wait_until(lambda: self.decorations().get(kind) == expected)
        self.assertEqual(self.decorations()[kind], expected)

    def wait_tinted(self, position, colour, tint):
        expected = tinted(colour, tint)

        def shows():
            seen = parts_of(self.probe.pixel(position))
            return all(abs(one - other) <= 3 for one, other in zip(seen, expected))

        self.assertTrue(
            self.desktop.wait_until(shows), f"{self.probe.pixel(position)}, not {expected}"
        )

    def open_item_menu(self, halo, icon):
        self.select(halo, icon)
        self.probe.click(icon, 3)
        return self.wait_menu()

    def wait_until_menus_close(self):
        self.assertTrue(self.desktop.wait_until(lambda: not self.menus()), "the menu stays")

    def open_grids(self, menu, ups=1):
        """From the entry for decorations of an item's menu, counted from its end. Answers where the
        menu with the grids is."""
        for _ in range(ups):
            self.probe.tap("Up")
        self.probe.tap("Right")
        both = self.desktop.wait_until(lambda: len(self.menus()) == 2)
        self.assertTrue(both, "the decorations do not open")
        return next(area for area in self.menus() if area != menu)

    def cell(self, menu, column, y):
        left, _, width, _ = menu
        return (left + (width - GRID_WIDTH) // 2 + FIRST_CELL + column * CELL_DISTANCE, y)

    def badge(self, menu, column, row):
        top = menu[1] + MENU_EDGE + HEADING
        return self.cell(menu, column, top + FIRST_CELL + row * CELL_DISTANCE)

    def tint(self, menu, number):
        """From 0 to 4, and 5 for none."""
        bottom = menu[1] + menu[3] - MENU_EDGE
        return self.cell(menu, number, bottom - TINTS_HEIGHT + FIRST_CELL)


class GreyItems(ItemTestCase):
    """Below the applications is a row of grey items that can be decorated and removed."""

    def start_program(self):
        self.program = self.desktop.start([TOOLS / "itempanel"])
        self.desktop.program = self.program
        self.assertTrue(self.desktop.wait_until_ready(), "the program does not get ready")
        self.wait_notice()
        self.panel = Panel(self.probe, self.probe.size(), 3)

    def icon(self, index):
        return self.panel.icon(index, 1, 2)

    def badge_area(self, index):
        """The lower right quarter of an icon."""
        x, y = self.icon(index)
        return (x + 2, y + 2, 34, 34)

    def open_menu(self, index):
        return self.open_item_menu(self.panel.halo(index, 1, 2), self.icon(index))

    def open_decorations(self, index):
        """Answers where the menu with the grids is."""
        return self.open_grids(self.open_menu(index))


class Decorations(GreyItems):
    def test_a_badge_shows_at_once_on_its_item_alone_and_is_kept(self):
        self.open_by_corner()
        self.assertTrue(self.probe.wait_pixel(self.icon(1), GREY))
        # The menu covers it later.
        self.wait_still(self.badge_area(2))
        self.probe.remember("neighbour", self.badge_area(2))
        menu = self.open_decorations(1)
        self.assert_changes(
            self.badge_area(1),
            lambda: self.probe.click(self.badge(menu, 2, 1)),
            "no badge comes to the item",
        )
        self.wait_until_menus_close()
        self.assertTrue(self.panel_window_is_up(), "the panel has gone with the menu")
        self.assertTrue(self.probe.wait_same("neighbour"), "another item is decorated too")
        self.wait_decorations("BadgeNames", {"Item 1": "BadgeColorGreen.png"})

    def test_a_tint_colours_the_picture_until_it_is_taken_off(self):
        self.open_by_corner()
        self.assertTrue(self.probe.wait_pixel(self.icon(0), GREY))
        self.probe.click(self.tint(self.open_decorations(0), 0))
        self.wait_tinted(self.icon(0), GREY, RED_TINT)
        self.wait_until_menus_close()
        self.wait_decorations("TintNames", {"Item 0": "Red"})
        # The items have been made anew, and the pointer has left them.
        self.probe.move(self.panel.beside_row)
        self.wait_still(self.panel.halo(0, 1, 2))
        self.probe.click(self.tint(self.open_decorations(0), 5))
        self.assertTrue(self.probe.wait_pixel(self.icon(0), GREY), "the tint stays")
        self.wait_until_menus_close()
        self.wait_decorations("TintNames", {})

    def test_the_cell_under_the_pointer_lights_up(self):
        self.open_by_corner()
        x, y = self.badge(self.open_decorations(0), 1, 1)
        self.assert_changes(
            (x - 18, y - 18, 36, 36),
            lambda: self.probe.move((x, y)),
            "the cell does not light up",
        )
        self.probe.tap("Escape")
        self.probe.tap("Escape")
        self.wait_until_menus_close()


class LowScreen(GreyItems):
    """The menu of decorations is higher than the screen and scrolls."""

    size = (1280, 480)

    def start_program(self):
        super().start_program()
        # The notice of the launch lies where the panel is looked for.
        self.wait(lambda: not self.probe.windows("quillbox"), "the notice stays")

    def open_scrolling_decorations(self, index):
        menu = self.open_decorations(index)
        self.assertLessEqual(menu[3], self.size[1])
        return menu

    def test_a_badge_that_shows_is_chosen(self):
        self.open_by_corner()
        menu = self.open_scrolling_decorations(1)
        self.assert_changes(
            self.badge_area(1),
            lambda: self.probe.click(self.badge(menu, 2, 1)),
            "no badge comes to the item",
        )
        self.wait_until_menus_close()
        self.wait_decorations("BadgeNames", {"Item 1": "BadgeColorGreen.png"})

    def test_a_tint_is_reached_by_the_arrow(self):
        self.open_by_corner()
        menu = self.open_scrolling_decorations(1)
        left, top, width, height = menu
        red = self.tint(menu, 0)
        self.probe.move((left + width // 2, top + height - 12))
        self.wait_tinted(red, TILE_GROUND, RED_TILE)
        self.probe.click(red)
        self.wait_tinted(self.icon(1), GREY, RED_TINT)
        self.wait_until_menus_close()
        self.wait_decorations("TintNames", {"Item 1": "Red"})


class Removal(GreyItems):
    def test_the_menu_takes_an_item_away(self):
        self.open_by_corner()
        third = self.icon(2)
        self.assertTrue(self.probe.wait_pixel(third, GREY))
        self.open_menu(1)
        # The second entry, after that for the hot key.
        self.probe.tap("Down")
        self.probe.tap("Down")
        self.probe.remember("third", (third[0] - 20, third[1] - 20, 40, 40))
        self.probe.tap("Return")
        self.assertTrue(self.probe.wait_change("third"), "the item stays")
        self.assertTrue(self.probe.wait_pixel(self.icon(1), GREY))


class Chooser(GreyItems):
    """A window like a row, of three items of 96 by 96, in which one is chosen."""

    height = 96 + 60
    first_left, item_width = 24, 96

    def chooser(self):
        """Its area, or None."""
        return next((area for area in self.probe.windows("quillbox") if area[3] == self.height), None)

    def open_chooser(self):
        self.open_by_corner()
        self.open_menu(1)
        # After those for the hot key and for the removal.
        for key in ("Down", "Down", "Down", "Return"):
            self.probe.tap(key)
        self.assertTrue(self.desktop.wait_until(self.chooser), "no chooser opens")
        # The notice of the launch may still lie over it.
        gone = self.desktop.wait_until(lambda: self.notice[0] not in self.probe.windows("quillbox"))
        self.assertTrue(gone, "the notice stays")
        self.wait_still(self.chooser())

    def item(self, index):
        left, top, _, height = self.chooser()
        return (left + self.first_left + index * self.item_width + self.item_width // 2, top + height // 2)

    def label(self, index):
        """Where the name of an item shows that is selected."""
        x, _ = self.item(index)
        _, top, _, height = self.chooser()
        return (x - 20, top + height - 20, 40, 14)

    def assert_chosen(self, name):
        line = self.program.wait_for_line(lambda line: line.startswith("chose "))
        self.assertIsNotNone(line, "nothing is chosen")
        self.assertEqual(self.program.lines[line], "chose " + name)
        self.assertTrue(self.desktop.wait_until(lambda: not self.chooser()), "the chooser stays")

    def test_the_pointer_chooses(self):
        self.open_chooser()
        self.assert_changes(
            self.label(2), lambda: self.probe.move(self.item(2)), "the pointer does not select"
        )
        self.probe.click(self.item(2))
        self.assert_chosen("Third")

    def test_the_keys_choose(self):
        self.open_chooser()
        for index, key in ((0, "Right"), (1, "Tab")):
            self.assert_changes(
                self.label(index), lambda key=key: self.probe.tap(key), f"{key} does not select"
            )
        self.probe.tap("Return")
        self.assert_chosen("Second")

    def test_escape_chooses_nothing(self):
        self.open_chooser()
        self.probe.tap("Escape")
        self.assert_chosen("nothing")

    def test_another_application_that_comes_forward_ends_it(self):
        self.open_chooser()
        self.probe.activate("Alpha")
        self.assert_chosen("nothing")


class ItemMenu(ItemTestCase):
    """Of applications, which go without decorations."""

    # Of the picture, which is 75 wide.
    picture_radius = 75 // 2

    def point_at(self, index):
        self.select(self.panel.halo(index), self.panel.icon(index))

    def test_a_right_click_opens_it_below_the_icon(self):
        self.open_by_corner()
        self.point_at(1)
        self.probe.click(self.panel.icon(1), 3)
        x, y, width, _ = self.wait_menu()
        centre, middle = self.panel.icon(1)
        self.assertAlmostEqual(x + width / 2, centre, delta=2)
        self.assertAlmostEqual(y, middle + self.picture_radius + 10, delta=2)
        self.close_menu()

    def test_a_click_with_control_opens_it(self):
        self.open_by_corner()
        self.point_at(1)
        with self.probe.holding("Control_L"):
            self.probe.click(self.panel.icon(1))
            self.wait_menu()
        self.close_menu()
        self.assertEqual(self.probe.active(), "Gamma")

    def test_the_configure_button_opens_it_below_itself(self):
        self.open_by_corner()
        x, y = self.panel.icon(1)
        # The halo is 83 wide; the button's middle lies 2 left of its right edge, 3 below its top.
        button = (x + 41 - 2, y - 41 + 3)
        self.wait_still(self.around(button))
        # What of the button lies outside of the halo: that comes first.
        self.assert_changes(
            (button[0] + 4, button[1] - 3, 3, 6),
            lambda: self.probe.move(self.panel.icon(1)),
            "no configure button",
        )
        self.wait_still(self.around(button))
        self.probe.click(button)
        left, top, width, _ = self.wait_menu()
        self.assertAlmostEqual(left + width / 2, button[0], delta=2)
        self.assertAlmostEqual(top, button[1] + 10 + 6, delta=2)
        self.close_menu()

    def test_the_click_that_closes_it_does_not_invoke(self):
        self.open_by_corner()
        self.point_at(1)
        self.probe.click(self.panel.icon(1), 3)
        # No hand clicks before it has seen the menu, and only then does that hold the pointer.
        self.wait_still(self.wait_menu())
        self.probe.click(self.panel.icon(1))
        self.wait_until_menus_close()
        self.assertFalse(self.probe.wait_active("Alpha", 0.3))
        self.assertTrue(self.panel_window_is_up())


class DecoratedApplications(ItemTestCase):
    starts_program = False

    def test_an_application_shows_its_tint_from_the_start(self):
        path = self.decorations_path()
        path.parent.mkdir(parents=True, exist_ok=True)
        entry = self.desktop.home / ".local/share/applications/Alpha.desktop"
        path.write_bytes(plistlib.dumps({"TintNames": {str(entry): "Red"}, "BadgeNames": {}}))
        self.start_program()
        self.open_by_corner()
        # Alpha was in front before Gamma.
        self.assertTrue(self.probe.wait_pixel(self.panel.icon(0), self.gamma.colour))
        self.wait_tinted(self.panel.icon(1), self.alpha.colour, RED_TINT)


class HotKeys(ItemTestCase):
    """The panel stays up while the user is in a menu or in the dialog."""

    def alpha_path(self):
        return str(self.desktop.home / ".local/share/applications/Alpha.desktop")

    def open_alphas_menu(self):
        self.open_by_corner()
        self.open_item_menu(self.panel.halo(1), self.panel.icon(1))

    def wait_hot_keys(self, expected):
        self.desktop.wait_until(lambda: self.desktop.read_hot_keys() == expected)
        self.assertEqual(self.desktop.read_hot_keys(), expected)

    def close_panel(self):
        self.assert_panel_has_keyboard()
        self.probe.tap("Escape")
        self.assert_panel_gone()
        self.assert_input_is_free()

    def dialog_is_up(self):
        """It is wider than any menu of an item, and not as high as the panel."""
        return any(area[2] > 300 for area in self.menus())

    def record(self, letter, hot_keys):
        """The dialog listens soon after it shows; before that the keys would be lost. Pressed again
        after they have been recorded they would act: not before it is certain that they have not."""
        self.assertTrue(self.desktop.wait_until(self.dialog_is_up), "no dialog opens")

        # It keeps the keyboard then.
        self.wait(lambda: not self.probe.input_is_free(), "the dialog does not listen")

        def recorded():
            self.probe.tap("Control_L", "Alt_L", letter)
            return self.desktop.wait_until(lambda: self.desktop.read_hot_keys() == hot_keys, LONG)

        self.wait(recorded, f"{self.desktop.read_hot_keys()} is recorded")

    def close_dialog(self):
        self.probe.tap("Return")
        closed = self.desktop.wait_until(lambda: not self.dialog_is_up())
        self.assertTrue(closed, "the dialog stays")

    def test_the_menu_of_an_application_gives_it_one(self):
        self.open_alphas_menu()
        # The last entry.
        self.probe.tap("Up")
        self.probe.tap("Return")
        self.record("t", {self.alpha_path(): CONTROL_ALT_T})
        self.close_dialog()
        self.close_panel()
        start = len(self.gamma.events)
        self.probe.tap("Control_L", "Alt_L", "t")
        self.assert_active("Alpha")
        self.assertNotIn("press t", self.gamma.events[start:])

    def test_a_click_on_the_keys_in_the_menu_changes_it(self):
        self.desktop.write_hot_keys({self.alpha_path(): CONTROL_ALT_T})
        self.open_alphas_menu()
        menu = self.menus()[0]
        self.probe.tap("Up")
        self.probe.tap("Right")
        both = self.desktop.wait_until(lambda: len(self.menus()) == 2)
        self.assertTrue(both, "the keys do not show")
        left, top, width, _ = next(area for area in self.menus() if area != menu)
        keys = (left + width // 2, top + MENU_EDGE + KEYS_HEIGHT // 2)
        self.assert_changes(
            (left + 20, keys[1] - 2, width - 40, 4),
            lambda: self.probe.move(keys),
            "the keys do not light up",
        )
        self.probe.click(keys)
        self.record("e", {self.alpha_path(): CONTROL_ALT_E})
        self.close_dialog()
        self.close_panel()
        self.probe.tap("Control_L", "Alt_L", "e")
        self.assert_active("Alpha")

    def test_the_menu_takes_it_away(self):
        self.desktop.write_hot_keys({self.alpha_path(): CONTROL_ALT_T})
        self.open_alphas_menu()
        # Into the submenu of the last entry: the tile, then "Clear Hot Key".
        for key in ("Up", "Right", "Down", "Return"):
            self.probe.tap(key)
        self.wait_until_menus_close()
        self.wait_hot_keys({})


if __name__ == "__main__":
    unittest.main()
