"""Where things are on the panel, and whether it shows."""

from . import DEADLINE

# Of a row with the default settings, in points.
HALO = 83
ROW_HEIGHT = HALO + 52
ROW_EXTRA_WIDTH = 36
FIRST_ICON_LEFT = int(0.2 * ROW_HEIGHT)
ICON = HALO - 8
MARGIN_TOP = 40
MARGIN_BOTTOM = 20


class Panel:
    """The panel with its one row of `count` applications, on a screen of `size` pixels."""

    def __init__(self, probe, size, count, scale=1):
        self._probe = probe
        self._scale = scale
        width, height = size[0] // scale, size[1] // scale
        row_width = HALO * count + ROW_EXTRA_WIDTH
        self._left = width // 2 - row_width // 2
        self._middle = MARGIN_TOP + (height - MARGIN_TOP - MARGIN_BOTTOM) // 2
        self._width = row_width

    def _pixels(self, *points):
        return tuple(point * self._scale for point in points)

    def icon(self, index):
        """The centre of the icon at a place of the row, in pixels."""
        x = self._left + FIRST_ICON_LEFT + index * HALO + ICON // 2
        return self._pixels(x, self._middle)

    @property
    def row(self):
        """The row's area: x, y, width, height in pixels."""
        return self._pixels(self._left, self._middle - ROW_HEIGHT // 2, self._width, ROW_HEIGHT)

    @property
    def beside_row(self):
        """A place on the panel that is no part of the row."""
        return self._pixels(self._left + self._width // 2, self._middle + ROW_HEIGHT + 40)

    def halo(self, index):
        """A thin area left of an icon's picture, where the halo of the selection shows."""
        x, y = self.icon(index)
        scale = self._scale
        return (x - (HALO // 2 + 1) * scale, y - 10 * scale, 8 * scale, 20 * scale)

    def remember_hidden(self):
        """To be called while the panel is not there."""
        self._probe.remember("hidden", self.row)

    def wait_shown(self, timeout=DEADLINE):
        return self._probe.wait_change("hidden", timeout)

    def wait_hidden(self, timeout=DEADLINE):
        return self._probe.wait_same("hidden", timeout)
