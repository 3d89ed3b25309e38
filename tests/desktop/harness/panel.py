"""Where things are on the panel, and whether it shows."""

from . import DEADLINE

# Of a row with the default settings, in points.
HALO = 83
ROW_HEIGHT = HALO + 52
ROW_EXTRA_WIDTH = 36
FIRST_ICON_LEFT = int(0.2 * ROW_HEIGHT)
ICON = HALO - 8
ROW_GAP = 20
MARGIN_TOP = 40
MARGIN_BOTTOM = 20


class Panel:
    """The panel with its rows, the longest of `count` items, on a screen of `size` pixels. A row is
    told by its place from the top and how many there are."""

    def __init__(self, probe, size, count, scale=1):
        self._probe = probe
        self._scale = scale
        width, height = size[0] // scale, size[1] // scale
        row_width = HALO * count + ROW_EXTRA_WIDTH
        self._left = width // 2 - row_width // 2
        self._middle = MARGIN_TOP + (height - MARGIN_TOP - MARGIN_BOTTOM) // 2
        self._width = row_width

    def with_count(self, count):
        """The same with rows that are as wide as so many items."""
        size = self._probe.size()
        return Panel(self._probe, size, count, self._scale)

    def _pixels(self, *points):
        return tuple(point * self._scale for point in points)

    def _row_middle(self, row, rows):
        return self._middle + (2 * row - rows + 1) * (ROW_HEIGHT + ROW_GAP) // 2

    def icon(self, index, row=0, rows=1):
        """The centre of the icon at a place of a row, in pixels."""
        x = self._left + FIRST_ICON_LEFT + index * HALO + ICON // 2
        return self._pixels(x, self._row_middle(row, rows))

    @property
    def row(self):
        """The only row's area: x, y, width, height in pixels."""
        return self.row_area()

    def row_area(self, row=0, rows=1):
        top = self._row_middle(row, rows) - ROW_HEIGHT // 2
        return self._pixels(self._left, top, self._width, ROW_HEIGHT)

    def in_row(self, x, y, row=0, rows=1):
        """A point of a row's coordinates, in pixels; a negative one counts from the far edge."""
        left, top, width, height = self.row_area(row, rows)
        x, y = self._pixels(x, y)
        return (left + x + (width if x < 0 else 0), top + y + (height if y < 0 else 0))

    @property
    def width(self):
        """Of the rows, in points."""
        return self._width

    @property
    def beside_row(self):
        """A place on the panel that is no part of the row."""
        return self._pixels(self._left + self._width // 2, self._middle + ROW_HEIGHT + 40)

    def halo(self, index, row=0, rows=1):
        """A thin area left of an icon's picture, where the halo of the selection shows."""
        x, y = self.icon(index, row, rows)
        scale = self._scale
        return (x - (HALO // 2 + 1) * scale, y - 10 * scale, 8 * scale, 20 * scale)

    def remember_hidden(self):
        """To be called while the panel is not there."""
        self._probe.remember("hidden", self.row)

    def wait_shown(self, timeout=DEADLINE):
        return self._probe.wait_change("hidden", timeout)

    def wait_hidden(self, timeout=DEADLINE):
        return self._probe.wait_same("hidden", timeout)
