"""A row that shows a folder: chosen, sorted, and kept up to date while the panel is up."""

import os
import unittest

from harness.session import SessionTestCase
from test_row_menus import RIGHT, MenuTestCase
from test_rows import BESIDE_ROWS

# Entries of the selector menu from its top, of those that can be chosen.
FOLDER_CONTENTS = 3
# Of the row's own menu, from its end.
FILES_FIRST, ASCENDING = 2, 4
# Buttons of a row without a folder: the home, all applications, "Documents", the library, and that
# for any other. The place of one.
CHOOSER = 5
QUESTION = "Move Item to Trash"
DOCUMENTS = 2
RED, GREEN, BLUE = "d02020", "20b020", "2020d0"


class FolderRowTestCase(SessionTestCase, MenuTestCase):
    """The folder "Documents" in a row below the applications."""

    # Rows that are wide enough for the whole chooser, and whose icons do not shrink.
    settings = {
        **MenuTestCase.settings, "LowerTabRowItemHaloHeight": 83, "MaxHostViewWidthPercent": 100,
    }

    def choose_documents(self):
        """The pointer is beside the rows afterwards."""
        self.open_by_corner()
        self.add_row()
        self.choose_in_selector(1, 2, downs=FOLDER_CONTENTS)
        self.wait_menu_gone()
        self.panel = self.panel.with_count(CHOOSER)
        self.wait_still(self.panel.row_area(1, 2))
        self.probe.click(self.point_at(DOCUMENTS))
        self.probe.move(BESIDE_ROWS)

    def point_at(self, index):
        """A click is for what is selected: the item at that place of the lower row is, then."""
        icon, halo = self.panel.icon(index, 1, 2), self.panel.halo(index, 1, 2)
        self.select(halo, icon)
        return icon

    def put(self, name, colour):
        """A program's file in the folder, whose icon a test can see. It comes there as a whole."""
        icon = self.desktop.folder / f"{name}.svg"
        icon.write_text(
            '<svg xmlns="http://www.w3.org/2000/svg" width="128" height="128">'
            f'<rect width="128" height="128" fill="#{colour}"/></svg>'
        )
        file = self.desktop.folder / f"{name}.desktop"
        file.write_text(
            f"[Desktop Entry]\nType=Application\nName={name}\nExec=/bin/true\nIcon={icon}\n")
        file.chmod(0o755)
        os.rename(file, self.folder / file.name)

    def assert_shows(self, *colours):
        """The icons of the row; None stands for the folder's. Its last item is a button."""
        # It is no shorter than the row of applications.
        self.panel = self.panel.with_count(max(len(colours) + 1, len(self.applications)))
        for index, colour in enumerate(colours):
            place = self.panel.icon(index, 1, 2)
            self.assertTrue(
                colour is None or self.probe.wait_pixel(place, colour),
                f"at place {index} is {self.probe.pixel(place)}",
            )
        # It glides to its place.
        self.wait_still(self.panel.row_area(1, 2))


class FolderRows(FolderRowTestCase):
    def start_program(self):
        self.folder = self.desktop.home / "Documents"
        (self.folder / "yard").mkdir(parents=True)
        self.put("red", RED)
        self.put("blue", BLUE)
        super().start_program()

    def show_documents(self):
        self.choose_documents()
        self.assert_shows(None, RED, BLUE)

    def choose_order(self, **entry):
        place = self.panel.in_row(8, 100, 1, 2)
        self.move_about(place)
        self.probe.click(place, RIGHT)
        self.wait_menu()
        self.choose(**entry)
        self.wait_menu_gone()
        self.probe.move(BESIDE_ROWS)

    def test_a_folder_is_chosen_followed_and_sorted(self):
        self.show_documents()
        self.put("green", GREEN)
        self.assert_shows(None, RED, GREEN, BLUE)
        self.choose_order(ups=FILES_FIRST)
        self.assert_shows(RED, GREEN, BLUE, None)
        self.choose_order(ups=ASCENDING)
        self.assert_shows(BLUE, GREEN, RED, None)
        (self.folder / "green.desktop").unlink()
        self.assert_shows(BLUE, RED, None)

    def test_an_item_is_thrown_away_by_its_menu(self):
        self.show_documents()
        self.probe.click(self.point_at(1), RIGHT)
        self.wait_menu()
        self.choose(ups=1)
        self.wait_for_dialog(QUESTION)
        # From "Cancel" to the other button.
        self.probe.tap("Tab")
        self.answer_dialog(QUESTION, "space")
        trash = self.desktop.home / ".local/share/Trash/files"
        self.wait((trash / "red.desktop").exists, "the file is not in the trash")
        self.assertFalse((self.folder / "red.desktop").exists())
        self.assert_shows(None, BLUE)


if __name__ == "__main__":
    unittest.main()
