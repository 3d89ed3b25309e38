"""A file in the row of a folder: decorated, and thrown away, by its menu."""

import unittest

from test_folder_rows import QUESTION, FolderRowTestCase
from test_items import RED_TINT, ItemTestCase
from test_row_menus import RIGHT

# Entries of the menu of a text file, counted from its end.
DECORATE, MOVE_TO_TRASH = 3, 4
BLUE = "2020d0"


class FileItems(FolderRowTestCase, ItemTestCase):
    def start_program(self):
        self.letter = self.desktop.home / "Documents/letter.txt"
        self.letter.parent.mkdir()
        self.letter.write_text("Dear Reader,\n")
        # The icon of plain texts, in a colour that a test can see.
        icons = self.desktop.home / ".local/share/icons/hicolor/scalable/mimetypes"
        icons.mkdir(parents=True)
        (icons / "text-plain.svg").write_text(
            '<svg xmlns="http://www.w3.org/2000/svg" width="128" height="128">'
            f'<rect width="128" height="128" fill="#{BLUE}"/></svg>'
        )
        super().start_program()

    def show_documents(self):
        """The letter is the first icon of the lower row."""
        self.choose_documents()
        # As wide as the row of applications.
        self.panel = self.panel.with_count(3)
        self.icon = self.panel.icon(0, 1, 2)
        self.assertTrue(self.probe.wait_pixel(self.icon, BLUE), "the letter does not show")
        self.wait_still(self.panel.row_area(1, 2))

    def open_menu(self):
        self.probe.click(self.point_at(0), RIGHT)
        return self.wait_menu()

    def test_a_tint_shows_at_once_and_is_kept(self):
        self.show_documents()
        self.probe.click(self.tint(self.open_grids(self.open_menu(), DECORATE), 0))
        self.wait_tinted(self.icon, BLUE, RED_TINT)
        self.wait_until_menus_close()
        self.wait_decorations("TintNames", {str(self.letter): "Red"})

    def test_the_menu_moves_it_to_the_trash_if_the_user_agrees(self):
        self.show_documents()
        self.open_menu()
        self.choose(ups=MOVE_TO_TRASH)
        self.wait_for_dialog(QUESTION)
        # To the button that is not the safe one.
        self.probe.tap("Tab")
        self.probe.tap("space")
        trash = self.desktop.home / ".local/share/Trash/files"
        self.wait((trash / self.letter.name).exists, "the letter is not in the trash")
        self.assertFalse(self.letter.exists())
        gone = self.desktop.wait_until(lambda: self.probe.pixel(self.icon) != BLUE)
        self.assertTrue(gone, "the letter still shows")
        self.assertTrue(self.panel_window_is_up(), "the panel has gone with the question")

    def test_the_key_that_refuses_is_not_the_panels_too_however_late_it_is_seen(self):
        self.show_documents()
        self.open_menu()
        self.choose(ups=MOVE_TO_TRASH)
        self.wait_for_dialog(QUESTION)
        with self.program.standing_threads():
            self.answer_dialog(QUESTION)
        self.assert_panel_has_keyboard()
        # As the panel's it would have opened the letter and closed the panel.
        self.probe.click(self.icon, RIGHT)
        self.wait_menu()
        self.assertTrue(self.letter.exists())


if __name__ == "__main__":
    unittest.main()
