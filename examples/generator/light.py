"""Scenes of light that shines through: a church window, and a water lily."""

import math

from .modelling import (
    BOTH,
    Body,
    Row,
    box,
    circle,
    join,
    lathe,
    patch,
    sheet,
    soft_rows,
    tube,
)
from .paint import Paint, glass, laid, matte, mixed, rgb
from .polyhedra import octahedron
from .scenefile import Scene

FLOOR = matte("3d3844", 1)
RUBY, SAPPHIRE, AMBER, EMERALD, SKY = "d81e2c", "1f4fd8", "f5a51d", "159a55", "7cc4f0"


def ring(radius, thickness, steps, corners=6):
    """A round bar bent to a ring in the x-y plane."""
    path = [(x, y, 0) for x, y in circle(radius, steps)]
    return tube(path, thickness, corners, closed=True)


# ------------------------------------------------------------------------------------------ glass


def petal_outline(inner, outer, width):
    """A drop whose point is towards the middle: seen along y, from `inner` out to `outer`."""
    length = outer - inner
    right = [(0.1, 0.12), (0.3, 0.3), (0.46, 0.52), (0.48, 0.76), (0.28, 0.95)]
    half = [(width * x, inner + length * y) for x, y in right]
    return [(0, inner)] + half + [(0, outer)] + [(-x, y) for x, y in reversed(half)]


def pane(outline, colour, tip=False):
    """A piece of coloured glass, seen from both sides, in a bent strip of lead."""
    body = sheet([(x, y, 0) for x, y in outline])
    body = Body(body.points, body.sides, (0,) if tip else ())
    return body.painted(glass(colour, 0.75, 0.9), visibility=BOTH)


def lead(outline):
    path = [(x, y, 0) for x, y in outline]
    return tube(path, 0.0066, 3, closed=True).painted(matte("3a3b44"))


def cast(outline, turn, height):
    """Where the light that falls through a pane meets the floor: the farther up the pane, the
    farther out."""
    c, s = math.cos(math.radians(turn)), math.sin(math.radians(turn))
    turned = [(c * x - s * y, s * x + c * y + height) for x, y in outline]
    return [(x + 0.3 * y, 0.74 * y + 0.02) for x, y in turned]


def pool(outline, level, colour):
    """A spot of coloured light on the floor; no two lie at the same level."""
    tint = mixed(rgb(colour), (1, 1, 1), 0.1)
    ring = [(x, level, z) for x, z in reversed(outline)]
    return patch(ring).painted(laid(Paint(tint, tint, 1.0, (0.48, 0.48)), FLOOR))


def crystal(colour, size):
    """A clear six-sided crystal."""
    rows = [Row(0, 0), Row(0.3, 0.32), Row(0.3, 0.75), Row(0, 1.1)]
    body = (
        lathe(rows, 6, arcs=6)
        .crisp()
        .scaled(size)
        .painted(glass(colour, 0.45, 0.45), visibility=BOTH)
    )
    return body.turned("z", 7).turned("y", 20)


def stained_glass():
    """A rose window of one-sided panes, the light that falls through it, and clear crystals."""
    height = 0.275
    scene = Scene()
    spots = []

    def glaze(name, outline, colour, turn, tip=False):
        scene.add(f"window/panes/{name}", pane(outline, colour, tip).turned("z", turn))
        scene.add(f"window/lead/{name}", lead(outline).turned("z", turn), faceted=True)
        spots.append((cast(outline, turn, height), colour))

    petal = petal_outline(0.07, 0.19, 0.105)
    disc = [(x, y + 0.198) for x, y in circle(0.036, 9)]
    glaze("centre", circle(0.052, 10), AMBER, 0)
    for i in range(8):
        glaze(f"petal-{i + 1}", petal, (RUBY, SAPPHIRE)[i % 2], 45 * i, True)
        glaze(f"disc-{i + 1}", disc, (EMERALD, AMBER)[i % 2], 45 * i + 22.5)
    stone = matte("d3c6b0")
    scene.add("window/frame", ring(0.262, 0.027, 20, 6).painted(stone))
    ground = pane(circle(0.25, 24), SKY).painted(glass(SKY, 0.25, 0.9), visibility=BOTH)
    # clear triangles are drawn whole, farther ones first: well behind the panes, not just behind
    scene.add("window/panes/ground", ground.moved(0, 0, -0.02))
    scene = scene.moved(0, height, 0)

    sill = box(0.26, 0.036, 0.09).painted(stone).moved(0, 0.012, 0)
    scene.add("window/sill", sill)
    floor = box(0.66, 0.03, 0.48).moved(0.05, -0.015, 0.175).painted(FLOOR)
    pools = [
        pool(outline, 0.001 + 0.00005 * layer, colour)
        for layer, (outline, colour) in enumerate(spots)
    ]
    scene.add("floor", join([floor] + pools))
    scene = scene.turned("y", 24)
    for name, colour, x, z, size in (
        ("violet", "8a4fe0", 0.335, 0.1, 0.165),
        ("green", "2fbf71", 0.425, 0.13, 0.115),
        ("rose", "f0508a", 0.36, 0.2, 0.098),
    ):
        scene.add(f"crystals/{name}", crystal(colour, size).moved(x, 0.0, z))
    return scene.turned("x", 24).moved(-0.13, -0.2, -0.1)


# ----------------------------------------------------------------------------------------- lotus


