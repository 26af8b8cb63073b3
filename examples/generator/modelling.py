"""Bodies for the example scenes: points, and the sides spanned between them.

A Body is closed and its sides run counter-clockwise seen from outside; only what `sheet` makes is
open. Bodies are never changed once made: every method answers with a new one, so that a part may
be built once and placed many times. Lengths are those of the scene file, angles are degrees.

The program smooths what it shows. A point that is not marked melts into the surface around it; a
row of marked points, whose marked neighbours are just two, is kept as a sharp but curving rim; a
marked point with any other number of marked neighbours stays where it is.
"""

import math
from dataclasses import dataclass, replace

from .paint import Paint, laid, matte
from .vectors import cross, dot, mean, minus, plus, times, turned_point, unit

# Which faces of a side are drawn.
FRONT = 1
BACK = 2
BOTH = FRONT | BACK
NONE = 0

# ------------------------------------------------------------------------------------------- body


@dataclass(frozen=True)
class Side:
    """One polygon: its corners as numbers of points, its two looks, and which of them is drawn."""

    corners: tuple
    front: Paint
    back: Paint
    visibility: int = FRONT

    def edges(self):
        """The pairs of neighbouring corners, in the direction in which the side walks them."""
        return list(zip(self.corners, self.corners[1:] + self.corners[:1]))


PLAIN = matte("b8bcc4")


class Body:
    """Points, sides, and the set of the points that are marked."""

    def __init__(self, points, sides, marked=()):
        self.points = [tuple(point) for point in points]
        self.sides = list(sides)
        self.marked = frozenset(marked)

    @staticmethod
    def of(points, faces, marked=()):
        """A body of plain grey faces, each given as the numbers of its corners."""
        return Body(points, [Side(tuple(face), PLAIN, PLAIN) for face in faces], marked)

    # Placing

    def mapped(self, change):
        return Body([change(point) for point in self.points], self.sides, self.marked)

    def moved(self, x, y, z):
        return self.mapped(lambda point: plus(point, (x, y, z)))

    def turned(self, axis, degrees):
        return self.mapped(lambda point: turned_point(point, axis, degrees))

    def scaled(self, x, y=None, z=None):
        """Larger or smaller, along each axis by its own factor when three are given."""
        factors = (x, x if y is None else y, x if z is None else z)
        assert min(factors) > 0, "a mirrored body would be inside out"
        return self.mapped(lambda point: tuple(p * f for p, f in zip(point, factors)))

    def mirrored(self):
        """The mirror image across the plane x = 0; the sides are reversed to stay outside."""
        sides = [replace(side, corners=side.corners[::-1]) for side in self.sides]
        return Body([(-x, y, z) for x, y, z in self.points], sides, self.marked)

    def joined(self, *others):
        """One body of several that need not touch."""
        points, sides, marked = list(self.points), list(self.sides), set(self.marked)
        for other in others:
            first = len(points)
            points += other.points
            marked |= {first + point for point in other.marked}
            sides += [
                replace(side, corners=tuple(first + corner for corner in side.corners))
                for side in other.sides
            ]
        return Body(points, sides, marked)

    # Looks

    def painted(self, paint, back=None, visibility=None):
        """Every side in one paint; the back of a side looks like its front unless said."""
        return self.painted_by(lambda _: paint, back, visibility)

    def painted_by(self, choose, back=None, visibility=None):
        """Every side in the paint that choose(side number) answers; None leaves it as it is."""
        sides = []
        for number, side in enumerate(self.sides):
            paint = choose(number) or side.front
            sides.append(
                Side(
                    side.corners,
                    paint,
                    back or paint,
                    side.visibility if visibility is None else visibility,
                )
            )
        return Body(self.points, sides, self.marked)

    # Smoothing

    def crisp(self):
        """Every point marked: flat sides stay flat and straight edges sharp."""
        return Body(self.points, self.sides, range(len(self.points)))

    def soft(self):
        """No point marked: all edges melt."""
        return Body(self.points, self.sides)

    # Measuring

    def corners_of(self, side):
        return [self.points[corner] for corner in side.corners]

    def middle_of(self, number):
        return mean(self.corners_of(self.sides[number]))

    def normal_of(self, number):
        return unit(area_normal(self.corners_of(self.sides[number])))

    def back_to_front(self):
        """The sides from the farthest to the nearest, the order in which clear ones blend."""
        order = sorted(range(len(self.sides)), key=lambda number: self.middle_of(number)[2])
        return Body(self.points, [self.sides[number] for number in order], self.marked)


def area_normal(polygon):
    """Twice the area of a polygon as a vector along its normal."""
    total = (0.0, 0.0, 0.0)
    for a, b in zip(polygon, polygon[1:] + polygon[:1]):
        total = plus(total, cross(a, b))
    return total


def join(bodies):
    first, *others = bodies
    return first.joined(*others)


