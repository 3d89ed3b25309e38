"""A folder in a row: its menu shows what is in it, and what can be done with that."""

import stat
import unittest

from test_folder_rows import FolderRowTestCase
from test_row_menus import RIGHT

# Entries of the folder's menu from its end: two files, the folder in a row of its own, all of it.
LAST_FILE, OPEN_ALL = 1, 4


class FolderItems(FolderRowTestCase):
    def start_program(self):
        self.folder = self.desktop.home / "Documents/letters"
        self.folder.mkdir(parents=True)
        self.files = [self.folder / "a.txt", self.folder / "b.txt"]
        for file in self.files:
            file.write_text("contents")
        self.variables = {"PATH": f"{self.put_opener()}:{self.desktop.environment['PATH']}"}
        super().start_program()

    def put_opener(self):
        """The desktop's own tool, as far as this test goes: it notes what it is to open."""
        opener = self.desktop.folder / "bin/xdg-open"
        opener.parent.mkdir()
        opener.write_text('#!/bin/sh\nprintf "%s\\n" "$1" >> "$HOME/opened"\n')
        opener.chmod(opener.stat().st_mode | stat.S_IXUSR)
        return opener.parent

    def opened(self):
        note = self.desktop.home / "opened"
        return sorted(note.read_text().splitlines()) if note.exists() else []

    def open_menu(self):
        """That of the folder, the only thing in the row of another one."""
        self.choose_documents()
        # The rows are as long as that of the applications again.
        self.panel = self.panel.with_count(len(self.applications))
        self.assert_row_order(0, 2)
        self.wait_still(self.panel.row_area(1, 2))
        self.probe.click(self.point_at(0), RIGHT)
        # It leaves the icon free, and so the pointer: only keys choose.
        self.wait_menu()

    def test_all_of_it_is_opened_from_its_menu(self):
        self.open_menu()
        self.choose(ups=OPEN_ALL)
        self.wait(
            lambda: self.opened() == [str(file) for file in self.files],
            f"not all is opened, but {self.opened()}",
        )

    def test_what_is_in_it_has_a_menu_of_its_own_after_a_rest(self):
        self.open_menu()
        for _ in range(LAST_FILE):
            self.probe.tap("Up")
        trash = self.desktop.home / ".local/share/Trash/files"
        # Right does nothing until the submenu has come, and then goes to the first of its entries.
        self.wait(self.goes_right, "no submenu comes")
        self.probe.tap("Return")
        self.wait((trash / "b.txt").exists, "the file is not in the trash")
        self.assertEqual([file.name for file in self.folder.iterdir()], ["a.txt"])

    def goes_right(self):
        self.probe.tap("Right")
        return len(self.menus()) == 2


if __name__ == "__main__":
    unittest.main()
