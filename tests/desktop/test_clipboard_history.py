"""What is copied becomes a file of the clipboard history."""

import resource
import unittest

from harness import PROGRAM
from harness.case import DesktopTestCase
from harness.clipboard import HINT, Clipboard, gives, has_given
from harness.session import SessionTestCase

PNG = bytes.fromhex(
    "89504e470d0a1a0a0000000d49484452000000010000000108060000001f15c489"
    "0000000d4944415478da63f8cfc0f01f00050001ff56c72f0d0000000049454e44ae426082")


class ClipboardHistory(DesktopTestCase):
    def setUp(self):
        super().setUp()
        self.clipboard = Clipboard(self.desktop)

    def assert_texts(self, *texts):
        self.wait(lambda: self.clipboard.texts() == sorted(texts),
                  f"the history is not as it should be: {texts}")

    def wait_for_some_looks(self):
        """The notice of the start stays for two seconds and goes by the same loop that looks at the
        clipboard every second."""
        self.assertTrue(self.probe.wait_unmapped("quillbox"), "the notice stays")


class Copies(ClipboardHistory):
    def test_each_is_a_file_of_its_own_that_only_the_user_can_read(self):
        self.clipboard.copy_text("one")
        self.assert_texts("one")
        self.clipboard.offer({"image/png": PNG})
        self.wait(lambda: len(self.clipboard.history()) == 2, "the image is not recorded")
        self.clipboard.offer({"text/plain": b"two", "text/rtf": b"{\\rtf1 two}", "image/png": PNG})
        self.wait(lambda: len(self.clipboard.history()) == 3, "the rich text is not recorded")
        self.assertEqual(self.clipboard.history(), [
            (".imageclip", "public.png", PNG),
            (".textclip", "public.rtf", b"{\\rtf1 two}"),
            (".textclip", "public.utf8-plain-text", b"one"),
        ])
        self.assertEqual(self.clipboard.folder.stat().st_mode & 0o777, 0o700)
        for path in self.clipboard.folder.iterdir():
            self.assertEqual(path.stat().st_mode & 0o777, 0o600, path)

    def test_a_repeat_is_looked_at_and_not_written(self):
        self.clipboard.copy_text("same")
        self.assert_texts("same")
        again = self.clipboard.copy_text("same")
        self.assertTrue(gives(again, "text/plain"))
        self.clipboard.copy_text("other")
        self.assert_texts("other", "same")

    def test_secrets_of_password_keepers_are_not_even_read(self):
        secret = self.clipboard.copy_secret("password")
        self.assertTrue(gives(secret, HINT))
        self.clipboard.copy_text("no secret")
        self.assert_texts("no secret")
        self.assertFalse(has_given(secret, "text/plain"))
        self.assertEqual(len(self.clipboard.history()), 1)

    def test_an_owner_that_hangs_holds_up_nothing_for_long(self):
        hanging = self.clipboard.offer({"text/plain": b"never"}, "hang")
        self.addCleanup(hanging.kill)
        self.assertTrue(gives(hanging, "text/plain"))
        self.super_tab()
        self.assert_active("Alpha")
        self.clipboard.copy_text("after it")
        self.assert_texts("after it")


class Launches(ClipboardHistory):
    starts_program = False

    def test_the_history_lasts_and_what_is_there_at_the_start_is_not_recorded(self):
        self.clipboard.copy_text("before")
        self.start_program()
        self.wait_for_some_looks()
        self.assert_texts()
        self.clipboard.copy_text("one")
        self.assert_texts("one")
        self.program.terminate()
        self.assertEqual(self.program.wait(), 0)
        self.start_program()
        self.wait_for_some_looks()
        self.assert_texts("one")
        # The first of a run is no repeat.
        self.clipboard.copy_text("one")
        self.assert_texts("one", "one")

    def test_a_full_disk_loses_what_is_copied_meanwhile_and_nothing_else(self):
        # As on a full disk, writing fails; without this the limit would end the program instead.
        words = ["sh", "-c", 'trap "" XFSZ; ulimit -S -f 0; exec "$0"', PROGRAM]
        self.program = self.desktop.program = self.desktop.start(words)
        self.assertTrue(self.desktop.wait_until_ready())
        self.clipboard.copy_text("lost")
        failed = self.program.wait_for_line(lambda line: ".textclip cannot be written" in line)
        self.assertIsNotNone(failed)
        self.assertEqual(list(self.clipboard.folder.iterdir()), [])
        unlimited = resource.RLIM_INFINITY
        resource.prlimit(self.program.pid, resource.RLIMIT_FSIZE, (unlimited, unlimited))
        self.clipboard.copy_text("lost")
        self.assert_texts("lost")


class CaptureMode(ClipboardHistory, SessionTestCase):
    settings = {"ClipboardManagerHistoryCaptureMode": 0}

    def test_without_clients_nothing_is_recorded_until_the_preferences_say_always(self):
        copied = self.clipboard.copy_text("text")
        self.wait_for_some_looks()
        self.assertEqual(self.clipboard.history(), [])
        self.assertFalse(has_given(copied, "text/plain"))
        self.start_preferences("--page=general")
        self.probe.tap("Tab")  # From the list of pages to the choice.
        self.probe.tap("Down")
        self.wait(lambda: self.desktop.read_settings()["ClipboardManagerHistoryCaptureMode"] == 1,
                  "not saved")
        self.assert_texts("text")


if __name__ == "__main__":
    unittest.main()
