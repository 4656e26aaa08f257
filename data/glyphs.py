"""The signs on the icons, each drawn twice: for a group on 16 by 16 pixels, for a profile on 23 by 17.

A glyph is drawn with `Pen` from shapes whose straight edges are on whole pixels. It has two colours: the ink for the
shape and the accent for its characteristic detail. What is cut out shows the background of the icon.
"""

import math

import cairo


class Pen:
    """Draws shapes in one colour at a time; positions are pixels from the glyph's top left corner."""

    def __init__(self, context, ink, accent):
        self.context = context
        self.ink = ink
        self.accent = accent

    def _paint(self, colour):
        if colour is None:
            self.context.set_operator(cairo.OPERATOR_CLEAR)
            self.context.fill()
            self.context.set_operator(cairo.OPERATOR_OVER)
        else:
            self.context.set_source_rgba(*colour)
            self.context.fill()

    def _round_path(self, x, y, w, h, r):
        c = self.context
        c.new_sub_path()
        centres = ((x + w - r, y + r), (x + w - r, y + h - r), (x + r, y + h - r), (x + r, y + r))
        for turn, (cx, cy) in enumerate(centres):
            c.arc(cx, cy, r, (turn - 1) * math.pi / 2, turn * math.pi / 2)
        c.close_path()

    def box(self, colour, x, y, w, h, r=0.0):
        """A filled rectangle with corners rounded by r; the colour None cuts it out."""
        self._round_path(x, y, w, h, r)
        self._paint(colour)

    def frame(self, colour, x, y, w, h, r=0.0, line=1.0):
        """The outline of a rectangle, `line` wide and inside it."""
        self._round_path(x, y, w, h, r)
        self.context.set_fill_rule(cairo.FILL_RULE_EVEN_ODD)
        self._round_path(x + line, y + line, w - 2 * line, h - 2 * line, max(0.0, r - line))
        self._paint(colour)
        self.context.set_fill_rule(cairo.FILL_RULE_WINDING)

    def disc(self, colour, x, y, r):
        self.context.new_sub_path()
        self.context.arc(x, y, r, 0, 2 * math.pi)
        self._paint(colour)

    def ellipse(self, colour, x, y, rx, ry, angle=0.0):
        self.context.save()
        self.context.translate(x, y)
        self.context.rotate(angle)
        self.context.scale(rx, ry)
        self.context.arc(0, 0, 1, 0, 2 * math.pi)
        self.context.restore()
        self._paint(colour)

    def ring(self, colour, x, y, r, line):
        self.context.set_fill_rule(cairo.FILL_RULE_EVEN_ODD)
        for radius in (r, r - line):
            self.context.new_sub_path()
            self.context.arc(x, y, radius, 0, 2 * math.pi)
        self._paint(colour)
        self.context.set_fill_rule(cairo.FILL_RULE_WINDING)

    def oval(self, colour, line, x, y, rx, ry):
        """The outline of an ellipse."""
        c = self.context
        c.save()
        c.translate(x, y)
        c.scale(rx, ry)
        c.new_sub_path()
        c.arc(0, 0, 1, 0, 2 * math.pi)
        c.restore()
        c.set_source_rgba(*colour)
        c.set_line_width(line)
        c.stroke()

    def wedge(self, colour, x, y, r, start, end):
        self.context.move_to(x, y)
        self.context.arc(x, y, r, math.radians(start), math.radians(end))
        self.context.close_path()
        self._paint(colour)

    def polygon(self, colour, *points):
        self.context.move_to(*points[0])
        for point in points[1:]:
            self.context.line_to(*point)
        self.context.close_path()
        self._paint(colour)

    def stroke(self, colour, line, *points, cap=cairo.LINE_CAP_ROUND):
        c = self.context
        c.set_source_rgba(*colour)
        c.set_line_width(line)
        c.set_line_cap(cap)
        c.set_line_join(cairo.LINE_JOIN_ROUND)
        c.move_to(*points[0])
        for point in points[1:]:
            c.line_to(*point)
        c.stroke()

    def arc(self, colour, line, x, y, r, start, end):
        c = self.context
        c.set_source_rgba(*colour)
        c.set_line_width(line)
        c.set_line_cap(cairo.LINE_CAP_BUTT)
        c.new_sub_path()
        c.arc(x, y, r, math.radians(start), math.radians(end))
        c.stroke()

    def star(self, colour, x, y, r, points=5, waist=0.45):
        corners = []
        for i in range(2 * points):
            radius = r if i % 2 == 0 else r * waist
            angle = math.pi * i / points - math.pi / 2
            corners.append((x + radius * math.cos(angle), y + radius * math.sin(angle)))
        self.polygon(colour, *corners)

    def bits(self, colour, x, y, *rows):
        """Single pixels, given as rows of text in which `#` is a set pixel."""
        for dy, row in enumerate(rows):
            for dx, cell in enumerate(row):
                if cell == "#":
                    self.box(colour, x + dx, y + dy, 1, 1)


