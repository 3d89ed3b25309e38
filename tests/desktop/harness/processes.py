"""Child processes that end with the test, and their output, line by line."""

import contextlib
import ctypes
import os
import pathlib
import signal
import subprocess
import threading

from . import DEADLINE

# Requests of ptrace and a flag of waitpid, which Python does not know.
SEIZE, INTERRUPT, DETACH = 0x4206, 0x4207, 17
WAIT_FOR_THREADS = 0x40000000


def trace(request, thread):
    ptrace = ctypes.CDLL(None, use_errno=True).ptrace
    ptrace.argtypes = (ctypes.c_long, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
    if ptrace(request, thread, None, None) < 0:
        raise OSError(ctypes.get_errno(), "ptrace")


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

    @contextlib.contextmanager
    def standing_threads(self):
        """Its own threads but the main one stand still meanwhile, as on a machine that has much to
        do. Those of libraries have names of their own."""
        stopped = []
        try:
            for task in pathlib.Path(f"/proc/{self.pid}/task").iterdir():
                name = (task / "comm").read_text().strip()
                if task.name != str(self.pid) and name == pathlib.Path(self.command[0]).name:
                    trace(SEIZE, int(task.name))
                    stopped.append(int(task.name))
                    trace(INTERRUPT, stopped[-1])
                    os.waitpid(stopped[-1], WAIT_FOR_THREADS)
            yield
        finally:
            for thread in stopped:
                trace(DETACH, thread)

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
