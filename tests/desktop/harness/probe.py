"""The hands and eyes of a test: speaks with the xprobe program."""

import contextlib

from . import DEADLINE, TOOLS
from .processes import Process

# Seconds until something is asked for again.
PATIENCE = 5


class Probe:
    """Types, clicks and looks on one display. Names of keys are X names: "Super_L", "Tab", "a"."""

    def __init__(self, environment):
        self._process = Process([TOOLS / "xprobe"], environment, keep_input=True)
        self._read = 0
        self._answer()

    def _answer(self):
        index = self._process.wait_for_line(lambda line: True, self._read, DEADLINE * 4)
        if index is None:
            raise RuntimeError("xprobe has ended")
        self._read = index + 1
        answer = self._process.lines[index]
        if answer.startswith("error"):
            raise RuntimeError(answer)
        return answer

    def ask(self, command, *arguments):
        self._process.write_line(" ".join(str(part) for part in (command, *arguments)))
        return self._answer()

    def _holds(self, command, *arguments):
        return self.ask(command, *arguments).startswith("ok")

    def _words(self, command, *arguments):
        return self.ask(command, *arguments).split()[1:]

    def end(self):
        self._process.end()

    # Hands

    def down(self, key):
        self.ask("key", key, "down")

    def up(self, key):
        self.ask("key", key, "up")

    def tap(self, *keys):
        """Presses the keys in order and releases them in the opposite one, as quick as it goes."""
        self.ask("tap", *keys)

    @contextlib.contextmanager
    def holding(self, *keys):
        for key in keys:
            self.down(key)
        yield
        for key in reversed(keys):
            self.up(key)

    def move(self, position):
        self.ask("move", *position)

    def click(self, position, button=1):
        self.move(position)
        self.ask("button", button, "down")
        self.ask("button", button, "up")

    def release_all(self):
        self.ask("release-all")

    # Eyes

    def active(self):
        return " ".join(self._words("active"))

    def wait_active(self, name, timeout=DEADLINE):
        return self._holds("wait-active", name, timeout)

    def active_title(self):
        """What the window in front is called; empty when there is none."""
        return self.ask("active-title")[len("ok ") :]

    def focused_title(self):
        """The same of the window that gets what is typed."""
        return self.ask("focused-title")[len("ok ") :]

    def wait_focused(self, name, timeout=DEADLINE):
        """Until what is typed goes there, unless somebody holds the keyboard."""
        return self._holds("wait-focused", name, timeout)

    def activate(self, name):
        """Asked for again: a program that comes up just then may take its turn from it."""
        for _ in range(int(DEADLINE / PATIENCE)):
            self.ask("activate", name)
            if self.wait_active(name, PATIENCE):
                return True
        return False

    def wait_clients(self, count, timeout=DEADLINE):
        return self._holds("wait-clients", count, timeout)

    def clients(self):
        return self._words("clients")

    def geometry(self, name):
        """x, y, width, height of the class's largest mapped window below the root, or None."""
        words = self._words("geometry", name)
        return tuple(int(word) for word in words) if words else None

    def windows(self, name):
        """(x, y, width, height) of each of the class's mapped windows below the root."""
        numbers = [int(word) for word in self._words("windows", name)]
        return [tuple(numbers[start : start + 4]) for start in range(0, len(numbers), 4)]

    def wait_mapped(self, name, timeout=DEADLINE):
        return self._holds("wait-mapped", name, timeout)

    def wait_unmapped(self, name, timeout=DEADLINE):
        return self._holds("wait-unmapped", name, timeout)

    def wait_selection(self, name, timeout=DEADLINE):
        """Until some program owns the selection."""
        return self._holds("wait-selection", name, timeout)

    def size(self):
        return tuple(int(word) for word in self._words("size"))

    def remember(self, name, area):
        self.ask("remember", name, *area)

    def wait_change(self, name, timeout=DEADLINE):
        return self._holds("wait-change", name, timeout)

    def wait_same(self, name, timeout=DEADLINE):
        return self._holds("wait-same", name, timeout)

    def latency(self, key, direction, name, timeout=DEADLINE):
        """Seconds from sending the key to the first changed pixel of the remembered area; None
        when nothing changes."""
        words = self._words("latency", key, direction, name, timeout)
        return int(words[0]) / 1e6 if words else None

    def pixels_that_differ(self, name):
        return int(self._words("differs", name)[0])

    def pixel(self, position):
        return self._words("pixel", *position)[0]

    def wait_pixel(self, position, colour, timeout=DEADLINE):
        return self._holds("wait-pixel", *position, colour, timeout)

    @contextlib.contextmanager
    def watching(self, area):
        """Looks at the area all the while; yields a list that then holds (changed, looks)."""
        result = []
        self.ask("watch", *area)
        yield result
        result.extend(int(word) for word in self._words("watched"))

    def input_is_free(self):
        return self._holds("input-free")

    def wait_input_free(self, timeout=DEADLINE):
        return self._holds("wait-input-free", timeout)

    def chord_is_taken(self, modifier, key):
        return self._holds("chord-taken", modifier, key)

    def wait_chord_taken(self, modifier, key, timeout=DEADLINE):
        return self._holds("wait-chord-taken", modifier, key, timeout)
