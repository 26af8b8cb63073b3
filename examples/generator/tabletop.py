"""Scenes of turned things on a table: vessels and chess pieces."""

from .modelling import (
    Body,
    Row,
    box,
    extruded,
    join,
    lathe,
    quad_ring,
    shadow,
    soft_rows,
    tube,
)
from .paint import Paint, matte
from .polyhedra import ball, octahedron
from .scenefile import Scene

IVORY = Paint((1.0, 0.96, 0.84), (0.5, 0.33, 0.16), 0.6)
EBONY = Paint((0.66, 0.52, 0.44), (0.07, 0.03, 0.03), 0.33)


# ------------------------------------------------------------------------------------------ chess


def foot(radius):
    """The foot that all pieces share: a flat bottom, a bulge, a ledge."""
    return [
        Row(radius * 0.94, 0, True),
        *soft_rows((radius * 1.03, 0.014), (radius * 1.0, 0.034)),
        Row(radius * 0.8, 0.046, True),
        *soft_rows((radius * 0.62, 0.068)),
    ]


def pawn():
    rows = foot(0.078) + [
        *soft_rows((0.032, 0.11), (0.024, 0.17)),
        Row(0.05, 0.186, True),
        *soft_rows((0.026, 0.2), (0.05, 0.226), (0.056, 0.26), (0.036, 0.297), (0, 0.31)),
    ]
    return lathe(rows, 9)


def rook():
    rows = foot(0.088) + [
        *soft_rows((0.05, 0.1), (0.044, 0.2)),
        Row(0.062, 0.25, True),
        *soft_rows((0.066, 0.285)),
        Row(0.066, 0.32, True),
    ]
    tower = lathe(rows, 9)
    merlon = box(0.034, 0.042, 0.026).moved(0, 0.338, 0.049)
    return join([tower] + [merlon.turned("y", 60 * i) for i in range(6)])


def bishop():
    rows = foot(0.084) + [
        *soft_rows((0.038, 0.12), (0.027, 0.24)),
        Row(0.054, 0.262, True),
        *soft_rows((0.03, 0.28), (0.05, 0.315), (0.052, 0.35), (0.03, 0.41)),
        *soft_rows((0.013, 0.43), (0.02, 0.447), (0.012, 0.463), (0, 0.466)),
    ]
    return lathe(rows, 9)


def queen():
    rows = foot(0.092) + [
        *soft_rows((0.044, 0.13), (0.031, 0.29)),
        Row(0.062, 0.315, True),
        *soft_rows((0.036, 0.335), (0.042, 0.39)),
        Row(0.068, 0.455, True),
        *soft_rows((0.048, 0.452), (0.034, 0.475), (0, 0.478)),
    ]
    knob = octahedron().scaled(0.026)
    knobs = [knob.moved(0, 0.466, 0.06).turned("y", 60 * i) for i in range(6)]
    top = ball(0.024).moved(0, 0.492, 0)
    return join([lathe(rows, 9), top] + knobs)


def king():
    rows = foot(0.094) + [
        *soft_rows((0.046, 0.13), (0.033, 0.31)),
        Row(0.064, 0.335, True),
        *soft_rows((0.038, 0.355), (0.044, 0.41)),
        Row(0.064, 0.47, True),
        *soft_rows((0.05, 0.488), (0.02, 0.502), (0, 0.503)),
    ]
    a, b, c = 0.0085, 0.026, 0.03
    arms = [
        (-a, -c), (a, -c), (a, -a), (b, -a), (b, a), (a, a),
        (a, c), (-a, c), (-a, a), (-b, a), (-b, -a), (-a, -a),
    ]  # fmt: skip
    return lathe(rows, 9).joined(extruded(arms, 0.016).crisp().moved(0, 0.532, 0))


HORSE = [
    (0.05, 0.0), (0.053, 0.05), (0.04, 0.11), (0.028, 0.145), (0.06, 0.135), (0.092, 0.112),
    (0.112, 0.13), (0.108, 0.158), (0.075, 0.2), (0.045, 0.24), (0.036, 0.285), (0.012, 0.252),
    (-0.03, 0.225), (-0.062, 0.16), (-0.07, 0.09), (-0.062, 0.03), (-0.05, 0.0),
]  # fmt: skip
HORSE_CORNERS = (0, 3, 6, 10, 11, 16)


def knight():
    base = foot(0.086) + [Row(0.06, 0.09, True)]
    # Thick at the neck, thin at the ears and the muzzle.
    head = extruded(HORSE, 0.085, HORSE_CORNERS).mapped(
        lambda p: (p[0], p[1], p[2] * (1 - 1.6 * p[1] - 2.2 * max(0, p[0] - 0.03)))
    )
    return lathe(base, 9).joined(head.moved(-0.006, 0.085, 0))


