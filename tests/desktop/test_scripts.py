"""Script files: what they do when they are opened."""

import os
import pathlib
import signal
import unittest

from test_folder_rows import FolderRowTestCase

MENUS = pathlib.Path(__file__).resolve().parent / "probe/gtkmenus.py"
NAME = "GTK Menus"
# As the program writes it for a path through the menus.
MENU_SCRIPT = """
tell application "{0}" to activate
on menu_click(mList)
local appName, topMenu, r
set {{appName, topMenu}} to (items 1 through 2 of mList)
set r to (items 3 through (mList's length) of mList)
tell application "System Events" to my menu_click_recurse(r, ((process appName)'s \u00ac
(menu bar 1)'s (menu bar item topMenu)'s (menu topMenu)))
end menu_click
on menu_click_recurse(mList, parentObject)
local f, r
set f to item 1 of mList
if mList's length > 1 then set r to (items 2 through (mList's length) of mList)
tell application "System Events"
if mList's length is 1 then
click parentObject's menu item f
else
my menu_click_recurse(r, (parentObject's (menu item f)'s (menu f)))
end if
end tell
end menu_click_recurse
menu_click({{{1}}})
"""


class ScriptFiles(FolderRowTestCase):
    """A script in a folder reaches into the menus of a program, which it starts for that."""

    services = ["org.a11y.Bus"]

    def start_program(self):
        self.write_program()
        script = self.desktop.home / "Documents/zoom.scpt"
        script.parent.mkdir()
        names = ", ".join(f'"{name}"' for name in (NAME, "View", "Zoom", "More", "200 %"))
        script.write_text(MENU_SCRIPT.format(NAME, names).replace("\n", "\r"), encoding="utf-8")
        super().start_program()

    def write_program(self):
        """It tells in a file what is chosen in its menus."""
        self.told = self.desktop.folder / "told"
        starter = self.desktop.folder / "menus"
        starter.write_text(f"#!/bin/sh\necho $$ > {starter}.pid\nexec {MENUS} > {self.told}\n")
        starter.chmod(0o755)
        self.addCleanup(self.end_program, starter.with_suffix(".pid"))
        entry = self.desktop.home / ".local/share/applications/gtkmenus.desktop"
        entry.write_text(f"[Desktop Entry]\nType=Application\nName={NAME}\nExec={starter}\n"
                         "StartupWMClass=Gtkmenus\n")

    @staticmethod
    def end_program(pid):
        if pid.exists():
            os.kill(int(pid.read_text()), signal.SIGTERM)

    def test_a_click_on_its_icon_runs_it(self):
        self.choose_documents()
        # As wide as the row of applications.
        self.panel = self.panel.with_count(len(self.applications))
        self.wait_still(self.panel.row_area(1, 2))
        self.probe.click(self.point_at(0))
        self.wait(lambda: self.told.exists() and self.told.read_text() == "chose 200 %\n",
                  "the entry is not chosen")
        self.assert_active("Gtkmenus")
        self.assert_input_is_free()


if __name__ == "__main__":
    unittest.main()
