"""A row of the clipboard history: clippings show, are copied again and pasted."""

import struct
import unittest
import zlib

from harness import TOOLS
from harness.clipboard import Clipboard
from test_folder_rows import BLUE, RED, FolderRowTestCase
from test_row_menus import RIGHT
from test_rows import BESIDE_ROWS

# Entries of the selector menu from its top, of those that can be chosen.
CLIPBOARD_HISTORY = 4
# Of the menu of a clipping, the same.
PASTE = 1


def picture(colour, edge=112):
    """A PNG of one colour."""
    def chunk(kind, data):
        checksum = zlib.crc32(kind + data)
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", checksum)
    row = b"\0" + bytes.fromhex(colour) * edge
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", edge, edge, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(row * edge)) + chunk(b"IEND", b""))


class ClipboardRows(FolderRowTestCase):
    def setUp(self):
        super().setUp()
        self.clipboard = Clipboard(self.desktop)

    def wait_recorded(self, count):
        self.wait(lambda: len(self.clipboard.history()) == count, "it is not recorded")

    def show_history(self, count):
        self.open_by_corner()
        self.add_row()
        self.choose_in_selector(1, 2, downs=CLIPBOARD_HISTORY)
        self.wait_menu_gone()
        # It is no shorter than the row of applications.
        self.panel = self.panel.with_count(max(count, len(self.probe.clients())))
        self.probe.move(BESIDE_ROWS)
        self.wait_still(self.panel.row_area(1, 2))

    def assert_shows(self, *colours):
        for index, colour in enumerate(colours):
            place = self.panel.icon(index, 1, 2)
            self.assertTrue(self.probe.wait_pixel(place, colour),
                            f"at place {index} is {self.probe.pixel(place)}")

    def test_clippings_show_as_they_come_and_are_copied_by_a_click(self):
        for number, colour in enumerate((RED, BLUE)):
            self.clipboard.offer({"image/png": picture(colour)})
            self.wait_recorded(number + 1)
        self.show_history(2)
        self.assert_shows(BLUE, RED)
        self.clipboard.offer({"image/png": picture("20b020")})
        self.wait_recorded(3)
        self.assert_shows("20b020", BLUE, RED)
        self.wait_still(self.panel.row_area(1, 2))
        self.probe.click(self.point_at(2))
        self.wait(lambda: self.clipboard.read("image/png") == picture(RED), "it is not copied")
        self.assert_input_is_free()
        self.clipboard.copy_text("marker")
        self.wait_recorded(4)

    def test_a_clipping_is_pasted_and_the_clipboard_is_as_before(self):
        self.clipboard.copy_text("pasted")
        self.wait_recorded(1)
        self.clipboard.copy_text("theirs")
        self.wait_recorded(2)
        self.show_history(2)
        self.probe.tap("Escape")
        self.assert_input_is_free()
        field = self.desktop.start([TOOLS / "clipboardclient", "field"])
        self.assertIsNotNone(field.wait_for_line(lambda line: line == "ready"))
        self.panel = self.panel.with_count(len(self.applications) + 1)
        self.open_again()
        self.probe.click(self.point_at(1), RIGHT)
        self.wait_menu()
        self.choose(downs=PASTE)
        self.assertIsNotNone(field.wait_for_line(lambda line: line.startswith("has ")))
        self.assertIn("has pasted", field.lines)
        self.wait(lambda: self.clipboard.read("text/plain") == b"theirs", "it is not as before")
        self.assertEqual(len(self.clipboard.history()), 2)


if __name__ == "__main__":
    unittest.main()
