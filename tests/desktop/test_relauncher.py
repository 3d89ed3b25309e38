"""The helper that starts the program anew. Needs no display."""

import os
import subprocess
import unittest

from harness import DEADLINE, PROGRAM

RELAUNCHER = PROGRAM.with_name("quillbox-relauncher")


class Relauncher(unittest.TestCase):
    def start_old(self, *command):
        old = subprocess.Popen(command, stdin=subprocess.PIPE)
        self.addCleanup(old.wait)
        self.addCleanup(old.kill)
        self.addCleanup(old.stdin.close)
        descriptor = os.pidfd_open(old.pid)
        self.addCleanup(os.close, descriptor)
        return old, descriptor

    def start_helper(self, *arguments, descriptors=()):
        helper = subprocess.Popen(
            [RELAUNCHER, *map(str, arguments)], pass_fds=descriptors, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, text=True)
        self.addCleanup(helper.kill)
        return helper

    def test_becomes_the_program_when_the_old_one_has_gone(self):
        old, descriptor = self.start_old("cat")
        helper = self.start_helper(descriptor, "/bin/echo", "again", "two words",
                                   descriptors=[descriptor])
        self.assertIsNone(helper.poll())
        old.stdin.close()
        out, _ = helper.communicate(timeout=DEADLINE)
        self.assertEqual((out, helper.returncode), ("again two words\n", 0))

    def test_old_program_that_has_gone_already_is_not_waited_for(self):
        old, descriptor = self.start_old("true")
        old.wait(DEADLINE)
        helper = self.start_helper(descriptor, "/bin/echo", "again", descriptors=[descriptor])
        self.assertEqual(helper.communicate(timeout=DEADLINE)[0], "again\n")

    def test_gives_up_at_the_limit(self):
        _, descriptor = self.start_old("cat")
        helper = self.start_helper("--limit", 0, descriptor, "/bin/echo", "again",
                                   descriptors=[descriptor])
        out, error = helper.communicate(timeout=DEADLINE)
        self.assertEqual((out, helper.returncode), ("", 75))
        self.assertEqual(error, "quillbox-relauncher: the program has not ended; it is not started "
                                "again.\n")

    def test_program_that_cannot_start_is_named(self):
        old, descriptor = self.start_old("true")
        old.wait(DEADLINE)
        helper = self.start_helper(descriptor, "/no/such/program", descriptors=[descriptor])
        _, error = helper.communicate(timeout=DEADLINE)
        self.assertEqual(helper.returncode, 69)
        self.assertIn("/no/such/program cannot be started", error)

    def test_wrong_arguments_are_refused(self):
        for arguments in ([], ["x", "/bin/true"], ["1"], ["-3", "/bin/true"],
                          ["--limit", "x", "1", "/bin/true"], ["999", "/bin/true"]):
            with self.subTest(arguments):
                helper = self.start_helper(*arguments)
                helper.communicate(timeout=DEADLINE)
                self.assertEqual(helper.returncode, 64)


if __name__ == "__main__":
    unittest.main()
