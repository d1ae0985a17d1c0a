#!/usr/bin/env python3
"""Draws the SVG sources of the skin package's pictures into resources/skin/pictures/.

The SVG files are the sources the build renders (cmake/KxSkinPictures.cmake); this script is how
they were drawn, so that all of them share one palette, one stroke and one light. Edit the drawing
here and run it again (python3 resources/skin/draw_pictures.py), then commit the SVG files.

Style: light from above (every surface a top-to-bottom gradient, a soft white gloss on the upper
half), a 1 px outline a shade darker than the fill, rounded joins. Music kinds are blue, picture
kinds green, video kinds violet, folders amber. A "new" picture carries a green plus badge at the
bottom right, a "rename" picture an orange pencil badge.

The bubble shapes follow the geometry of src/skin/bubble_shapes.h: the constants below must match
it, and the skin_pictures test checks the rendered pixels against that header.
"""
import math
import os

HERE = os.path.dirname(os.path.abspath(__file__))
OUT = os.path.join(HERE, "pictures")


class Svg:
    """One picture: its defs (gradients with ids unique in the file) and its body."""

    def __init__(self, width, height, view=None):
        self.width, self.height = width, height
        self.view = view or (width, height)
        self.defs, self.body, self.n = [], [], 0

    def grad(self, top, bottom, x1=0, y1=0, x2=0, y2=1):
        self.n += 1
        gid = "g%d" % self.n
        self.defs.append(
            '<linearGradient id="%s" x1="%g" y1="%g" x2="%g" y2="%g">'
            '<stop offset="0" stop-color="%s"/><stop offset="1" stop-color="%s"/></linearGradient>'
            % (gid, x1, y1, x2, y2, top, bottom))
        return "url(#%s)" % gid

    def radial(self, inner, outer, cx=0.5, cy=0.5, r=0.5):
        self.n += 1
        gid = "g%d" % self.n
        self.defs.append(
            '<radialGradient id="%s" cx="%g" cy="%g" r="%g">'
            '<stop offset="0" stop-color="%s"/><stop offset="1" stop-color="%s"/></radialGradient>'
            % (gid, cx, cy, r, inner, outer))
        return "url(#%s)" % gid

    def gloss(self):
        """A white gloss fading out downwards, for the upper half of a surface."""
        self.n += 1
        gid = "g%d" % self.n
        self.defs.append(
            '<linearGradient id="%s" x1="0" y1="0" x2="0" y2="1">'
            '<stop offset="0" stop-color="#fff" stop-opacity="0.55"/>'
            '<stop offset="1" stop-color="#fff" stop-opacity="0"/></linearGradient>' % gid)
        return "url(#%s)" % gid

    def add(self, text):
        self.body.append(text)

    def text(self):
        return ('<?xml version="1.0" encoding="UTF-8"?>\n'
                '<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d" viewBox="0 0 %g %g">\n'
                '<defs>%s</defs>\n%s\n</svg>\n'
                % (self.width, self.height, self.view[0], self.view[1], "".join(self.defs),
                   "\n".join(self.body)))


# Palette: (light, dark, outline) per family.
BLUE = ("#6fb3f2", "#2a6fc9", "#1d4f93")
GREEN = ("#8fd67a", "#3e9a38", "#2a6d27")
VIOLET = ("#b89af0", "#6a47c2", "#4a2f8f")
AMBER = ("#ffd978", "#eaa21c", "#a86d0b")
RED = ("#ff8a7a", "#d8332a", "#9c1f19")
SLATE = ("#7d8a99", "#3b4553", "#262d36")
PAPER = ("#ffffff", "#e6ebf1", "#8c98a6")
SILVER = ("#f4f6f9", "#b9c2cd", "#7d8896")
YELLOW = ("#ffe27a", "#f5b313", "#b07c00")

STROKE = 'stroke-width="1" stroke-linejoin="round" stroke-linecap="round"'


