"""The regular and the half-regular bodies, on the unit sphere, and balls made from them."""

import math

from .modelling import Body
from .vectors import cross, dot, mean, minus, plus, times, unit

GOLDEN = (1 + math.sqrt(5)) / 2


def signed(point):
    """All points that differ from this one in signs only."""
    found = {()}
    for value in point:
        found = {head + (s * value,) for head in found for s in ((1, -1) if value else (1,))}
    return found


def even_orders(point):
    x, y, z = point
    return {(x, y, z), (y, z, x), (z, x, y)}


def odd_orders(point):
    x, y, z = point
    return even_orders((y, x, z))


def all_orders(point):
    return even_orders(point) | odd_orders(point)


def minuses(point):
    return sum(value < 0 for value in point)


def uniform(points):
    """The convex body whose edges all join points at the least distance, on the unit sphere.

    A face is found at every two edges of one point that have the whole body on one side.
    """
    points = sorted(unit(point) for point in set(points))
    numbers = range(len(points))
    edge = min(math.dist(points[0], other) for other in points[1:])
    faces = {}
    for a in numbers:
        near = [b for b in numbers if b != a and math.dist(points[a], points[b]) < edge + 1e-4]
        for i, b in enumerate(near):
            for c in near[:i]:
                face = face_through(points, a, b, c)
                if face:
                    faces[frozenset(face)] = face
    return Body.of(points, [faces[key] for key in sorted(faces, key=sorted)])


def face_through(points, a, b, c):
    """The corners, in order, of the face in the plane of three points; None inside the body."""
    normal = unit(cross(minus(points[b], points[a]), minus(points[c], points[a])))
    if dot(normal, points[a]) < 0:
        normal = times(normal, -1)
    height = dot(normal, points[a])
    if any(dot(normal, point) > height + 1e-6 for point in points):
        return None
    corners = [i for i, point in enumerate(points) if dot(normal, point) > height - 1e-6]
    return in_order(points, corners, normal)


def in_order(points, corners, normal):
    """The corners counter-clockwise about their middle as seen against the normal."""
    middle = mean(points[corner] for corner in corners)
    u = unit(minus(points[corners[0]], middle))
    v = cross(normal, u)

    def angle(corner):
        spoke = minus(points[corner], middle)
        return math.atan2(dot(spoke, v), dot(spoke, u))

    return tuple(sorted(corners, key=angle))


def tetrahedron():
    return uniform(p for p in signed((1, 1, 1)) if minuses(p) % 2 == 0)


def cube():
    return uniform(signed((1, 1, 1)))


def octahedron():
    return uniform(q for p in signed((0, 0, 1)) for q in even_orders(p))


def dodecahedron():
    ring = {q for p in signed((0, 1 / GOLDEN, GOLDEN)) for q in even_orders(p)}
    return uniform(ring | signed((1, 1, 1)))


def icosahedron():
    return uniform(q for p in signed((0, 1, GOLDEN)) for q in even_orders(p))


def archimedeans():
    """The thirteen bodies whose faces are regular and whose corners are all alike, by name."""
    f, r = GOLDEN, math.sqrt(2)
    even = {
        "icosidodecahedron": [(0, 0, 2 * f), (1, f, f * f)],
        "truncated-dodecahedron": [(0, 1 / f, 2 + f), (1 / f, f, 2 * f), (f, 2, f + 1)],
        "truncated-icosahedron": [(0, 1, 3 * f), (1, 2 + f, 2 * f), (f, 2, 2 * f + 1)],
        "rhombicosidodecahedron": [(1, 1, f**3), (f * f, f, 2 * f), (2 + f, 0, f * f)],
        "truncated-icosidodecahedron": [
            (1 / f, 1 / f, 3 + f),
            (2 / f, f, 1 + 2 * f),
            (1 / f, f * f, 3 * f - 1),
            (2 * f - 1, 2, 2 + f),
            (f, 3, 2 * f),
        ],
    }
    every = {
        "cuboctahedron": (1, 1, 0),
        "truncated-cube": (r - 1, 1, 1),
        "truncated-octahedron": (0, 1, 2),
        "rhombicuboctahedron": (1, 1, 1 + r),
        "truncated-cuboctahedron": (1, 1 + r, 1 + 2 * r),
    }
    bodies = {
        name: uniform({q for seed in seeds for p in signed(seed) for q in even_orders(p)})
        for name, seeds in even.items()
    }
    for name, seed in every.items():
        bodies[name] = uniform({q for p in signed(seed) for q in all_orders(p)})
    bodies["truncated-tetrahedron"] = uniform(
        q for p in signed((3, 1, 1)) if minuses(p) % 2 == 0 for q in all_orders(p)
    )
    bodies["snub-cube"] = snub_cube()
    bodies["snub-dodecahedron"] = snub_dodecahedron()
    return bodies


def real_root(function, low, high):
    for _ in range(80):
        middle = (low + high) / 2
        if (function(low) > 0) == (function(middle) > 0):
            low = middle
        else:
            high = middle
    return low


def snub_cube():
    t = real_root(lambda x: x**3 - x * x - x - 1, 1, 2)
    points = set()
    for p in signed((1, 1 / t, t)):
        points |= even_orders(p) if minuses(p) % 2 == 1 else odd_orders(p)
    return uniform(points)


def snub_dodecahedron():
    f = GOLDEN
    x = real_root(lambda value: value**3 - 2 * value - f, 1, 2)
    a, b = x - 1 / x, x * f + f * f + f / x
    seeds = [
        (2 * a, 2, 2 * b),
        (a + b / f + f, -a * f + b + 1 / f, a / f + b * f - 1),
        (a + b / f - f, a * f - b + 1 / f, a / f + b * f + 1),
        (-a / f + b * f + 1, -a + b / f - f, a * f + b - 1 / f),
        (-a / f + b * f - 1, a - b / f - f, a * f + b + 1 / f),
    ]
    signs = [s for s in signed((1, 1, 1)) if minuses(s) % 2 == 1]
    points = set()
    for seed in seeds:
        for sign in signs:
            points |= even_orders(tuple(v * s for v, s in zip(seed, sign)))
    return uniform(points)


def ball(radius):
    """A soft ball from an icosahedron; smoothing draws the points in and is made up for."""
    return icosahedron().scaled(radius * 1.22)


def quartered(body):
    """Every triangle of a body on the unit sphere cut into four, the new points on the sphere."""
    points, faces, halves = list(body.points), [], {}

    def half(a, b):
        key = (min(a, b), max(a, b))
        if key not in halves:
            halves[key] = len(points)
            points.append(unit(plus(points[a], points[b])))
        return halves[key]

    for side in body.sides:
        a, b, c = side.corners
        ab, bc, ca = half(a, b), half(b, c), half(c, a)
        faces += [(a, ab, ca), (ab, b, bc), (ca, bc, c), (ab, bc, ca)]
    return Body.of(points, faces)