# ---------------------------------------------------------------------------------- flat outlines


def circle(radius, corners, start=0.0):
    """A regular polygon, counter-clockwise; `start` turns its first corner away from the x axis."""
    angles = [math.radians(start + 360 * i / corners) for i in range(corners)]
    return [(radius * math.cos(angle), radius * math.sin(angle)) for angle in angles]


# ------------------------------------------------------------------------------------ solid makers


def box(width, height, depth):
    """A crisp box about the origin."""
    x, y, z = width / 2, height / 2, depth / 2
    return extruded([(-x, -y), (x, -y), (x, y), (-x, y)], 2 * z).crisp()


def extruded(outline, depth, corners=None):
    """An outline (counter-clockwise) in the x-y plane given thickness along z, about z = 0.

    Without `corners` nothing is marked: make it `crisp`, or leave it soft. With `corners`, the
    places of the outline that stay sharp, both rims are creases, a middle row lets the wall curve
    between them, and the wall keeps an edge only at those places.
    """
    n = len(outline)
    levels = [-depth / 2, depth / 2] if corners is None else [-depth / 2, 0.0, depth / 2]
    points = [(x, y, z) for z in levels for x, y in outline]
    top = (len(levels) - 1) * n
    faces = [tuple(range(n - 1, -1, -1)), tuple(range(top, top + n))]
    for row in range(len(levels) - 1):
        faces += quad_ring(row * n, (row + 1) * n, n)
    if corners is None:
        return Body.of(points, faces)
    marked = set(range(n)) | {2 * n + i for i in range(n)} | {n + i for i in corners}
    return Body.of(points, faces, marked)


def quad_ring(low, high, n):
    """The quads between two rings of n points that run alike, the second ring above the first."""
    return [(low + i, low + (i + 1) % n, high + (i + 1) % n, high + i) for i in range(n)]


@dataclass(frozen=True)
class Row:
    """One ring of a lathe: how far from the axis, how high, and whether it is a sharp rim."""

    radius: float
    height: float
    sharp: bool = False
    paint: Paint = None  # of the band that begins at this ring