def surface(svg, shape, palette, gloss=True, extra=""):
    """A filled shape with the family's gradient and outline. shape: an SVG element name and its
    geometry attributes, e.g. 'rect x="1" y="2" width="3" height="4"'."""
    fill = svg.grad(palette[0], palette[1])
    svg.add('<%s fill="%s" stroke="%s" %s %s/>' % (shape, fill, palette[2], STROKE, extra))
    if gloss:
        svg.add('<%s fill="%s" stroke="none" %s/>' % (shape, svg.gloss(), extra))


# ---- music notes, people, small glyphs (drawn in a 48 x 48 space) ----

def note(svg, x, y, s=1.0, color="#fff", outline=None):
    """An eighth note whose head centre is at x, y; s scales it."""
    o = ' stroke="%s" stroke-width="%g"' % (outline, 0.8 / s) if outline else ""
    svg.add('<g transform="translate(%g %g) scale(%g)" fill="%s"%s>'
            '<ellipse cx="0" cy="0" rx="3.4" ry="2.6" transform="rotate(-20)"/>'
            '<path d="M2.4 -1 V-14 C5 -13 8 -11 8.5 -7.5 C7 -9.5 5 -10 4 -10 V-1 Z"/></g>'
            % (x, y, s, color, o))


def person(svg, cx, top, s, palette):
    """Head and shoulders; cx the centre line, top the top of the head."""
    g = '<g transform="translate(%g %g) scale(%g)">' % (cx, top, s)
    svg.add(g)
    surface(svg, 'path d="M-13 30 C-13 21 -7 17 0 17 C7 17 13 21 13 30 Z"', palette)
    surface(svg, 'circle cx="0" cy="8" r="7.5"', palette)
    svg.add('</g>')


def plus_badge(svg):
    surface(svg, 'circle cx="38" cy="38" r="8.5"', GREEN, gloss=False)
    svg.add('<circle cx="38" cy="38" r="7.5" fill="none" stroke="#fff" stroke-opacity="0.35"/>')
    svg.add('<path d="M38 33.2 V42.8 M33.2 38 H42.8" stroke="#fff" stroke-width="2.6" stroke-linecap="round"/>')


def pencil_badge(svg):
    surface(svg, 'circle cx="38" cy="38" r="8.5"', ("#ffb15c", "#e66a12", "#a84a0a"), gloss=False)
    svg.add('<circle cx="38" cy="38" r="7.5" fill="none" stroke="#fff" stroke-opacity="0.35"/>')
    # a pencil lying from bottom left to top right: tip, wooden cone, body, eraser
    svg.add('<g transform="rotate(-45 38 38)">'
            '<path d="M32.2 38 L34.6 36.4 H42.4 V39.6 H34.6 Z" fill="#fff"/>'
            '<path d="M32.2 38 L33.4 37.2 V38.8 Z" fill="#5a3a1a"/>'
            '<rect x="42.8" y="36.4" width="1.8" height="3.2" rx="0.6" fill="#ffd9c0"/></g>')


# ---- the fourteen kinds of name ----

def album(svg):
    disc = svg.grad(SILVER[0], SILVER[1], 0, 0, 1, 1)
    svg.add('<circle cx="27" cy="22" r="15.5" fill="%s" stroke="%s" %s/>' % (disc, SILVER[2], STROKE))
    svg.add('<circle cx="27" cy="22" r="10" fill="none" stroke="#fff" stroke-opacity="0.7"/>')
    svg.add('<circle cx="27" cy="22" r="3.2" fill="#fff" stroke="%s" %s/>' % (SILVER[2], STROKE))
    surface(svg, 'rect x="4.5" y="8.5" width="26" height="29" rx="2"', BLUE)
    note(svg, 15.5, 29, 1.05)


def artist(svg):
    person(svg, 18, 6.5, 1.0, BLUE)
    note(svg, 33, 22, 1.0, BLUE[1], outline="#fff")


