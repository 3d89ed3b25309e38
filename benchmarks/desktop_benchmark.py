#!/usr/bin/env python3
"""Measures the built program on a real X server, beside a peer of its kind, and prints a table.

    benchmarks/desktop_benchmark.py [--rounds N] [--idle SECONDS] [--size WxH]... [--no-peer]

Every program gets the same display (Xvfb, openbox, no compositor), the same four applications and
the same chord; one process sends the keys and looks at the pixels, so both ends of a time are read
off one clock. The peer is alttab, told not to wait before it shows.

What the lines mean:
  key to pixel         from Super-Tab's press to the first changed pixel in the middle of the screen;
                       our panel is meant to wait 0.3 s, which is taken off
  double tap to pixel  from the second release, no delay meant; the keyboard is looked at every
                       0.05 s, so that on average 0.025 s of it is waiting: the least is what the
                       opening itself takes, and the median less 0.025 s comes to the same
  Tab to moved halo    from a further press of Tab to the first changed pixel
  start to ready       from starting the process to its keys being taken
  resident memory      VmRSS after the first opening, and RssAnon, which nobody shares
  idle                 processor time, and wake-ups of all its threads, while nothing happens
"""

import argparse
import os
import pathlib
import platform
import random
import statistics
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/desktop"))

from harness import DEADLINE, PROGRAM  # noqa: E402
from harness.desktop import Application, Desktop  # noqa: E402

FADE_IN_DELAY = 0.3
MEAN_POLL_WAIT = 0.025
TAP_SECONDS = 0.08  # Longer than the 0.05 s between two looks at the keyboard.
HAND_SECONDS = 0.1  # Between one round and the next.
PHASES = random.Random(1)


def applications(size):
    width, height = size
    return [
        Application("Alpha", "c03030", (20, 40, 300, 200)),
        Application("Beta", "30a030", (width - 340, 40, 300, 200)),
        Application("Gamma", "3030c0", (20, height - 260, 300, 200)),
        Application("Delta", "c0c030", (width - 340, height - 260, 300, 200)),
    ]


