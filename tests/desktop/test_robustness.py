"""What happens to the desktop when something goes wrong, and on desktops of other kinds."""

import os
import signal
import subprocess
import unittest

from harness import PROGRAM
from harness.case import DesktopTestCase
from harness.desktop import Application, Desktop

LONG = 60

# By default this desktop has Super-Tab for itself.
XFCE_WITHOUT_KEYS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-keyboard-shortcuts" version="1.0">
  <property name="xfwm4" type="empty">
    <property name="custom" type="empty">
      <property name="override" type="bool" value="true"/>
    </property>
  </property>
</channel>
"""


class Endings(DesktopTestCase):
    def test_killed_with_the_panel_up_it_leaves_no_grab_behind(self):
        self.open_panel()
        self.program.kill()
        self.assertTrue(self.probe.wait_input_free())
        self.probe.up("Super_L")
        self.assert_panel_gone()
        self.assert_keys_reach(self.gamma)
        self.assert_chord_is_free("super", "Tab")
        self.assert_chord_is_free("alt", "Tab")

    def test_termination_is_orderly(self):
        self.program.terminate()
        self.assertEqual(self.program.wait(), 0)
        self.assertTrue(self.probe.wait_input_free())
        self.assert_chord_is_free("super", "Tab")

    def test_termination_with_the_panel_up_gives_the_keyboard_back(self):
        self.open_panel()
        self.program.terminate()
        self.assertEqual(self.program.wait(), 0)
        self.probe.up("Super_L")
        self.assert_panel_gone()
        self.assert_active("Gamma")
        self.assert_keys_reach(self.gamma)


class SecondInstance(DesktopTestCase):
    def start_second(self):
        return subprocess.Popen([PROGRAM], env=self.desktop.environment, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def test_hands_over_to_the_first_and_raises_nothing(self):
        second = self.start_second()
        output, errors = second.communicate(timeout=LONG)
        self.assertEqual(second.returncode, 0, errors)
        self.assertRegex(output, r"(?i)already")
        self.assertEqual(errors, "")
        self.assertIsNotNone(self.program.wait_for_line(lambda line: "started again" in line))
        self.assertEqual(self.probe.active(), "Gamma")
        self.assertFalse(self.panel_window_is_up())
        self.super_tab()
        self.assert_active("Alpha")

    def test_says_when_the_first_does_not_answer(self):
        os.kill(self.program.pid, signal.SIGSTOP)
        self.addCleanup(os.kill, self.program.pid, signal.SIGCONT)
        second = self.start_second()
        output, errors = second.communicate(timeout=LONG)
        self.assertEqual(second.returncode, 3)
        self.assertEqual(output, "")
        self.assertRegex(errors, r"already running .* does not answer")


class Surroundings(DesktopTestCase):
    starts_program = False

    def test_without_a_display_it_says_so(self):
        program = self.desktop.start([PROGRAM], DISPLAY=":4711")
        self.assertEqual(program.wait(), 2)
        self.assertIn("X server", program.output)

    def test_qt_uses_the_x_server_whatever_else_the_session_prefers(self):
        self.variables = {"QT_QPA_PLATFORM": "offscreen"}
        self.start_program()
        self.super_tab()
        self.assert_active("Alpha")

    def test_takes_no_arguments(self):
        program = self.desktop.start([PROGRAM, "--help"])
        self.assertNotIn(program.wait(), (0, 2, 3, 4, None))


class WithoutXtest(unittest.TestCase):
    def test_server_without_xtest_is_refused_with_a_message(self):
        desktop = Desktop(server_options=["-extension", "XTEST"])
        self.addCleanup(desktop.end)
        program = desktop.start_program()
        self.assertEqual(program.wait(), 4, program.output)
        self.assertIn("XTEST", program.output)


class WindowManagerRestart(DesktopTestCase):
    def test_switches_after_the_window_manager_has_been_replaced(self):
        self.desktop.window_manager.end()
        self.desktop.start_window_manager()
        self.put_alpha_behind_gamma()
        self.super_tab()
        self.assert_active("Alpha")
        self.super_tab()
        self.assert_active("Gamma")

    def test_started_before_the_window_manager(self):
        self.program.end()
        self.desktop.window_manager.end()
        self.start_program()
        self.desktop.start_window_manager()
        self.put_alpha_behind_gamma()
        self.super_tab()
        self.assert_active("Alpha")

    def put_alpha_behind_gamma(self):
        """A window manager that comes brings any of them to the front."""
        self.assertTrue(self.probe.activate("Alpha"))
        self.go_round()
        self.assertTrue(self.probe.activate("Gamma"))


class OtherWindowManager(DesktopTestCase):
    def start_window_manager(self):
        channel = self.desktop.home / ".config/xfce4/xfconf/xfce-perchannel-xml"
        channel.mkdir(parents=True)
        (channel / "xfce4-keyboard-shortcuts.xml").write_text(XFCE_WITHOUT_KEYS)
        self.desktop.start_manager(
            ["dbus-run-session", "xfwm4", "--compositor=off", "--sm-client-disable"]
        )

    def test_super_tab(self):
        self.super_tab()
        self.assert_active("Alpha")
        self.open_panel()
        self.probe.tap("Tab")
        self.probe.up("Super_L")
        self.assert_active("Beta")
        self.assert_panel_gone()


class Compositor(DesktopTestCase):
    def start_window_manager(self):
        super().start_window_manager()
        self.desktop.start_compositor()

    def test_panel_shows_and_goes(self):
        self.open_panel()
        self.assert_order("Gamma", "Alpha", "Beta")
        self.probe.up("Super_L")
        self.assert_active("Alpha")
        self.assert_panel_gone()

    def test_quick_tap_shows_nothing(self):
        with self.probe.watching(self.panel.row) as seen:
            self.super_tab()
            self.assert_active("Alpha")
        self.assertEqual(seen[0], 0)

    def test_wider_panel_is_not_cut_to_the_last_one(self):
        self.open_panel()
        self.probe.up("Super_L")
        self.assert_active("Alpha")
        self.assert_panel_gone()
        for name, colour in (("Delta", "c0c030"), ("Epsilon", "30c0c0")):
            Application(name, colour, (940, 540, 300, 200)).start(self.desktop)
        self.panel = self.panel.with_count(5)
        x, y, width, height = self.panel.row
        for name, left in (("left", x + 10), ("right", x + width - 20)):
            self.probe.remember(name, (left, y + height // 2, 10, 10))
        self.open_panel()
        for name in ("left", "right"):
            self.assertTrue(self.probe.wait_change(name), f"the {name} end is cut off")
        self.probe.up("Super_L")
        self.assert_panel_gone()

    def test_compositor_that_ends_and_comes_back(self):
        self.desktop.compositor.end()
        self.open_panel()
        self.probe.up("Super_L")
        self.assert_active("Alpha")
        self.desktop.start_compositor()
        self.open_panel()
        self.assert_order("Alpha", "Gamma", "Beta")
        self.probe.up("Super_L")
        self.assert_active("Gamma")


class ScaleFactorTwo(DesktopTestCase):
    size = (2560, 1600)
    variables = {"QT_SCALE_FACTOR": "2"}

    def test_panel_is_twice_as_large(self):
        self.open_panel()
        self.assert_order("Gamma", "Alpha", "Beta")
        self.probe.up("Super_L")
        self.assert_active("Alpha")

    def test_click_on_an_icon(self):
        self.open_panel()
        self.probe.remember("unselected", self.panel.halo(2))
        self.probe.move(self.panel.icon(2))
        self.assertTrue(self.probe.wait_change("unselected"), "the pointer does not select")
        self.probe.click(self.panel.icon(2))
        self.assert_active("Beta")


class TwoMonitors(DesktopTestCase):
    size = (2560, 800)

    def start_window_manager(self):
        # One screen of the server, told to be two monitors side by side.
        output = self.desktop.run(["xrandr"]).split(" connected")[0].split()[-1]
        run = self.desktop.run
        run(["xrandr", "--setmonitor", "left", "1280/338x800/211+0+0", output])
        run(["xrandr", "--setmonitor", "right", "1280/338x800/211+1280+0", "none"])
        super().start_window_manager()

    def start_program(self):
        super().start_program()
        from harness.panel import Panel

        self.panel = Panel(self.probe, (1280, 800), 3)

    def test_panel_keeps_to_the_monitor_at_the_origin(self):
        self.open_panel()
        self.assertEqual(self.probe.geometry("quillbox"), (0, 0, 1280, 800))
        self.assert_order("Gamma", "Alpha", "Beta")
        self.probe.up("Super_L")
        self.assert_active("Alpha")


if __name__ == "__main__":
    unittest.main()