def clock(p, big):
    p.ring(p.ink, 8, 8, 7, 1.6)
    p.stroke(p.accent, 1.6, (8, 4.2), (8, 8.2), (10.6, 9.8))


def film(p, big):
    if big:
        p.box(p.ink, 0, 1, 23, 15, 2)
        for y in (3, 7, 11):
            p.box(None, 1, y, 2, 3)
            p.box(None, 20, y, 2, 3)
        p.box(None, 4, 3, 15, 11)
        p.polygon(p.accent, (9, 4), (16, 8.5), (9, 13))
    else:
        p.box(p.ink, 1, 2, 14, 12, 1.5)
        for y in (3, 7, 11):
            p.box(None, 2, y, 1, 2)
            p.box(None, 13, y, 1, 2)
        p.box(None, 4, 4, 8, 8)
        p.polygon(p.accent, (6, 4.4), (11.4, 8), (6, 11.6))


def screen(p, big):
    if big:
        p.frame(p.ink, 0, 0, 23, 14, 2, 1)
        p.box(p.ink, 9, 14, 5, 1)
        p.box(p.ink, 6, 15, 11, 1)
        p.bits(p.accent, 5, 4, "##..##.####..", "##..##.##.##.", "######.##..##", "##..##.##..##", "##..##.##.##.",
               "##..##.####..")
    else:
        p.frame(p.ink, 1, 2, 14, 9, 1.5, 1)
        p.box(p.ink, 7, 11, 2, 2)
        p.box(p.ink, 4, 13, 8, 1)
        p.bits(p.accent, 4, 4, "#.#.###.", "#.#.#..#", "###.#..#", "#.#.#..#", "#.#.###.")


def frames(p, big):
    if big:
        p.frame(p.ink, 0, 0, 23, 17, 2, 1)
        p.box(p.accent, 3, 9, 8, 5)
        p.stroke(p.ink, 1.6, (11.8, 8), (17, 4.5))
        p.polygon(p.ink, (14, 3), (20, 3), (18.4, 8))
    else:
        p.frame(p.ink, 1, 2, 14, 12, 1.5, 1)
        p.box(p.accent, 3, 8, 5, 4)
        p.stroke(p.ink, 1.4, (8.8, 7.4), (11.6, 5.4))
        p.polygon(p.ink, (9, 4), (13, 4), (12.6, 7.8))


def globe(p, big):
    # The centre is in the middle of a pixel, so that the equator is one row and the axis one column.
    x, y, r = (11.5, 8.5, 8.5) if big else (7.5, 7.5, 7)
    p.box(p.accent, x - r + 1, y - 0.5, 2 * r - 2, 1)
    p.box(p.accent, x - 0.5, y - r + 1, 1, 2 * r - 2)
    p.oval(p.accent, 1, x, y, r * 0.48, r - 0.5)
    p.ring(p.ink, x, y, r, 1.5)


def layers(p, big):
    x, half, rise, tops = (11.5, 10.5, 4.5, (0, 4, 7.8)) if big else (8, 7, 3.5, (1, 4.3, 7.4))
    for top in reversed(tops[1:]):
        low = top + rise
        p.polygon(p.ink, (x - half, low), (x, low + rise), (x + half, low), (x + half - 2.4, low - 1.1),
                  (x, low + rise - 2.2), (x - half + 2.4, low - 1.1))
    top, middle = tops[0], tops[0] + rise
    p.polygon(p.accent, (x, top), (x + half, middle), (x, middle + rise - 0.8), (x - half, middle))