def tag(svg, palette):
    surface(svg, 'path d="M6.5 8.5 H24 L40.5 25 L24.5 41 L6.5 23 Z"', palette)
    svg.add('<circle cx="13" cy="15" r="2.6" fill="#fff" stroke="%s" %s/>' % (palette[2], STROKE))


def genre(svg):
    tag(svg, BLUE)
    note(svg, 19, 29, 0.95)


def folder(svg):
    back = svg.grad("#f3b845", "#d98c12")
    svg.add('<path d="M4.5 11 Q4.5 8.5 7 8.5 H17 L21 12.5 H39 Q41.5 12.5 41.5 15 V37.5 H4.5 Z" '
            'fill="%s" stroke="%s" %s/>' % (back, AMBER[2], STROKE))
    svg.add('<rect x="8" y="15.5" width="30" height="10" rx="1" fill="#fffdf6" stroke="#d9cdb0" stroke-width="0.8"/>')
    surface(svg, 'path d="M3.5 19.5 H42.5 L40.5 37.5 Q40.3 39.5 38.5 39.5 H7.5 Q5.7 39.5 5.5 37.5 Z"', AMBER)


def playlist(svg):
    surface(svg, 'rect x="5.5" y="4.5" width="26" height="34" rx="2"', PAPER)
    for i, y in enumerate((11, 17, 23, 29)):
        svg.add('<circle cx="10.5" cy="%g" r="1.3" fill="%s"/>' % (y, BLUE[1]))
        svg.add('<path d="M14 %g H%g" stroke="#9aa6b4" stroke-width="1.6" stroke-linecap="round"/>'
                % (y, 27 if i % 2 == 0 else 23))
    note(svg, 33, 25, 1.25, BLUE[1], outline="#fff")


def photo(svg, x, y, w, h, angle=0):
    """A photo print: white border, sky, sun and two hills."""
    svg.add('<g transform="rotate(%g %g %g)">' % (angle, x + w / 2, y + h / 2))
    surface(svg, 'rect x="%g" y="%g" width="%g" height="%g" rx="1.5"' % (x, y, w, h), PAPER, gloss=False)
    sky = svg.grad("#8fd0ff", "#d8f0ff")
    ix, iy, iw, ih = x + 2.5, y + 2.5, w - 5, h - 5
    svg.add('<rect x="%g" y="%g" width="%g" height="%g" fill="%s"/>' % (ix, iy, iw, ih, sky))
    svg.add('<circle cx="%g" cy="%g" r="%g" fill="#ffd54a"/>' % (ix + iw * 0.75, iy + ih * 0.3, ih * 0.13))
    hill = svg.grad(GREEN[0], GREEN[1])
    svg.add('<path d="M%g %g L%g %g L%g %g L%g %g L%g %g V%g H%g Z" fill="%s"/>'
            % (ix, iy + ih * 0.75, ix + iw * 0.32, iy + ih * 0.42, ix + iw * 0.55, iy + ih * 0.7,
               ix + iw * 0.72, iy + ih * 0.55, ix + iw, iy + ih * 0.8, iy + ih, ix, hill))
    svg.add('</g>')


def slideshow(svg):
    photo(svg, 5.5, 5.5, 28, 22, -8)
    photo(svg, 11.5, 13.5, 30, 23)
    svg.add('<circle cx="26.5" cy="25" r="6" fill="#000" fill-opacity="0.35"/>')
    svg.add('<path d="M24.6 21.8 L30 25 L24.6 28.2 Z" fill="#fff"/>')


def year(svg):
    surface(svg, 'rect x="5.5" y="8.5" width="35" height="32" rx="3"', PAPER)
    head = svg.grad(GREEN[0], GREEN[1])
    svg.add('<path d="M5.5 17.5 V11.5 Q5.5 8.5 8.5 8.5 H37.5 Q40.5 8.5 40.5 11.5 V17.5 Z" fill="%s" '
            'stroke="%s" %s/>' % (head, GREEN[2], STROKE))
    for x in (13, 33):
        svg.add('<rect x="%g" y="5" width="3" height="7" rx="1.5" fill="#5d6b7a"/>' % (x - 1.5))
    for row in range(3):
        for col in range(5):
            if row == 2 and col > 2:
                continue
            svg.add('<rect x="%g" y="%g" width="4" height="4" rx="0.8" fill="%s"/>'
                    % (9.5 + col * 5.8, 21 + row * 6, GREEN[1] if (row, col) == (1, 2) else "#aab6c4"))