def middle_of(size):
    return (size[0] // 2 - 160, size[1] // 2 - 40, 320, 80)


class Figures:
    """Times in seconds, told as milliseconds."""

    def __init__(self, times, taken_off=0.0):
        self.times = sorted(value - taken_off for value in times)

    def __str__(self):
        if not self.times:
            return "none"
        last = self.times[min(len(self.times) - 1, int(len(self.times) * 0.95))]
        return (
            f"median {statistics.median(self.times) * 1e3:.1f} ms, "
            f"least {self.times[0] * 1e3:.1f}, 95 of 100 below {last * 1e3:.1f} "
            f"({len(self.times)} rounds)"
        )


class Contestant:
    """A switcher on a display of its own."""

    def __init__(self, size, settings=None):
        self.desktop = Desktop(size)
        self.desktop.open_eyes()
        self.probe = self.desktop.probe
        self.desktop.start_window_manager()
        for application in applications(size):
            application.start(self.desktop)
        self.middle = middle_of(size)
        self.probe.remember("middle", self.middle)
        if settings:
            self.desktop.write_settings(settings)
        self.process = None

    def end(self):
        self.probe.release_all()
        self.desktop.end()

    def resident_memory(self):
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as status:
            fields = dict(line.split(":", 1) for line in status)
        return tuple(int(fields[name].split()[0]) / 1024 for name in ("VmRSS", "RssAnon"))

    def _wake_ups(self):
        """By thread: each time that it went to sleep of its own will, it had been woken before."""
        counts = {}
        for thread in pathlib.Path(f"/proc/{self.process.pid}/task").iterdir():
            for line in (thread / "status").read_text().splitlines():
                if line.startswith("voluntary_ctxt_switches"):
                    counts[thread.name] = int(line.split()[1])
        return counts

    def _processor_seconds(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def idle(self, seconds):
        wake_ups, processor = self._wake_ups(), self._processor_seconds()
        time.sleep(seconds)
        # A thread that has ended in the meantime leaves no count behind.
        count = sum(now - wake_ups.get(thread, 0) for thread, now in self._wake_ups().items())
        return count / seconds, (self._processor_seconds() - processor) / seconds

    def latency_of_chord(self):
        """Leaves Super down and the switcher up."""
        self.probe.down("Super_L")
        latency = self.probe.latency("Tab", "down", "middle", 3)
        self.probe.up("Tab")
        return latency

    def latency_of_step(self):
        latency = self.probe.latency("Tab", "down", "middle", 3)
        self.probe.up("Tab")
        return latency

    def let_go(self):
        """And waits until the middle of the screen is as it was before."""
        self.probe.up("Super_L")
        if not self.probe.wait_same("resting"):
            raise RuntimeError("the panel does not go away")
        time.sleep(HAND_SECONDS)


class Quillbox(Contestant):
    def start(self):
        begin = time.monotonic()
        self.process = self.desktop.start_program()
        if not self.desktop.wait_until_ready():
            raise RuntimeError(self.process.output)
        return time.monotonic() - begin

    def latency_of_double_tap(self):
        self._hold_super()
        time.sleep(TAP_SECONDS)
        self.probe.down("Super_L")
        # Every phase against the program's looks at the keyboard is as likely.
        time.sleep(TAP_SECONDS + PHASES.uniform(0, 0.05))
        latency = self.probe.latency("Super_L", "up", "middle", 3)
        self.probe.tap("Escape")
        if not self.probe.wait_same("resting"):
            raise RuntimeError("the panel does not go away")
        time.sleep(0.6)  # Until the taps are forgotten.
        return latency

    def _hold_super(self):
        self.probe.down("Super_L")
        time.sleep(TAP_SECONDS)
        self.probe.up("Super_L")


class Alttab(Contestant):
    def start(self):
        # -d: no delay before it shows. Its keys are the ones that are asked of us, too.
        self.process = self.desktop.start(["alttab", "-mk", "Super_L", "-kk", "Tab", "-d", "0"])
        for _ in range(200):
            self.probe.remember("resting", self.middle)
            if self.latency_of_chord() is not None:
                self.let_go()
                return None
            self.probe.up("Super_L")
        raise RuntimeError(self.process.output)


def measure_chord(contestant, rounds):
    contestant.probe.remember("resting", contestant.middle)
    chords, steps = [], []
    for _ in range(rounds):
        latency = contestant.latency_of_chord()
        if latency is None:
            raise RuntimeError("nothing shows")
        chords.append(latency)
        # What is still being painted must not be taken for the step's picture.
        time.sleep(0.1)
        steps.append(contestant.latency_of_step())
        contestant.let_go()
    return chords, [step for step in steps if step is not None]


def row(title, text):
    print(f"  {title:<22}{text}", flush=True)


def report_resources(contestant, seconds):
    resident, anonymous = contestant.resident_memory()
    row("resident memory", f"{resident:.1f} MB, of which {anonymous:.1f} MB its own")
    if seconds:
        wake_ups, share = contestant.idle(seconds)
        row("idle", f"{share * 100:.3f} % of a processor, {wake_ups:.2f} wake-ups a second"
                    f" ({seconds:.0f} s)")


def measure_quillbox(size, arguments):
    print("quillbox")
    contestant = Quillbox(size)
    try:
        starts = [contestant.start()]
        chords, steps = measure_chord(contestant, arguments.rounds)
        row("key to pixel", Figures(chords, FADE_IN_DELAY))
        row("Tab to moved halo", Figures(steps))
        report_resources(contestant, arguments.idle)
        for _ in range(4):
            contestant.process.terminate()
            contestant.process.wait(DEADLINE)
            starts.append(contestant.start())
        row("start to ready", Figures(starts))
    finally:
        contestant.end()
    contestant = Quillbox(size, {"ActivatesOnCommandKeyDoubleTap": True})
    try:
        contestant.start()
        contestant.probe.remember("resting", contestant.middle)
        times = [contestant.latency_of_double_tap() for _ in range(arguments.rounds)]
        times = [value for value in times if value is not None]
        row("double tap to pixel", Figures(times))
        row("  less the poll", Figures(times, MEAN_POLL_WAIT))
    finally:
        contestant.end()


def measure_alttab(size, arguments):
    print("alttab")
    contestant = Alttab(size)
    try:
        contestant.start()
        chords, steps = measure_chord(contestant, arguments.rounds)
        row("key to pixel", Figures(chords))
        row("Tab to moved halo", Figures(steps))
        report_resources(contestant, arguments.idle)
    finally:
        contestant.end()


def size_of(text):
    width, height = text.split("x")
    return int(width), int(height)


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--rounds", type=int, default=50)
    parser.add_argument("--idle", type=float, default=60, help="seconds; 0 leaves it out")
    parser.add_argument("--size", type=size_of, action="append")
    parser.add_argument("--no-peer", action="store_true")
    arguments = parser.parse_args()
    print(f"{PROGRAM} on {platform.machine()}, {os.cpu_count()} processors, {platform.release()}")
    for size in arguments.size or [(1920, 1080), (3840, 2160)]:
        print("\n{}x{}, no compositor".format(*size))
        measure_quillbox(size, arguments)
        if not arguments.no_peer:
            measure_alttab(size, arguments)
        arguments.idle = 0  # The size of the display does not matter there.


if __name__ == "__main__":
    main()
