"""The showcase: a still life of turned, smoothed, crisp and clear things on a wooden table."""

import math

from .modelling import BOTH, Body, Row, box, extruded, join, lathe, shadow, sheet, soft_rows, tube
from .mathematics import frame
from .paint import Paint, glass, matte, shiny
from .polyhedra import ball, icosahedron, octahedron
from .scenefile import Scene
from .tabletop import CLAY, CREAM, GOLD, amphora, bowl, goblet

LIGHT_FROM = 18  # the direction in which shadows fall, as `shadow` takes it


def table():
    """Five planks."""
    planks = []
    for i, colour in enumerate(("b9824e", "a9733f", "c08a56", "ad7845", "b67f4b")):
        plank = box(0.8, 0.035, 0.1).painted(matte(colour, 0.9))
        planks.append(plank.moved(0, -0.0175, 0.102 * (i - 2)))
    return join(planks)


def apple(paint):
    rows = [
        Row(0, 0.012),
        *soft_rows((0.03, 0.0), (0.062, 0.03), (0.07, 0.075), (0.05, 0.118), (0.022, 0.116), (0, 0.09)),
    ]
    return lathe(rows, 8, paint, arcs=4)


def stalk(height):
    path = [(0, height, 0), (0.003, height + 0.022, 0), (0.012, height + 0.04, 0)]
    return tube(path, [0.004, 0.0035, 0.005], 3).painted(matte("5f4126"))