def petal(length, width, lean, cup):
    """A petal that grows from the origin out along z: leaned back by `lean` degrees at its foot,
    rising more and more towards the tip, its edges lifted by `cup`. Only the tip is sharp."""
    shape = [(0.16, 0.34), (0.36, 0.78), (0.58, 1.0), (0.8, 0.72)]

    def at(part, side):
        rise = math.radians(lean + 34 * part)
        out, up = length * part * math.cos(rise), length * part * math.sin(rise)
        return (side * width / 2, up + cup * abs(side), out)

    right = [at(part, side) for part, side in shape]
    left = [at(part, -side) for part, side in reversed(shape)]
    points = [at(0, -0.16), *reversed(left), at(1, 0), *reversed(right), at(0, 0.16)]
    return Body(points, sheet(points).sides, (len(left) + 1,))


def pad(radius, notch):
    """A floating leaf, cut in from the rim to the stalk."""
    steps = 13
    angles = [math.radians(notch + 16 + 328 * i / (steps - 1)) for i in range(steps)]
    rim = [
        (radius * math.cos(a), 0.006 + 0.004 * math.sin(4 * a), -radius * math.sin(a))
        for a in angles
    ]
    a = math.radians(notch)
    points = [(0.12 * radius * math.cos(a), 0.003, -0.12 * radius * math.sin(a))] + rim
    return Body(points, sheet(points).sides, (0,))


def dragonfly():
    """A thin body and four clear wings."""
    tail = [(0, 0, 0.03), (0, 0.004, 0.0), (0, 0.002, -0.05), (0, 0.006, -0.11), (0, 0.004, -0.15)]
    body = tube(tail, [0.006, 0.012, 0.006, 0.005, 0.003], 5).painted(matte("1f8f9c"))
    head = octahedron().scaled(0.016).painted(matte("2a5f7a")).moved(0, 0, 0.036)
    outline = [
        (0.006, 0.0),
        (0.05, 0.006),
        (0.1, 0.012),
        (0.128, 0.004),
        (0.11, -0.012),
        (0.05, -0.014),
    ]
    parts = {"body": body.joined(head)}
    for name, turn, foot in (("front", 12, 0.012), ("rear", -20, -0.006)):
        wing = sheet([(x, 0.012 + 0.12 * x, -y) for x, y in outline])
        wing = wing.painted(glass("bfe6f5", 0.48, 0.8), visibility=BOTH).turned("y", turn)
        parts[f"wing-{name}-right"] = wing.moved(0, 0, foot)
        parts[f"wing-{name}-left"] = wing.mirrored().moved(0, 0, foot)
    return parts


def lotus():
    """A water lily among its leaves. Petals and leaves are single sides, another colour behind."""
    scene = Scene()
    blue = Paint((0.26, 0.66, 0.76), (0.0, 0.12, 0.26), 0.9)
    water = lathe(
        [Row(0.4, -0.05, True), *soft_rows((0.404, -0.025)), Row(0.4, 0.0, True), Row(0.24, 0.0)],
        18,
        blue,
    )
    light = Paint((0.75, 0.93, 0.95), (0.6, 0.85, 0.9), 1.0, (0.16, 0.16))
    ripple = patch([(x, 0.001, -0.95 * z) for x, z in circle(0.34, 12)]).painted(laid(light, blue))
    scene.add("water", water.joined(ripple))

    pink, white = rgb("f0669a"), (1.0, 0.95, 0.97)
    whorls = [
        ("outer", 9, 0.25, 0.105, 4, 0.035, 0.0),
        ("middle", 8, 0.215, 0.1, 26, 0.036, 0.35),
        ("inner", 6, 0.16, 0.085, 44, 0.03, 0.65),
    ]
    for name, count, length, width, lean, cup, pale in whorls:
        inside = Paint(mixed((1, 0.8, 0.88), white, pale), mixed(pink, white, 0.4 * pale), 0.6)
        outside = Paint(
            mixed(pink, white, 0.45), mixed((0.6, 0.1, 0.35), pink, 0.4 + 0.4 * pale), 0.9
        )
        one = petal(length, width, lean, cup).moved(0, 0.02, 0.018)
        one = one.painted(inside, outside, BOTH)
        for i in range(count):
            turn = 360 * (i + 0.5 * (name == "middle")) / count
            scene.add(f"flower/{name}/petal-{i + 1}", one.turned("y", turn))
    cone = [Row(0, 0.015), Row(0.055, 0.085, True), Row(0, 0.092)]
    pod = lathe(cone, 9, matte("f2c63a"))
    scene.add("flower/pod", pod)

    leaf = Paint((0.52, 0.78, 0.36), (0.05, 0.25, 0.12), 0.8)
    under = Paint((0.5, 0.4, 0.4), (0.2, 0.08, 0.12), 0.8)
    for place, (x, z, size, notch) in enumerate(
        [
            (-0.24, 0.2, 0.12, 60),
            (0.25, 0.17, 0.115, 200),
            (-0.27, -0.13, 0.1, 300),
            (0.24, -0.2, 0.11, 160),
            (0.02, 0.31, 0.075, 100),
        ]
    ):
        body = pad(size, notch).painted(leaf, under, BOTH)
        scene.add(f"leaves/leaf-{place + 1}", body.moved(x, 0.004, z))
    for name, body in dragonfly().items():
        scene.add(
            f"dragonfly/{name}",
            body.scaled(1.25).turned("x", -20).turned("y", -55).moved(0.2, 0.38, -0.03),
        )
    return scene.turned("y", 8).turned("x", 30).moved(0, -0.14, 0)
