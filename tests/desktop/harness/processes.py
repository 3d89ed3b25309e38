"""Child processes that end with the test, and their output, line by line."""

import contextlib
import os
import signal
import subprocess
import threading

from . import DEADLINE


class Process:
    """A running program whose output is kept, and can be waited for."""

    def __init__(self, command, environment, keep_input=False):
        self.command = [str(part) for part in command]
        self._process = subprocess.Popen(
            self.command,
            env=environment,
            stdin=subprocess.PIPE if keep_input else subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            errors="replace",
            start_new_session=True,
        )
        self._lines = []
        self._changed = threading.Condition()
        self._ended = False
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    def _read(self):
        for line in self._process.stdout:
            with self._changed:
                self._lines.append(line.rstrip("\n"))
                self._changed.notify_all()
        with self._changed:
            self._ended = True
            self._changed.notify_all()

    @property
    def pid(self):
        return self._process.pid

    @property
    def lines(self):
        with self._changed:
            return list(self._lines)

    @property
    def output(self):
        return "\n".join(self.lines)

    def write_line(self, text):
        self._process.stdin.write(text + "\n")
        self._process.stdin.flush()

    def wait_for_line(self, matches, start=0, timeout=DEADLINE):
        """The index of the first line at or after `start` for which matches(line); None when the
        time or the output is over before."""
        with self._changed:
            position = start

            def found():
                nonlocal position
                while position < len(self._lines):
                    if matches(self._lines[position]):
                        return True
                    position += 1
                return self._ended

            self._changed.wait_for(found, timeout)
            return position if position < len(self._lines) else None

    def is_running(self):
        return self._process.poll() is None

    def wait(self, timeout=DEADLINE):
        """The exit status, or None when it still runs at the deadline."""
        try:
            status = self._process.wait(timeout)
        except subprocess.TimeoutExpired:
            return None
        self._reader.join(timeout)
        return status

    def terminate(self):
        """Asks it to end."""
        self._process.terminate()

    def kill(self):
        """Ends it at once, without a chance to tidy up."""
        self._process.kill()
        return self.wait()

    def end(self):
        """Ends it, and whatever it has left behind."""
        if self.is_running():
            self._process.terminate()
            if self.wait(5) is None:
                self.kill()
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self.pid, signal.SIGKILL)
        if self._process.stdin:
            self._process.stdin.close()
        self._reader.join(5)
        if not self._reader.is_alive():
            self._process.stdout.close()
