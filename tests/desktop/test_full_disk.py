"""Nothing can be written while the program or its preferences want to save."""

import resource
import unittest

from harness import PROGRAM
from harness.session import PREFERENCES, SessionTestCase

UNLIMITED = resource.RLIM_INFINITY
FAILURE = "com.vorlane.quillbox.settings cannot be written, and what it is to hold lasts until"


class FullDisk(SessionTestCase):
    """By a limit on how large a file may become, which needs no rights and can be lifted."""

    starts_program = False

    def start_on_full_disk(self, program, *arguments):
        # As on a full disk, writing fails; without this the limit would end the program instead.
        words = ["sh", "-c", 'trap "" XFSZ; ulimit -S -f 0; exec "$0" "$@"', program, *arguments]
        return self.desktop.start(words)

    def free_disk(self, process):
        resource.prlimit(process.pid, resource.RLIMIT_FSIZE, (UNLIMITED, UNLIMITED))

    def assert_fails_to_save(self, process):
        self.wait(lambda: any(FAILURE in line for line in process.lines), process.output)

    def names(self):
        return sorted(path.name for path in self.desktop.settings_path.parent.iterdir())

    def test_program_keeps_the_old_file_and_works(self):
        # It is to be saved that the program has been started up.
        self.desktop.write_settings({"HasPerformedOneTimeStartUp": False})
        before, names = self.desktop.settings_path.read_bytes(), self.names()
        self.program = self.desktop.program = self.start_on_full_disk(PROGRAM)
        self.answer_dialog("Quillbox Installed")
        self.assertTrue(self.desktop.wait_until_ready())
        self.assert_fails_to_save(self.program)
        self.assertEqual(self.desktop.settings_path.read_bytes(), before)
        self.assertEqual(self.names(), names)
        self.super_tab()
        # Comes up over the application, soon after the first switch.
        self.answer_dialog("Quillbox Introduction")
        # Which of them was used last is of no concern here.
        self.wait(lambda: self.probe.active() in ("Alpha", "Beta"), "no switch")

    def test_preferences_save_again_once_there_is_room(self):
        before = self.desktop.settings_path.read_bytes()
        process = self.start_on_full_disk(PREFERENCES, "--page=activation")
        self.wait(self.preferences_are_in_front, "the preferences do not show")
        self.probe.tap("Tab")  # From the list of pages to the first switch: Super-Tab.
        self.probe.tap("space")
        self.assert_fails_to_save(process)
        self.assertEqual(self.desktop.settings_path.read_bytes(), before)
        self.free_disk(process)
        self.probe.tap("Tab")
        self.probe.tap("space")
        self.wait(lambda: not self.desktop.read_settings()["ActivatesOnOptionTab"], "not saved")


if __name__ == "__main__":
    unittest.main()