def people(svg):
    person(svg, 29, 5.5, 0.9, ("#7fd6c4", "#2a9a86", "#1d6b5d"))
    person(svg, 17, 9.5, 1.0, GREEN)


def event(svg):
    svg.add('<path d="M16 27 Q18 33 15 38 Q12 42 16 45" fill="none" stroke="#7d8896" stroke-width="1"/>')
    svg.add('<path d="M29 24 Q27 31 30 36 Q32 40 28 45" fill="none" stroke="#7d8896" stroke-width="1"/>')
    surface(svg, 'path d="M29 4.5 C36.5 4.5 39.5 10 39 15 C38.5 20 33.5 24 29 24 C24.5 24 19.5 20 19 15 '
                 'C18.5 10 21.5 4.5 29 4.5 Z"', ("#ffe27a", "#f0a818", "#b07c00"))
    surface(svg, 'path d="M16 8.5 C23.5 8.5 26.5 14 26 19 C25.5 24 20.5 28 16 28 C11.5 28 6.5 24 6 19 '
                 'C5.5 14 8.5 8.5 16 8.5 Z"', GREEN)
    svg.add('<path d="M14.5 28 L16 30 L17.5 28 Z" fill="%s"/>' % GREEN[2])
    svg.add('<path d="M27.5 24 L29 26 L30.5 24 Z" fill="%s"/>' % "#b07c00")


def place(svg):
    svg.add('<ellipse cx="23" cy="41" rx="10" ry="3" fill="#000" fill-opacity="0.18"/>')
    surface(svg, 'path d="M23 41 C18 33 10 27 10 17.5 C10 10 16 4.5 23 4.5 C30 4.5 36 10 36 17.5 '
                 'C36 27 28 33 23 41 Z"', GREEN)
    svg.add('<circle cx="23" cy="17.5" r="5.2" fill="#fff" stroke="%s" %s/>' % (GREEN[2], STROKE))


def director(svg):
    surface(svg, 'rect x="5.5" y="17.5" width="34" height="22" rx="2"', VIOLET)
    svg.add('<g transform="rotate(-14 6 16)">')
    surface(svg, 'rect x="5.5" y="9.5" width="34" height="7" rx="1"', SLATE, gloss=False)
    for x in (10, 18, 26, 34):
        svg.add('<path d="M%g 10 L%g 16 H%g L%g 10 Z" fill="#fff"/>' % (x, x - 3, x - 0.5, x + 2.5))
    svg.add('</g>')
    svg.add('<rect x="5.5" y="17.5" width="34" height="5" fill="%s"/>' % SLATE[1])
    for x in (10, 18, 26, 34):
        svg.add('<path d="M%g 17.5 L%g 22.5 H%g L%g 17.5 Z" fill="#fff"/>' % (x, x - 3, x - 0.5, x + 2.5))
    svg.add('<path d="M11 29 H28 M11 34 H22" stroke="#fff" stroke-opacity="0.85" stroke-width="2" '
            'stroke-linecap="round"/>')


