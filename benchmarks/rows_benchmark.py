#!/usr/bin/env python3
"""Measures a panel of several full rows on a real X server: what an opening and a step cost, and
whether a thousand openings leave anything behind.

    benchmarks/rows_benchmark.py [--rows N] [--items N] [--rounds N] [--openings N] [--size WxH]

All rows show the running applications, so each has as many items as there are windows. The rows are
added by hand, as a user does it. Processor time is that of all threads of the program, without the X
server's.

What the lines mean:
  opening              from before Super-Tab's press until the panel has shown for a while
  Tab step             one further press of Tab
  row step             one press of Down, to the next row
  scroll step          one press of Left or Right over the ends of a row, from end to end; it scrolls
                       a row that is longer than the screen
  resident memory      RssAnon after the first opening and after all of them
"""

import argparse
import os
import pathlib
import platform
import statistics
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/desktop"))

from harness import PROGRAM  # noqa: E402
from harness.desktop import Application, Desktop  # noqa: E402
from harness.panel import Panel  # noqa: E402

FIRST_APPLICATIONS = 3  # The rows have their natural size as long as they are added.
SETTLED_SECONDS = 0.15  # After this nothing is painted any more.
STEPS = 10
FADE_SECONDS = 0.4


class RowsPanel:
    """The program with so many rows of so many applications, and hands on it."""

    def __init__(self, size, rows, items):
        self.desktop = Desktop(size)
        try:
            self.start(size, rows, items)
        except BaseException:
            self.desktop.end()
            raise

    def start(self, size, rows, items):
        self.desktop.open_eyes()
        self.probe = self.desktop.probe
        self.desktop.start_window_manager()
        self.applications = [self.application(number) for number in range(items)]
        # Before the program reads what is installed.
        for application in self.applications:
            application.write_entry(self.desktop)
        self.beside = (size[0] // 2, size[1] - 8)
        for application in self.applications[:FIRST_APPLICATIONS]:
            application.start(self.desktop)
        self.desktop.write_settings({"ActivatesViaTopLeftCorner": True, "MaxHostViewWidthPercent": 100})
        self.program = self.desktop.start_program()
        if not self.desktop.wait_until_ready():
            raise RuntimeError(self.program.output)
        self.panel = Panel(self.probe, size, FIRST_APPLICATIONS)
        self.add_rows(rows)
        for application in self.applications[FIRST_APPLICATIONS:]:
            application.start(self.desktop)

    @staticmethod
    def application(number):
        colour = f"{0x40 + 5 * number % 0xC0:02x}8040"
        return Application(f"Program{number}", colour, (20 + 9 * number, 20, 120, 60))

    def add_rows(self, rows):
        self.probe.move(self.beside)
        self.panel.remember_hidden()
        self.probe.move((0, 0))
        if not self.panel.wait_shown():
            raise RuntimeError("the panel does not show")
        for present in range(1, rows):
            button = self.panel.in_row(self.panel.width // 2, -17, 0, present)
            for dy in (1, 0, 1, 0):
                self.probe.move((button[0], button[1] + dy))
                time.sleep(0.06)
            time.sleep(FADE_SECONDS)
            self.probe.click(button)
            self.wait_row(0, present + 1)
            self.probe.move(self.beside)
            time.sleep(FADE_SECONDS)
            self.probe.click(self.panel.in_row(self.panel.width // 2, 12, 1, present + 1))
            time.sleep(FADE_SECONDS)
            self.probe.tap("Down")
            self.probe.tap("Return")
            self.wait_row(1, present + 1)
            self.probe.move(self.beside)
            time.sleep(FADE_SECONDS)
        self.probe.tap("Escape")

    def wait_row(self, row, rows):
        """Until it shows an application, whichever."""
        place = self.panel.icon(0, row, rows)
        colours = [application.colour for application in self.applications]
        if not self.desktop.wait_until(lambda: self.probe.pixel(place) in colours):
            raise RuntimeError(f"no row {row} of {rows}")

    def processor_seconds(self):
        total = 0
        for thread in pathlib.Path(f"/proc/{self.program.pid}/task").iterdir():
            total += int((thread / "schedstat").read_text().split()[0])
        return total / 1e9

    def anonymous_memory(self):
        status = pathlib.Path(f"/proc/{self.program.pid}/status").read_text()
        fields = dict(line.split(":", 1) for line in status.splitlines())
        return int(fields["RssAnon"].split()[0]) / 1024

    def cost(self, act):
        """Processor seconds of the program until all that `act` brings about is over."""
        before = self.processor_seconds()
        act()
        time.sleep(SETTLED_SECONDS)
        return self.processor_seconds() - before

    def open(self):
        self.probe.down("Super_L")
        self.probe.tap("Tab")
        time.sleep(0.3)  # Meant: until then nothing shows.

    def dismiss(self):
        self.probe.tap("Escape")
        self.probe.up("Super_L")
        if not self.probe.wait_input_free():
            raise RuntimeError("the panel does not let go")
        time.sleep(0.1)

    def step(self, *keys):
        for index in range(STEPS):
            self.probe.tap(keys[index % len(keys)])
            time.sleep(0.05)

    def open_briefly(self):
        """So quickly that it does not show, as in switching."""
        self.probe.tap("Super_L", "Tab")
        if not self.probe.wait_input_free():
            raise RuntimeError("the panel does not let go")
        time.sleep(0.02)


def tell(title, seconds):
    times = sorted(value * 1e3 for value in seconds)
    print(f"  {title:<18}median {statistics.median(times):.2f} ms, least {times[0]:.2f}, "
          f"most {times[-1]:.2f} ({len(times)} rounds)", flush=True)


def size_of(text):
    width, height = text.split("x")
    return int(width), int(height)


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--rows", type=int, default=6)
    parser.add_argument("--items", type=int, default=30)
    parser.add_argument("--rounds", type=int, default=20)
    parser.add_argument("--openings", type=int, default=1000)
    parser.add_argument("--size", type=size_of, default=(1920, 1080))
    parser.add_argument("--hold", action="store_true", help="wait before measuring, for a profiler")
    parser.add_argument("--picture", help="a file for a picture of the open panel")
    arguments = parser.parse_args()
    print(f"{PROGRAM} on {platform.machine()}, {os.cpu_count()} processors, {platform.release()}")
    print("{} rows of {} items at {}x{}, no compositor".format(
        arguments.rows, arguments.items, *arguments.size))
    panel = RowsPanel(arguments.size, arguments.rows, arguments.items)
    try:
        measure(panel, arguments)
    finally:
        panel.probe.release_all()
        panel.desktop.end()


def measure(panel, arguments):
    openings, tabs, rows, scrolls = [], [], [], []
    if arguments.hold:
        input(f"The program is process {panel.program.pid}; Return goes on. ")
    for _ in range(arguments.rounds):
        openings.append(panel.cost(panel.open))
        tabs.append(panel.cost(lambda: panel.step("Tab")) / STEPS)
        rows.append(panel.cost(lambda: panel.step("Down")) / STEPS)
        if arguments.picture:
            panel.desktop.run(["import", "-window", "root", arguments.picture])
            arguments.picture = None
        panel.dismiss()
        panel.open()
        panel.probe.tap("Left")  # To the first item.
        scrolls.append(panel.cost(lambda: panel.step("Left", "Right")) / STEPS)
        panel.dismiss()
    tell("opening", openings)
    tell("Tab step", tabs)
    tell("row step", rows)
    tell("scroll step", scrolls)
    memory = [panel.anonymous_memory()]
    for done in range(1, arguments.openings + 1):
        panel.open_briefly()
        if done % 100 == 0:
            memory.append(panel.anonymous_memory())
    print("  resident memory   " + ", ".join(f"{value:.1f}" for value in memory)
          + f" MB after each 100 of {arguments.openings} openings")


if __name__ == "__main__":
    main()