def lathe(rows, columns, paint=PLAIN, arcs=3):
    """A body turned about the y axis. The rows run up the outside; those of a vessel turn at its
    rim and run down the inside. A radius of 0 gives a pole, any other end a flat lid.

    A side spans a whole arc of its band. Where more than two sides meet on a sharp row the light
    breaks a little, and so there are few such points. For the same reason there is a soft row
    between any two sharp ones: without it every upright edge between them would have two marked
    ends and show as a ridge.
    """
    assert columns % arcs == 0
    rows = spaced(rows)
    points, rings = [], []
    for row in rows:
        rings.append((len(points), 1 if row.radius == 0 else columns))
        points += ring_points(row, columns)
    sides = []
    if rows[0].radius:
        sides.append((tuple(range(columns)), rows[0].paint or paint))
    for row, low, high in zip(rows, rings, rings[1:]):
        paint = row.paint or paint
        sides += [(face, paint) for face in band(low, high, columns, columns // arcs)]
    if rows[-1].radius:
        first = rings[-1][0]
        sides.append((tuple(range(first + columns - 1, first - 1, -1)), rows[-1].paint or paint))
    marked = [
        first + i for row, (first, size) in zip(rows, rings) if row.sharp for i in range(size)
    ]
    return Body(points, [Side(face, look, look) for face, look in sides], marked)


def spaced(rows):
    """The rows with a soft one between any two sharp neighbours."""
    out = [rows[0]]
    for row in rows[1:]:
        before = out[-1]
        if before.sharp and row.sharp:
            middle = mean([(before.radius, before.height), (row.radius, row.height)])
            out.append(Row(*middle))
        out.append(row)
    return out


def ring_points(row, columns):
    if row.radius == 0:
        return [(0.0, row.height, 0.0)]
    return [(x, row.height, z) for x, z in circle(row.radius, columns)]


def band(low, high, columns, arc):
    """The sides between two rings, each ring given by its first point and its size (1 at a pole);
    each side spans `arc` columns, but at a pole, where three corners are enough, only one."""
    (a, asize), (b, bsize) = low, high
    if 1 in (asize, bsize):
        arc = 1
    faces = []
    for start in range(0, columns, arc):
        steps = range(start, start + arc + 1)
        lower = [a + i % asize for i in steps]
        upper = [b + i % bsize for i in steps]
        face = upper + lower[::-1]
        faces.append(tuple(dict.fromkeys(face)))
    return faces


def soft_rows(*pairs, paint=None):
    """Rows of a lathe without a rim among them, from (radius, height) pairs."""
    return [Row(radius, height, False, paint) for radius, height in pairs]


def tube(path, radius, corners, closed=False):
    """A soft tube along a path; `radius` is a number or one number for each point of the path.

    The cross-section is carried along without twisting; a closed path spreads evenly over its
    length the turn that is left when it comes home.
    """
    count = len(path)
    radii = [radius] * count if isinstance(radius, (int, float)) else radius
    frames = carried_frames(path, closed)
    points = []
    for centre, size, (u, v) in zip(path, radii, frames):
        for x, y in circle(size, corners):
            points.append(plus(centre, plus(times(u, x), times(v, y))))
    faces = []
    for i in range(count if closed else count - 1):
        faces += quad_ring(i * corners, (i + 1) % count * corners, corners)
    if not closed:
        last = (count - 1) * corners
        faces.append(tuple(range(corners - 1, -1, -1)))
        faces.append(tuple(range(last, last + corners)))
    return Body.of(points, faces)


def tangent(path, i, closed):
    count = len(path)
    if closed:
        return unit(minus(path[(i + 1) % count], path[i - 1]))
    return unit(minus(path[min(i + 1, count - 1)], path[max(i - 1, 0)]))


def carried_frames(path, closed):
    """For every point of a path two directions across it, as little turned as may be."""
    along = tangent(path, 0, closed)
    across = min(((1, 0, 0), (0, 1, 0), (0, 0, 1)), key=lambda axis: abs(dot(axis, along)))
    across = unit(minus(across, times(along, dot(across, along))))
    start, firsts = across, []
    for i in range(len(path)):
        along = tangent(path, i, closed)
        across = unit(minus(across, times(along, dot(across, along))))
        firsts.append((across, along))
    excess = 0.0
    if closed:
        along = tangent(path, 0, closed)
        home = unit(minus(across, times(along, dot(across, along))))
        excess = math.atan2(dot(cross(start, home), along), dot(start, home))
    frames = []
    for i, (u, along) in enumerate(firsts):
        v = cross(along, u)
        turn = -excess * i / len(path)
        c, s = math.cos(turn), math.sin(turn)
        frames.append((plus(times(u, c), times(v, s)), plus(times(v, c), times(u, -s))))
    return frames


def carried(point, start, end):
    """A point turned as the shortest way from one unit vector to another goes."""
    axis = cross(start, end)
    once = cross(axis, point)
    twice = times(cross(axis, once), 1 / (1 + dot(start, end)))
    return plus(point, plus(once, twice))


def bridged(body, start, end, path):
    """A body with a handle between two of its sides, which have as many corners: copies of the one
    stand across the path, which runs from its middle to the middle of the other."""
    first, last = body.sides[start], body.sides[end]
    normal, middle = body.normal_of(start), body.middle_of(start)
    count = len(first.corners)
    points, rings = list(body.points), [first.corners[::-1]]
    for i in range(1, len(path) - 1):
        along = tangent(path, i, False)
        ring = [minus(points[corner], middle) for corner in rings[0]]
        rings.append(tuple(range(len(points), len(points) + count)))
        points += [plus(path[i], carried(point, normal, along)) for point in ring]

    def distance(ring):
        return sum(math.dist(points[a], points[b]) for a, b in zip(rings[-1], ring))

    rings.append(min((last.corners[k:] + last.corners[:k] for k in range(count)), key=distance))
    walls = []
    for low, high in zip(rings, rings[1:]):
        corners = [(low[k], low[k - 1], high[k - 1], high[k]) for k in range(count)]
        walls += [replace(first, corners=wall) for wall in corners]
    sides = [side for number, side in enumerate(body.sides) if number not in (start, end)]
    return Body(points, sides + walls, body.marked)


def sheet(outline):
    """One side that is seen from both of its faces. The program lets its border run smoothly
    through the given points; a corner stays where a marked point stands between unmarked ones."""
    return Body(outline, [Side(tuple(range(len(outline))), PLAIN, PLAIN, BOTH)])


def patch(outline):
    """A spot to lie on a surface: a polygon and, unseen, its own back, so that it is closed."""
    n = len(outline)
    up = Side(tuple(range(n)), PLAIN, PLAIN, FRONT)
    down = Side(tuple(range(n - 1, -1, -1)), PLAIN, PLAIN, NONE)
    return Body(outline, [up, down], range(n))


def shadow(radius, length, direction, ground):
    """The shadow that a thing throws on the ground y = 0 it stands on, which has the paint `ground`:
    a dark patch, to be joined to the ground. It grows out by `length` from under the thing;
    direction 0 is along x, 90 away from us."""
    dark = laid(Paint((0.02, 0.01, 0.06), (0.02, 0.01, 0.06), 1.0, (0.3, 0.3)), ground)
    ring = [(x + max(0.0, length * x / radius), y) for x, y in circle(radius * 1.06, 10)]
    spot = patch([(x, 0.0015, -y) for x, y in ring])
    return spot.painted(dark).turned("y", direction)
