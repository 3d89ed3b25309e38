"""A desktop in memory for tests of the built program: an X server, a window manager, applications,
and a probe that types and looks. Nothing here sleeps for a guessed time: every wait is for
something that the display, a file or a process shows, with a deadline that only a failure reaches.
"""

import os
import pathlib

ROOT = pathlib.Path(__file__).resolve().parents[3]
PROGRAM = pathlib.Path(os.environ.get("QUILLBOX_PROGRAM", ROOT / "build/bin/quillbox"))
TOOLS = pathlib.Path(os.environ.get("QUILLBOX_TEST_TOOLS", ROOT / "build/tests/bin"))

# Seconds. Reached only by what has failed, so it may be generous on a busy machine.
DEADLINE = 60.0