def board(cells, cell, light, dark, edge):
    """A chess board about the origin, its squares on the plane y = 0, within a rim of `edge`."""
    n = cells + 1
    half = cells * cell / 2
    grid = [(-half + i * cell, 0.0, half - j * cell) for j in range(n) for i in range(n)]
    squares = [
        (j * n + i, j * n + i + 1, (j + 1) * n + i + 1, (j + 1) * n + i)
        for j in range(cells)
        for i in range(cells)
    ]
    # The rim's four trapezes have every point of the grid's border among their corners.
    border = [
        list(reversed(range(n))),
        [j * n + cells for j in reversed(range(n))],
        [cells * n + i for i in range(n)],
        [j * n for j in range(n)],
    ]
    outer, thickness = half + 0.03, 0.035
    square = [(-outer, outer), (outer, outer), (outer, -outer), (-outer, -outer)]
    top = len(grid)
    bottom = top + 4
    points = grid + [(x, y, z) for y in (0.0, -thickness) for x, z in square]
    rim = [(top + k, top + (k + 1) % 4, *border[k]) for k in range(4)]
    walls = quad_ring(bottom, top, 4)
    faces = squares + rim + walls + [tuple(range(bottom + 3, bottom - 1, -1))]

    def choose(number):
        if number >= cells * cells:
            return edge
        return light if (number // cells + number % cells) % 2 else dark

    return Body.of(points, faces).crisp().painted_by(choose)


def chess():
    cell = 0.2
    fields = (matte("f7e2b0", 1), matte("8f5029", 1))
    ground = board(3, cell, *fields, matte("6a3516"))
    pieces = {
        "white/king": (king, IVORY, 0, 1, 0),
        "white/knight": (knight, IVORY, 1, 0, 150),
        "white/pawn": (pawn, IVORY, 0, -1, 0),
        "black/queen": (queen, EBONY, 1, 1, 0),
        "black/rook": (rook, EBONY, -1, 1, 0),
        "black/bishop": (bishop, EBONY, -1, 0, 0),
        "black/pawn": (pawn, EBONY, 1, -1, 0),
    }
    scene = Scene()
    shadows = []
    for name, (maker, paint, i, j, turn) in pieces.items():
        x, z = i * cell, -j * cell
        scene.add(name, maker().painted(paint).turned("y", turn).moved(x, 0.002, z))
        field = fields[(i + j) % 2]
        shadows.append(shadow(0.086, 0.007, 28, field).moved(x, 0, z))  # on its own field
    scene.add("board", join([ground] + shadows))
    return scene.turned("y", 28).turned("x", 26).moved(0, -0.2, 0)


# ---------------------------------------------------------------------------------------- vessels


GOLD = Paint((1.0, 0.94, 0.6), (0.5, 0.23, 0.02), 0.45)
GLAZE = Paint((0.62, 0.86, 0.98), (0.02, 0.13, 0.4), 0.4)
CLAY = Paint((0.98, 0.66, 0.45), (0.38, 0.11, 0.06), 0.5)
CREAM = Paint((1.0, 0.97, 0.88), (0.45, 0.4, 0.42), 0.6)


def goblet():
    """A cup on a stem: sharp at the foot, at the knot of the stem and at the lip."""
    rows = [
        Row(0.105, 0.0, True),
        *soft_rows((0.108, 0.012)),
        Row(0.1, 0.022, True),
        *soft_rows((0.05, 0.04), (0.022, 0.09), (0.016, 0.14)),
        Row(0.034, 0.162, True),
        *soft_rows((0.02, 0.18), (0.03, 0.205), (0.085, 0.235), (0.122, 0.3), (0.124, 0.38)),
        Row(0.112, 0.46, True),
        *soft_rows((0.105, 0.463)),
        Row(0.1, 0.46, True),
        *soft_rows((0.112, 0.38), (0.108, 0.3), (0.06, 0.25), (0, 0.243)),
    ]
    return lathe(rows, 12)


def amphora():
    """A jar with two handles."""
    rows = [
        Row(0.07, 0.0, True),
        *soft_rows((0.06, 0.022)),
        Row(0.1, 0.07, True, GLAZE),
        *soft_rows((0.152, 0.16), (0.158, 0.27)),
        Row(0.114, 0.36, True, CREAM),
        *soft_rows((0.085, 0.386)),
        Row(0.064, 0.415, True, GLAZE),
        *soft_rows((0.054, 0.46), (0.062, 0.51)),
        Row(0.086, 0.545, True, CREAM),
        *soft_rows((0.08, 0.55)),
        Row(0.072, 0.545, True),
        *soft_rows((0.048, 0.5), (0.04, 0.42), (0, 0.41)),
    ]
    body = lathe(rows, 12, GLAZE)
    bow = [
        (0.048, 0.498, 0.0), (0.1, 0.51, 0.0), (0.15, 0.478, 0.0),
        (0.166, 0.415, 0.0), (0.146, 0.35, 0.0), (0.11, 0.318, 0.0),
    ]  # fmt: skip
    handle = tube(bow, [0.016, 0.017, 0.017, 0.017, 0.017, 0.016], 6).painted(CREAM)
    return join([body, handle, handle.turned("y", 180)])


def bowl():
    rows = [
        Row(0.065, 0.0, True),
        *soft_rows((0.06, 0.02), (0.075, 0.035), (0.15, 0.075)),
        Row(0.185, 0.15, True),
        *soft_rows((0.18, 0.154)),
        Row(0.174, 0.15, True),
        *soft_rows((0.142, 0.09), (0.08, 0.052), (0, 0.046)),
    ]
    return lathe(rows, 12, CLAY)


def vessels():
    scene = Scene()
    stone = matte("d9c9b4")
    plinth = lathe(
        [
            Row(0.4, -0.05, True),
            *soft_rows((0.406, -0.03)),
            Row(0.4, 0.0, True),
            Row(0.2, 0.0),
        ],
        18,
        stone,
    )
    things = {
        "goblet": (goblet().painted(GOLD), -0.18, 0.13, 0.11),
        "amphora": (amphora(), -0.01, -0.16, 0.1),
        "bowl": (bowl(), 0.175, 0.13, 0.11),
    }
    shadows = [plinth]
    for name, (body, x, z, radius) in things.items():
        scene.add(name, body.moved(x, 0.001, z))
        shadows.append(shadow(radius, 0.09, 25, stone).moved(x, 0, z))
    scene.add("plinth", join(shadows))
    return scene.turned("y", 12).turned("x", 24).moved(0, -0.22, 0)