def clapper(p, big):
    if big:
        p.box(p.ink, 2, 8, 19, 9, 1.5)
        p.box(None, 5, 11, 13, 1)
        p.box(None, 5, 13, 9, 1)
        p.polygon(p.ink, (1.6, 4.4), (20.4, 0), (21, 3), (2.2, 7.4))
        for x in (4.5, 10, 15.5):
            p.polygon(p.accent, *((x + dx, 3.7 - (x + dx - 4.5) * 0.234 + dy) for dx, dy in
                                  ((0.4, 0), (3, 0), (2.2, 3.1), (-0.4, 3.1))))
    else:
        p.box(p.ink, 1, 7, 14, 8, 1.5)
        p.box(None, 3, 10, 10, 1)
        p.box(None, 3, 12, 6, 1)
        p.polygon(p.ink, (0.8, 3.6), (14.2, 0.4), (14.8, 3), (1.4, 6.2))
        for x in (3, 8.6):
            p.polygon(p.accent, *((x + dx, 3.1 - (x + dx - 3) * 0.239 + dy) for dx, dy in
                                  ((0.4, 0), (3, 0), (2.2, 2.7), (-0.4, 2.7))))


def reel(p, big):
    x, y, r, hole, out = (11.5, 8.5, 8.5, 2.1, 5.0) if big else (8, 8, 7, 1.7, 4.1)
    p.disc(p.ink, x, y, r)
    for i in range(5):
        angle = math.radians(-90 + 72 * i)
        p.disc(None, x + out * math.cos(angle), y + out * math.sin(angle), hole)
    p.disc(p.accent, x, y, 1.4 if big else 1.2)
    if big:
        p.box(p.ink, 12, 16, 9, 1)


def disc(p, big):
    x, y, r = (11.5, 8.5, 8.5) if big else (8, 8, 7)
    p.disc(p.ink, x, y, r)
    for start in (-75, 105):
        p.wedge(p.accent, x, y, r - 1, start, start + 42)
    p.disc(p.ink, x, y, r * 0.42)
    p.disc(None, x, y, r * 0.2)


def bluray(p, big):
    x, y, r = (15.5, 8.5, 7.5) if big else (10.3, 8, 5)
    p.disc(p.ink, x, y, r)
    p.disc(None, x, y, r * 0.24)
    if big:
        p.box(None, 0, 0, 13, 17)
        p.box(p.accent, 0, 0, 12, 17, 1.5)
        p.box(None, 2, 3, 8, 1)
        p.box(None, 2, 5, 5, 1)
    else:
        p.box(None, 0, 0, 8, 16)
        p.box(p.accent, 0, 2, 7, 12, 1)
        p.box(None, 2, 4, 3, 1)


def tv(p, big):
    if big:
        p.stroke(p.ink, 1.3, (6.8, 0.8), (11.5, 5), (16.2, 0.8))
        p.frame(p.ink, 0, 5, 23, 12, 2.5, 1)
        p.box(p.accent, 3, 8, 13, 6, 1)
        p.box(p.ink, 18, 8, 2, 2)
        p.box(p.ink, 18, 12, 2, 2)
    else:
        p.stroke(p.ink, 1.3, (4.6, 1.2), (8, 4.6), (11.4, 1.2))
        p.frame(p.ink, 1, 5, 14, 10, 2, 1)
        p.box(p.accent, 3, 7, 7, 6)
        p.box(p.ink, 12, 7, 1, 2)
        p.box(p.ink, 12, 11, 1, 2)


def timeline(p, big):
    if big:
        p.box(p.ink, 0, 5, 7, 3)
        p.box(p.accent, 11, 5, 9, 3)
        p.box(p.accent, 2, 9, 14, 3)
        p.box(p.ink, 17, 9, 6, 3)
        p.box(p.ink, 0, 13, 13, 3)
        p.box(None, 8, 4, 3, 13)
        p.box(p.ink, 9, 2, 1, 15)
        p.polygon(p.ink, (6, 0), (13, 0), (9.5, 4.2))
    else:
        p.box(p.ink, 1, 5, 4, 2)
        p.box(p.accent, 9, 5, 6, 2)
        p.box(p.accent, 2, 9, 12, 2)
        p.box(p.ink, 1, 13, 10, 2)
        p.box(None, 6, 4, 3, 12)
        p.box(p.ink, 7, 2, 1, 13)
        p.polygon(p.ink, (4.5, 1), (10.5, 1), (7.5, 4.6))


def phone(p, big):
    if big:
        p.box(p.ink, 6, 0, 11, 17, 2)
        p.box(None, 7, 2, 9, 12)
        p.box(None, 10, 15, 3, 1)
        p.polygon(p.accent, (9, 4.4), (14.6, 8), (9, 11.6))
    else:
        p.box(p.ink, 4, 1, 9, 14, 1.5)
        p.box(None, 5, 3, 7, 9)
        p.box(None, 7, 13, 3, 1)
        p.polygon(p.accent, (7, 4.5), (11.2, 7.5), (7, 10.5))


