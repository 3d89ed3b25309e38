"""The row of the Dropbox folder, and what is moved there. The program that it belongs to is a client
of the tests' own; all that counts of it is that it is installed."""

import unittest

from harness.case import SHORT
from harness.desktop import Application
from test_folder_rows import BLUE, RED, FolderRowTestCase
from test_row_menus import RIGHT
from test_rows import BESIDE_ROWS

# Entries of the selector menu from its top.
DROPBOX_CONTENTS = 3
# Of the menu of a file, from its top.
MOVE_TO_DROPBOX = 3
LONG = 60
DELTA = Application("dropbox", "c0c030", (940, 540, 300, 200))
FOLDER_QUESTION, REPLACE_QUESTION = "Dropbox Folder?", "Move to Dropbox"


class DropboxTestCase(FolderRowTestCase):
    folder_name = "Dropbox"
    is_installed = True

    def start_program(self):
        self.folder = self.desktop.home / self.folder_name
        self.folder.mkdir()
        if self.is_installed:
            DELTA.write_entry(self.desktop)
        super().start_program()

    @property
    def entry(self):
        return self.desktop.home / ".local/share/applications/dropbox.desktop"

    def show_dropbox(self):
        self.open_by_corner()
        self.add_row()
        self.choose_in_selector(1, 2, downs=DROPBOX_CONTENTS)
        self.wait_menu_gone()
        self.wait_still(self.panel.row_area(1, 2))
        self.probe.move(BESIDE_ROWS)


class InTheSelector(DropboxTestCase):
    is_installed = False

    def menu_height(self):
        # Again: a menu that has just closed may still take a press for one beside it.
        self.wait(self.opens_menu, "no menu opens")
        _, _, _, height = self.wait_menu()
        self.close_menu()
        return height

    def opens_menu(self):
        self.probe.click(self.selector())
        return self.desktop.wait_until(self.menus, SHORT)

    def wait_for_menu(self, fits, message):
        """The program looks at what is installed some time after it has changed."""
        self.assertTrue(self.desktop.wait_until(lambda: fits(self.menu_height()), LONG), message)

    def test_it_comes_and_goes_with_the_program(self):
        self.open_by_corner()
        without = self.menu_height()
        DELTA.write_entry(self.desktop)
        self.wait_for_menu(lambda height: height > without, "the row is not offered")
        self.entry.unlink()
        self.wait_for_menu(lambda height: height == without, "the row is still offered")


class KnownFolder(DropboxTestCase):
    def start_program(self):
        super().start_program()
        self.put("red", RED)
        self.put("blue", BLUE)

    def test_the_folder_comes_first_and_then_what_is_in_it(self):
        self.show_dropbox()
        self.assert_shows(None, RED, BLUE)
        self.put("green", "20b020")
        self.assert_shows(None, RED, "20b020", BLUE)


class UnknownFolder(DropboxTestCase):
    folder_name = "shared"

    def start_program(self):
        super().start_program()
        self.put("red", RED)

    def type_path(self):
        """Of the folder, by way of the home."""
        with self.probe.holding("Shift_L"):
            self.probe.tap("asciitilde")
        self.probe.tap("slash", *self.folder_name)

    def test_the_button_asks_for_the_folder(self):
        self.show_dropbox()
        self.panel = self.panel.with_count(len(self.applications))
        self.probe.click(self.point_at(0))
        self.wait_for_dialog("Open")
        self.type_path()
        self.probe.tap("Return")
        self.wait_for_dialog(FOLDER_QUESTION)
        # From "Cancel" to the other button.
        self.probe.tap("Tab")
        self.answer_dialog(FOLDER_QUESTION, "space")
        self.assert_shows(None, RED)
        self.assertEqual(
            self.desktop.read_user_defaults()["DropboxFolderPath"], str(self.folder))


class MovedFile(DropboxTestCase):
    # The folder is known all the same.
    is_installed = False

    def start_program(self):
        self.letter = self.desktop.home / "Documents/letter.txt"
        self.letter.parent.mkdir()
        self.letter.write_text("new")
        super().start_program()
        self.moved = self.folder / self.letter.name

    def choose_move(self):
        self.choose_documents()
        self.panel = self.panel.with_count(len(self.applications))
        self.wait_still(self.panel.row_area(1, 2))
        self.probe.click(self.point_at(0), RIGHT)
        self.wait_menu()
        self.choose(downs=MOVE_TO_DROPBOX)

    def assert_moved(self):
        self.wait(lambda: not self.letter.exists(), "the file has not moved")
        self.assertEqual(self.moved.read_text(), "new")

    def test_a_file_is_moved_by_its_menu(self):
        self.choose_move()
        self.assert_moved()
        self.assertTrue(self.panel_window_is_up(), "the panel has gone with the menu")

    def test_what_is_there_is_asked_about(self):
        self.moved.write_text("old")
        self.choose_move()
        self.wait_for_dialog(REPLACE_QUESTION)
        self.assertEqual(self.moved.read_text(), "old")
        self.probe.tap("Tab")
        self.answer_dialog(REPLACE_QUESTION, "space")
        self.assert_moved()

    def test_a_refusal_leaves_both(self):
        self.moved.write_text("old")
        self.choose_move()
        self.answer_dialog(REPLACE_QUESTION)
        self.assert_panel_has_keyboard()
        self.assertEqual((self.letter.read_text(), self.moved.read_text()), ("new", "old"))


if __name__ == "__main__":
    unittest.main()