def film_strip(svg, x, y, w, h, k=1.0):
    """A strip of film with one frame; k scales the sprocket holes and the bands that hold them."""
    surface(svg, 'rect x="%g" y="%g" width="%g" height="%g" rx="%g"' % (x, y, w, h, 1.5 * k), SLATE, gloss=False)
    pitch, band = 5 * k, 5 * k
    n = int((w - 2 * k) // pitch)
    left = x + (w - n * pitch) / 2 + 1.2 * k
    for i in range(n):
        for yy in (y + 1.5 * k, y + h - 4 * k):
            svg.add('<rect x="%g" y="%g" width="%g" height="%g" rx="%g" fill="#e9edf2"/>'
                    % (left + i * pitch, yy, 2.6 * k, 2.5 * k, 0.5 * k))
    frame = svg.grad(VIOLET[0], VIOLET[1])
    svg.add('<rect x="%g" y="%g" width="%g" height="%g" fill="%s"/>'
            % (x + 2 * k, y + band, w - 4 * k, h - 2 * band, frame))
    svg.add('<rect x="%g" y="%g" width="%g" height="%g" fill="%s"/>'
            % (x + 2 * k, y + band, w - 4 * k, (h - 2 * band) / 2, svg.gloss()))


def video_cast(svg):
    film_strip(svg, 3.5, 6.5, 38, 20)
    person(svg, 24, 13.5, 0.95, VIOLET)


def producer(svg):
    surface(svg, 'circle cx="22" cy="22" r="17.5"', VIOLET)
    for i in range(6):
        a = math.radians(i * 60 - 90)
        svg.add('<circle cx="%.2f" cy="%.2f" r="4.2" fill="#f4f1fb" stroke="%s" %s/>'
                % (22 + 10 * math.cos(a), 22 + 10 * math.sin(a), VIOLET[2], STROKE))
    svg.add('<circle cx="22" cy="22" r="2.4" fill="%s"/>' % VIOLET[2])
    svg.add('<path d="M22 39.5 C30 42 38 42 44 39" fill="none" stroke="%s" stroke-width="3" '
            'stroke-linecap="round"/>' % SLATE[1])


def video_genre(svg):
    tag(svg, VIOLET)
    svg.add('<path d="M15.5 19.5 L25 25.5 L15.5 31.5 Z" fill="#fff" stroke="#fff" %s/>' % STROKE)


KINDS = [
    ("Album", album), ("Artist", artist), ("Genre", genre), ("Folder", folder),
    ("Playlist", playlist), ("Slideshow", slideshow), ("Year", year), ("People", people),
    ("Event", event), ("Place", place), ("Director", director), ("Video Cast", video_cast),
    ("Producer", producer), ("Video Genre", video_genre),
]


# ---- the message pictures (drawn in a 32 x 32 space) ----

def sign_error(svg):
    surface(svg, 'circle cx="16" cy="16" r="14.5"', RED)
    svg.add('<path d="M11 11 L21 21 M21 11 L11 21" stroke="#fff" stroke-width="3.4" stroke-linecap="round"/>')


def sign_warning(svg):
    surface(svg, 'path d="M16 2.5 C17 2.5 17.6 3 18.2 4 L30.2 26 C31 27.6 30.2 29.5 28.3 29.5 H3.7 '
                 'C1.8 29.5 1 27.6 1.8 26 L13.8 4 C14.4 3 15 2.5 16 2.5 Z"', YELLOW)
    svg.add('<path d="M16 10.5 V19.5" stroke="#2b2b2b" stroke-width="3.4" stroke-linecap="round"/>')
    svg.add('<circle cx="16" cy="24.6" r="2" fill="#2b2b2b"/>')


def sign_info(svg):
    surface(svg, 'circle cx="16" cy="16" r="14.5"', BLUE)
    svg.add('<circle cx="16" cy="9" r="2.3" fill="#fff"/>')
    svg.add('<path d="M13 14 H16.6 V23.5 M13 23.8 H20" stroke="#fff" stroke-width="2.8" '
            'stroke-linecap="round" stroke-linejoin="round" fill="none"/>')


def sign_question(svg):
    surface(svg, 'circle cx="16" cy="16" r="14.5"', BLUE)
    svg.add('<path d="M11.6 12.2 C11.6 9.2 13.6 7.6 16.2 7.6 C18.9 7.6 20.6 9.3 20.6 11.6 '
            'C20.6 15.2 16.4 15.4 16.4 19" stroke="#fff" stroke-width="3" stroke-linecap="round" '
            'stroke-linejoin="round" fill="none"/>')
    svg.add('<circle cx="16.4" cy="23.9" r="2.1" fill="#fff"/>')


SIGNS = [("Criticalerror", sign_error), ("Exclamation", sign_warning),
         ("balloon Info", sign_info), ("Question Mark", sign_question)]


# ---- the speech bubbles ----
# Keep in step with src/skin/bubble_shapes.h.
BUBBLE_W, BUBBLE_H = 128, 120
POINT_H = 16        # height of the point above (or below) the body
RADIUS = 10         # corner radius of the body
TIP_LEFT = 6        # tip column from the left edge (point at the left)
TIP_RIGHT = 7       # tip column counted from the right edge: column W - 7
ICON_X = 28         # the sign, 32 x 32, sits beside the text, its top at the title's top
BUBBLE_FILL = ("#fffffa", "#fff4cc")
BUBBLE_LINE = "#a88a3c"


def bubble(svg, left, top, sign):
    """The outline is drawn half a pixel inside the picture's edge so that a 1 px line covers whole
    pixels: the body fills the picture from edge to edge, the point's tip is exactly one pixel."""
    W, H = BUBBLE_W, BUBBLE_H
    # geometry for a point at the top left; the other three are mirror images of it
    y0, x0, x1, y1 = POINT_H + 0.5, 0.5, W - 0.5, H - 0.5
    tip = TIP_LEFT + 0.5
    r = RADIUS

    def p(x, y):
        return "%g %g" % (x if left else W - x, y if top else H - y)

    sweep = 1 if left == top else 0
    arc = lambda x, y: "A%g %g 0 0 %d %s" % (r - 0.5, r - 0.5, sweep, p(x, y))
    d = " ".join([
        "M" + p(tip, 0.5),
        "C" + p(tip + 6, 5) + " " + p(tip + 14, 11) + " " + p(30, y0),
        "L" + p(x1 - r + 0.5, y0), arc(x1, y0 + r - 0.5),
        "L" + p(x1, y1 - r + 0.5), arc(x1 - r + 0.5, y1),
        "L" + p(x0 + r - 0.5, y1), arc(x0, y1 - r + 0.5),
        "L" + p(x0, y0 + r - 0.5), arc(x0 + r - 0.5, y0),
        "L" + p(16, y0),
        "C" + p(11, y0 - 6) + " " + p(tip, 6) + " " + p(tip, 0.5), "Z"])
    # the gradient follows the body, not the picture: lightest at the body's top edge
    body_from, body_to = (POINT_H / H, 1) if top else (0, (H - POINT_H) / H)
    fill = svg.grad(BUBBLE_FILL[0], BUBBLE_FILL[1], 0, body_from, 0, body_to)
    svg.add('<path d="%s" fill="%s" stroke="%s" stroke-width="1" stroke-linejoin="miter" '
            'stroke-miterlimit="10"/>' % (d, fill, BUBBLE_LINE))
    # a faint inner light line under the body's top edge
    ty = POINT_H + 1.5 if top else 1.5
    svg.add('<path d="M%g %g H%g" stroke="#fff" stroke-width="1"/>' % (r + 1, ty, W - r - 1))
    title_top = 24 if top else 8
    svg.add('<g transform="translate(%d %d)">' % (ICON_X, title_top))
    sign(svg)
    svg.add('</g>')


BUBBLE_SIGNS = [("E", sign_error), ("", sign_warning), ("I", sign_info)]
CORNERS = [("", True, True), ("LB", True, False), ("RT", False, True), ("BR", False, False)]


# ---- the larger pictures ----

def album_placeholder(svg):
    """Shown where an item has no album art: a record sleeve with a disc and a note."""
    surface(svg, 'rect x="4.5" y="4.5" width="119" height="119" rx="8"', ("#dfe8f3", "#a9bbd0", "#7488a0"))
    disc = svg.radial("#4a5563", "#161b22", 0.45, 0.4, 0.6)
    svg.add('<circle cx="64" cy="64" r="46" fill="%s" stroke="#0d1116" stroke-width="1"/>' % disc)
    for rr in (40, 34, 28):
        svg.add('<circle cx="64" cy="64" r="%d" fill="none" stroke="#fff" stroke-opacity="0.08"/>' % rr)
    svg.add('<path d="M34 40 A38 38 0 0 1 64 26" fill="none" stroke="#fff" stroke-opacity="0.35" '
            'stroke-width="3" stroke-linecap="round"/>')
    label = svg.grad(BLUE[0], BLUE[1])
    svg.add('<circle cx="64" cy="64" r="17" fill="%s" stroke="%s"/>' % (label, BLUE[2]))
    svg.add('<circle cx="64" cy="64" r="3" fill="#eef2f6"/>')
    svg.add('<g opacity="0.9">')
    note(svg, 58, 71, 0.75)
    svg.add('</g>')


def broken_photo(svg):
    """A picture that cannot be read: a faded photo torn in two, with the error sign."""
    tear = "L58 22 L66 44 L56 62 L64 82 L57 128"
    svg.defs.append('<clipPath id="left"><path d="M0 0 H62 %s H0 Z"/></clipPath>'
                    '<clipPath id="right"><path d="M128 0 H62 %s H128 Z"/></clipPath>'
                    '<clipPath id="print"><rect x="12.5" y="24.5" width="103" height="79"/></clipPath>' % (tear, tear))
    for clip, dx, angle in (("left", -4, -4), ("right", 4, 4)):
        svg.add('<g clip-path="url(#%s)"><g transform="translate(%d 0) rotate(%d 64 72)">' % (clip, dx, angle))
        photo(svg, 12, 24, 104, 80)
        svg.add('<rect x="12" y="24" width="104" height="80" fill="#f2f4f7" fill-opacity="0.45"/>')
        svg.add('<path d="M62 0 %s" fill="none" stroke="#8c98a6" stroke-width="1.2" '
                'clip-path="url(#print)"/>' % tear)
        svg.add('</g></g>')
    svg.add('<g transform="translate(80 76) scale(1.3)">')
    sign_error(svg)
    svg.add('</g>')


def video_placeholder(svg):
    """A video without a preview: a film frame with a play button."""
    film_strip(svg, 6.5, 20.5, 115, 87, 2.2)
    svg.add('<circle cx="64" cy="64" r="22" fill="#000" fill-opacity="0.28"/>')
    svg.add('<circle cx="64" cy="64" r="20" fill="none" stroke="#fff" stroke-width="3"/>')
    svg.add('<path d="M57 52 L78 64 L57 76 Z" fill="#fff" stroke="#fff" stroke-width="2" stroke-linejoin="round"/>')


def write(name, svg):
    with open(os.path.join(OUT, name + ".svg"), "w", encoding="utf-8") as f:
        f.write(svg.text())


def main():
    os.makedirs(OUT, exist_ok=True)
    for kind, draw in KINDS:
        for mode, badge in (("New", plus_badge), ("Rename", pencil_badge)):
            svg = Svg(48, 48)
            draw(svg)
            badge(svg)
            write("%s %s" % (mode, kind), svg)
    svg = Svg(36, 36, (48, 48))
    slideshow(svg)
    plus_badge(svg)
    write("Add New Slideshow", svg)
    for name, draw in SIGNS:
        svg = Svg(32, 32)
        draw(svg)
        write(name, svg)
    for prefix, sign in BUBBLE_SIGNS:
        for suffix, left, top in CORNERS:
            svg = Svg(BUBBLE_W, BUBBLE_H)
            bubble(svg, left, top, sign)
            write("%sSpeechBubble%s" % (prefix, suffix), svg)
    for name, draw in (("albumT", album_placeholder), ("Corrupted Photo Properties", broken_photo),
                       ("Video Properties", video_placeholder)):
        svg = Svg(128, 128)
        draw(svg)
        write(name, svg)


if __name__ == "__main__":
    main()