def tablet(p, big):
    if big:
        p.box(p.ink, 0, 0, 23, 17, 2)
        p.box(None, 2, 2, 17, 13)
        p.box(None, 20, 7, 2, 3)
        p.polygon(p.accent, (8, 4), (15, 8.5), (8, 13))
    else:
        p.box(p.ink, 1, 2, 14, 12, 1.5)
        p.box(None, 2, 4, 10, 8)
        p.box(None, 13, 7, 1, 2)
        p.polygon(p.accent, (5, 4.9), (9.8, 8), (5, 11.1))


def player(p, big):
    if big:
        p.box(p.ink, 5, 0, 13, 17, 2)
        p.box(None, 7, 2, 9, 5)
        p.box(p.accent, 8, 3, 7, 3)
        p.disc(None, 11.5, 12, 3.6)
        p.disc(p.ink, 11.5, 12, 1.5)
    else:
        p.box(p.ink, 3, 1, 10, 14, 1.5)
        p.box(None, 4, 2, 8, 5)
        p.box(p.accent, 5, 3, 6, 3)
        p.disc(None, 8, 11, 2.8)
        p.disc(p.ink, 8, 11, 1.2)


def note(p, big):
    if big:
        p.polygon(p.accent, (8, 1.6), (18, 0), (18, 4), (8, 5.6))
        p.box(p.ink, 8, 3, 2, 11)
        p.box(p.ink, 16, 2, 2, 11)
        p.ellipse(p.ink, 7.1, 14, 3, 2.4, -0.35)
        p.ellipse(p.ink, 15.1, 12.8, 3, 2.4, -0.35)
    else:
        p.polygon(p.accent, (5, 2.4), (14, 0.8), (14, 4.4), (5, 6))
        p.box(p.ink, 5, 4, 1.6, 9)
        p.box(p.ink, 12.4, 3, 1.6, 9)
        p.ellipse(p.ink, 4.1, 12.8, 2.6, 2.1, -0.35)
        p.ellipse(p.ink, 11.4, 11.6, 2.6, 2.1, -0.35)


def headphones(p, big):
    if big:
        p.arc(p.ink, 2, 11.5, 9, 8, 180, 360)
        p.box(p.ink, 2.5, 9, 2, 3)
        p.box(p.ink, 18.5, 9, 2, 3)
        p.box(p.accent, 3, 9, 5, 8, 1.8)
        p.box(p.accent, 15, 9, 5, 8, 1.8)
    else:
        p.arc(p.ink, 1.6, 8, 8, 6.2, 180, 360)
        p.box(p.accent, 1, 8, 4, 7, 1.4)
        p.box(p.accent, 11, 8, 4, 7, 1.4)


def wave(p, big):
    if big:
        for i, height in enumerate((3, 7, 13, 9, 17, 11, 5, 3)):
            p.box(p.accent if i in (2, 4) else p.ink, 3 * i - 0, 8.5 - height / 2, 2, height)
    else:
        for i, height in enumerate((4, 10, 14, 8, 4)):
            p.box(p.accent if i == 2 else p.ink, 1 + 3 * i, 8 - height / 2, 2, height)


def microphone(p, big):
    if big:
        p.box(p.accent, 9, 0, 5, 9, 2.5)
        p.arc(p.ink, 1.4, 11.5, 7.2, 5, 0, 180)
        p.box(p.ink, 11, 12, 1, 4)
        p.box(p.ink, 8, 16, 7, 1)
    else:
        p.box(p.accent, 6, 1, 4, 8, 2)
        p.arc(p.ink, 1.3, 8, 7, 4.6, 0, 180)
        p.box(p.ink, 7.4, 11.5, 1.2, 2.5)
        p.box(p.ink, 5, 14, 6, 1)


def person(p, big):
    x, y = (11.5, 0) if big else (7, 1)
    s = 17 / 14 if big else 1
    p.disc(p.ink, x, y + 3.4 * s, 3.2 * s)
    p.context.save()
    p.context.rectangle(0, 0, 30, y + 14 * s)
    p.context.clip()
    p.ellipse(p.ink, x, y + 13.6 * s, 6 * s, 6 * s)
    p.context.restore()
    sx, sy, r = (x + 5.4 * s, y + 11 * s, 3.8 * s)
    p.star(None, sx, sy, r + 1.6)
    p.star(p.accent, sx, sy, r)


def plus(p, big):
    p.box(p.accent, 9, 1, 5, 15, 1)
    p.box(p.accent, 4, 6, 15, 5, 1)
