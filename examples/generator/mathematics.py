"""Scenes of regular things: polyhedra, a knot, and a spiral of a hundred."""

import math

from .modelling import bridged, join, tube
from .paint import Paint, hue, matte, mixed, rgb, shiny
from .polyhedra import (
    archimedeans,
    cube,
    dodecahedron,
    icosahedron,
    octahedron,
    tetrahedron,
)
from .scenefile import Scene
from .vectors import times

FACE_PAINTS = {
    3: matte("f2b632"),
    4: matte("1f9e9a"),
    5: matte("e8604c"),
    6: matte("3f7fd0"),
    8: matte("7d5bc4"),
    10: matte("c2418a"),
}


def painted_by_corners(body):
    """Every face in the paint that belongs to its number of corners."""
    return body.painted_by(lambda number: FACE_PAINTS[len(body.sides[number].corners)])


def rod(start, end, thickness):
    """A thin crisp bar with three edges between two points."""
    return tube([start, end], thickness, 3).crisp()


def frame(body, thickness):
    """A rod along every edge of a body."""
    edges = {tuple(sorted(edge)) for side in body.sides for edge in side.edges()}
    return join([rod(body.points[a], body.points[b], thickness) for a, b in sorted(edges)])


def platonic():
    """The five regular bodies as frames of rods, and in each the same body without a marked point,
    which the program makes round."""
    places = {
        "tetrahedron": (tetrahedron, "e8503c", 0, 0.262, 0.175),
        "cube": (cube, "f5a623", -0.277, 0.07, 0.165),
        "octahedron": (octahedron, "4fb556", 0.277, 0.07, 0.165),
        "dodecahedron": (dodecahedron, "2f8fe0", -0.175, -0.265, 0.165),
        "icosahedron": (icosahedron, "a05fdc", 0.175, -0.265, 0.165),
    }
    scene = Scene()
    for name, (maker, colour, x, y, size) in places.items():
        body = maker()
        if name == "tetrahedron":
            body = body.turned("y", 45).turned("z", 54.74)  # a corner straight up
        body = body.turned("y", 27).turned("x", 20).scaled(size)
        bars = frame(body, 0.04 * size).painted(matte("e9dcc0"))
        scene.add(f"frames/{name}", bars.moved(x, y, 0))
        scene.add(f"jewels/{name}", body.scaled(0.86).painted(shiny(colour)).moved(x, y, 0))
    return scene


def archimedean():
    """The thirteen half-regular bodies; the paint of a face tells its number of corners."""
    places = {
        "truncated-icosidodecahedron": (0, 0, 0.165),
        "snub-dodecahedron": (-0.33, 0.33, 0.115),
        "truncated-icosahedron": (0.33, 0.33, 0.115),
        "rhombicosidodecahedron": (-0.33, -0.33, 0.115),
        "truncated-dodecahedron": (0.33, -0.33, 0.115),
        "truncated-tetrahedron": (-0.1, 0.33, 0.085),
        "cuboctahedron": (0.1, 0.33, 0.085),
        "truncated-octahedron": (-0.1, -0.33, 0.085),
        "truncated-cube": (0.1, -0.33, 0.085),
        "snub-cube": (-0.33, 0.1, 0.085),
        "icosidodecahedron": (-0.33, -0.1, 0.085),
        "truncated-cuboctahedron": (0.33, 0.095, 0.1),
        "rhombicuboctahedron": (0.33, -0.105, 0.085),
    }
    bodies = archimedeans()
    scene = Scene()
    for name, (x, y, size) in places.items():
        body = painted_by_corners(bodies[name]).crisp().scaled(size)
        scene.add(name, body.turned("y", 20).turned("x", 16).moved(x, y, 0))
    return scene


def knot():
    """A trefoil knot of one closed tube; its colours run once round the wheel."""
    steps, corners = 60, 6
    path = []
    for step in range(steps):
        angle = 2 * math.pi * step / steps
        path.append(
            (
                0.118 * (math.sin(angle) + 2 * math.sin(2 * angle)),
                0.118 * (math.cos(angle) - 2 * math.cos(2 * angle)),
                -0.118 * math.sin(3 * angle),
            )
        )
    body = tube(path, 0.073, corners, closed=True)

    def paint(number):
        colour = rgb(hue(number // corners / steps, 0.85))
        # The lines along the seams between two colours are lit as if the acuity were 1.
        return Paint(mixed(colour, (1, 1, 1), 0.4), mixed((0, 0, 0.05), colour, 0.1), 1.0)

    body = body.painted_by(paint)
    scene = Scene()
    scene.add("trefoil", body.turned("z", 30).turned("x", -18).turned("y", 14))
    return scene


def hundred():
    """A hundred bodies along a spiral, each a little larger than the one before. The innermost are
    too small to be drawn, then come plain ones, then smoothed ones; zooming in moves the borders.
    """
    golden_angle = 180 * (3 - math.sqrt(5))
    growth = 1.038
    scene = Scene()
    for place in range(100):
        size = 0.096 / growth ** (99 - place)
        distance = 0.345 / growth ** (99 - place)
        angle = golden_angle * place
        center = (
            distance * math.cos(math.radians(angle)),
            distance * math.sin(math.radians(angle)),
            -0.25 * distance,
        )
        body = icosahedron().turned("x", 3.6 * place).turned("y", 30)
        body = body.painted(matte(hue(place / 100 + 0.05), 0.5)).scaled(size)
        scene.add(f"number-{place + 1:03d}", body.moved(*center), faceted=True)
    return scene


def arch(start, end, height, steps):
    """A path from one point to another that rises from the origin on its way."""
    places = [step / steps for step in range(steps + 1)]
    return [times(mixed(start, end, t), 1 + height * math.sin(math.pi * t)) for t in places]


def handles():
    """A ball whose twelve pentagons are joined two by two by handles."""
    body = archimedeans()["truncated-icosahedron"].scaled(0.22).painted(matte("efe6d2"))
    for colour in ("e8503c", "f5a623", "4fb556", "1f9e9a", "2f8fe0", "a05fdc"):
        pentagons = [number for number, side in enumerate(body.sides) if len(side.corners) == 5]
        start, *others = pentagons
        middle = body.middle_of(start)
        # One coordinate of every middle is 0. The partner is the mirror image in the second least.
        second = sorted(map(abs, middle))[1]
        image = tuple(-x if abs(x) == second else x for x in middle)
        end = min(others, key=lambda number: math.dist(body.middle_of(number), image))
        paints = {start: shiny(colour)}  # the walls of a handle look like the side it begins at
        path = arch(middle, body.middle_of(end), 1.1, 7)
        body = bridged(body.painted_by(paints.get), start, end, path)
    scene = Scene()
    scene.add("handles", body.turned("y", 24).turned("x", 20))
    return scene
