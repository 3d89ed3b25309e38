#!/usr/bin/env python3
"""Runs the desktop tests and closes with "N passed, N failed".

    tests/desktop/run.py [-k PATTERN]...     QUILLBOX_PROGRAM and QUILLBOX_TEST_TOOLS tell where the
                                             program and the probes have been built
"""

import argparse
import pathlib
import sys
import time
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
# So many may fail at first, and each is tried so often in all.
RETRIED = 6
TRIES = 3


class Result(unittest.TextTestResult):
    """Names each test with its time, as it ends."""

    def startTest(self, test):
        self._started = time.monotonic()
        super().startTest(test)

    def stopTest(self, test):
        super().stopTest(test)
        self.stream.write(f"  {time.monotonic() - self._started:.1f} s\n")
        self.stream.flush()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("-k", dest="patterns", action="append", default=[])
    arguments = parser.parse_args()
    loader = unittest.TestLoader()
    if arguments.patterns:
        loader.testNamePatterns = [
            pattern if "*" in pattern else f"*{pattern}*" for pattern in arguments.patterns
        ]
    suite = loader.discover(str(HERE), top_level_dir=str(HERE))
    runner = unittest.TextTestRunner(stream=sys.stdout, verbosity=2, resultclass=Result)
    result = runner.run(suite)
    passed = result.testsRun - len(result.skipped) - len(failures(result))
    failed = retry(runner, failures(result))
    passed += len(failures(result)) - failed
    print(f"{passed} passed, {failed} failed")
    return 0 if passed and not failed else 1


def failures(result):
    """The tests that did not pass, by their names."""
    tests = [test for test, _ in result.failures + result.errors] + result.unexpectedSuccesses
    # A part of a test that fails on its own makes the whole of it fail.
    return {test.id(): test for test in (getattr(test, "test_case", test) for test in tests)}


def retry(runner, failed):
    """How many of `failed` do not pass in any further try either.

    A handful only: on a machine that stands still for seconds one test in fifty may miss its
    moment, and says so above; more than that is a fault.
    """
    if len(failed) > RETRIED:
        return len(failed)
    for number in range(2, TRIES + 1):
        if not failed:
            break
        print(f"Try {number} of {TRIES}: {', '.join(failed)}", flush=True)
        failed = failures(runner.run(unittest.TestLoader().loadTestsFromNames(failed)))
    return len(failed)


if __name__ == "__main__":
    sys.exit(main())
