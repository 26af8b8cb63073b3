"""Scenes of places: a house with its garden, and a lighthouse in the sea."""

import math

from .modelling import (
    Body,
    Row,
    box,
    circle,
    extruded,
    join,
    lathe,
    patch,
    shadow,
    sheet,
    soft_rows,
    tube,
)
from .paint import Paint, glass, laid, matte, shiny
from .polyhedra import icosahedron, octahedron, quartered
from .scenefile import Scene
from .vectors import times

BARK = matte("7a5233")
LEAVES = matte("5aa040")
NEEDLES = matte("2f7d54")
WHITE = matte("f4f1ea")
STONE = matte("b5aa9b")


def lumpy(body, depth, seed):
    """The body with each point pushed in or out by up to `depth` of its distance, always alike."""

    def push(point):
        x, y, z = point
        wave = math.sin(seed + 12.9898 * x + 78.233 * y + 37.719 * z) * 43758.5453
        return times(point, 1 + depth * (2 * (wave - math.floor(wave)) - 1))

    return body.mapped(push)


def gable(width, wall, ridge, length):
    """The walls of a house under a pitched roof; its ridge runs along x."""
    x = width / 2
    outline = [(-x, 0), (x, 0), (x, wall), (0, ridge), (-x, wall)]
    return extruded(outline, length).crisp().turned("y", 90)


def pitched_roof(width, wall, ridge, length, overhang, thickness):
    """A roof for the same walls."""
    x = width / 2 + overhang
    eaves = wall - overhang * (ridge - wall) / (width / 2)
    lower = [(-x, eaves), (0, ridge), (x, eaves)]
    upper = [(px, py + thickness) for px, py in reversed(lower)]
    return extruded(lower + upper, length).crisp().turned("y", 90)


# ------------------------------------------------------------------------------------------ house


def tiles(width, wall, ridge, length, rows, paints):
    """Rows of tiles, like long flat boxes, on the slope that faces z."""
    run, rise = width / 2, ridge - wall
    slope = math.degrees(math.atan2(rise, run))
    step = math.hypot(run, rise) / rows
    courses = []
    for row in range(rows):
        part = (row + 0.5) / rows
        course = box(length, 0.016, step * 1.12).turned("x", slope + 4)
        course = course.moved(0, ridge - part * rise + 0.016, part * run)
        courses.append(course.painted(paints[row % len(paints)]))
    return join(courses)


def window(width, height):
    """A window with panes, to be set into a wall that faces z."""
    bar = 0.006
    frame = box(width, height, 0.012).painted(WHITE)
    left = box(width / 2 - 1.5 * bar, height - 2 * bar, 0.014).painted(shiny("4f90c0"))
    shift = width / 4 - bar / 4
    return join([frame, left.moved(-shift, 0, 0), left.moved(shift, 0, 0)])


def door():
    leaf = box(0.056, 0.112, 0.016).painted(matte("b03a2e")).moved(0, 0.068, 0)
    frame = box(0.076, 0.124, 0.012).painted(WHITE).moved(0, 0.066, 0)
    steps = [
        box(0.1, 0.012, 0.05).moved(0, 0.006, 0.025),
        box(0.084, 0.012, 0.03).moved(0, 0.016, 0.015),
    ]
    knob = octahedron().scaled(0.006).painted(matte("f0c040")).moved(0.019, 0.066, 0.011)
    return join([leaf, frame, knob] + [step.painted(STONE) for step in steps])


def fence(posts, gap):
    """A picket fence along x."""
    pickets = [
        extruded([(-0.009, 0), (0.009, 0), (0.009, 0.048), (0, 0.062), (-0.009, 0.048)], 0.007)
        .crisp()
        .moved((i - (posts - 1) / 2) * gap, 0, 0)
        for i in range(posts)
    ]
    rail = box(gap * (posts - 1) + 0.01, 0.006, 0.005)
    rails = [rail.moved(0, height, -0.004) for height in (0.016, 0.037)]
    return join(pickets + rails).painted(WHITE)


def broad_tree(scene, folder, x, z, size):
    trunk = tube([(0, 0, 0), (0.006, 0.05, 0), (-0.002, 0.11, 0)], [0.016, 0.011, 0.013], 6)
    crown = lumpy(quartered(icosahedron()), 0.2, 3).scaled(0.098, 0.094, 0.098)
    spots = [
        (0.4, 0.1, 0.8),
        (-0.55, 0.2, 0.65),
        (-0.1, -0.45, 0.8),
        (0.75, -0.3, 0.4),
        (0.1, 0.65, 0.62),
    ]
    apple = octahedron().scaled(0.019).painted(shiny("d8402f"))
    apples = join([apple.moved(*times(spot, 0.097)) for spot in spots])
    for name, body, height in (
        ("trunk", trunk.painted(BARK), 0),
        ("crown", crown.painted(LEAVES), 0.165),
        ("apples", apples, 0.165),
    ):
        scene.add(f"{folder}/{name}", body.moved(0, height, 0).scaled(size).moved(x, 0, z))


def pine(size):
    rows = [
        Row(0.014, 0.0, True, BARK),
        *soft_rows((0.013, 0.03)),
        Row(0.072, 0.045, True, NEEDLES),
        *soft_rows((0.035, 0.115)),
        Row(0.058, 0.118, True),
        *soft_rows((0.025, 0.185)),
        Row(0.042, 0.188, True),
        *soft_rows((0.012, 0.25), (0, 0.272)),
    ]
    return lathe(rows, 9).scaled(size)


GRASS = matte("84b455", 1)


def lawn(width, depth, thickness):
    """A slab of earth with grass on it; its top is the plane y = 0."""
    slab = box(width, thickness, depth).moved(0, -thickness / 2, 0)
    up = max(range(6), key=lambda number: slab.normal_of(number)[1])
    return slab.painted_by(lambda number: GRASS if number == up else matte("8a6242"))


def house():
    """A house in its garden, every part in the folder where one would look for it."""
    width, wall, ridge, length = 0.23, 0.165, 0.275, 0.32
    x, z = -0.01, -0.07
    scene = Scene()

    def put(path, body):
        scene.add(path, body.moved(x, 0.0, z))

    plinth = box(length + 0.012, 0.02, width + 0.012).painted(STONE).moved(0, 0.01, 0)
    put("house/walls", gable(width, wall, ridge, length).painted(matte("f3dfae")).joined(plinth))
    red = [matte("c8553a"), matte("b84a34"), matte("d06244")]
    roof = pitched_roof(width, wall, ridge, length + 0.045, 0.035, 0.012).painted(matte("8e3b2a"))
    put("house/roof/frame", roof)
    south = tiles(width + 0.07, wall - 0.033, ridge, length + 0.05, 4, red)
    put("house/roof/tiles-front", south)
    put("house/roof/tiles-back", south.turned("y", 180))
    stack = box(0.042, 0.14, 0.042).painted(matte("a8604a")).moved(0.09, 0.29, -0.045)
    cap = box(0.054, 0.014, 0.054).painted(STONE).moved(0.09, 0.362, -0.045)
    put("house/roof/chimney", stack.joined(cap))

    pair = [window(0.062, 0.062).moved(side * 0.1, 0.1, width / 2) for side in (-1, 1)]
    put("house/windows/front", join(pair))
    gable_end = [window(0.062, 0.062).moved(side * 0.056, 0.095, length / 2) for side in (-1, 1)]
    attic = window(0.05, 0.052).moved(0, 0.198, length / 2)
    put("house/windows/right", join(gable_end + [attic]).turned("y", 90))
    put("house/door", door().moved(0, 0, width / 2))

    broad_tree(scene, "garden/apple-tree", -0.26, 0.1, 1.12)
    for name, px, pz, size in (("pine-large", 0.255, -0.13, 1.1), ("pine-small", 0.27, 0.07, 0.85)):
        scene.add(f"garden/{name}", pine(size).moved(px, 0, pz))
    front = join([fence(6, 0.052).moved(-0.2, 0, 0), fence(5, 0.052).moved(0.2, 0, 0)])
    scene.add("garden/fence", front.moved(0, 0, 0.235))
    stones = [
        extruded(circle(0.032, 5, 17 * i), 0.008).crisp().turned("x", -90)
        .moved(x + 0.012 * (-1) ** i + 0.008, 0.003, 0.125 + 0.038 * i)
        for i in range(4)
    ]  # fmt: skip
    scene.add("garden/path", join(stones).painted(STONE))
    blossom = octahedron().scaled(0.017)
    colours = ("f2c230", "e0559a", "f4f0f8", "9a5fd0")
    bed = [
        blossom.painted(matte(colours[i % 4])).moved(
            x + side * (0.062 + 0.021 * i), 0.014 + 0.006 * (i % 2), 0.068
        )
        for side in (-1, 1)
        for i in range(5)
    ]
    scene.add("garden/flowers", join(bed))

    shadows = [
        shadow(0.06, 0.1, 10, GRASS).moved(-0.26, 0, 0.1),
        shadow(0.045, 0.02, 0, GRASS).moved(0.255, 0, -0.13),
    ]
    shadows.append(shadow(0.04, 0.01, 0, GRASS).moved(0.27, 0, 0.07))
    scene.add("garden/ground", join([lawn(0.68, 0.52, 0.045)] + shadows))
    return scene.turned("y", -30).turned("x", 27).moved(0, -0.105, 0)


# ------------------------------------------------------------------------------------- lighthouse


def tower():
    """The tower with its stripes and its gallery."""
    red, white = matte("d2372c"), matte("f6f2ea")
    rows = [Row(0.085, 0.0, True, STONE), *soft_rows((0.083, 0.015))]
    for stripe in range(5):
        height = 0.03 + 0.072 * stripe
        rows.append(Row(0.078 - 0.0062 * stripe, height, True, (white, red)[stripe % 2]))
    rows += [
        Row(0.047, 0.39, True, STONE),
        *soft_rows((0.058, 0.4)),
        Row(0.072, 0.406, True),
        *soft_rows((0.073, 0.413)),
        Row(0.072, 0.42, True),
        *soft_rows((0.03, 0.42)),
    ]
    return lathe(rows, 12)


def lamp(scene):
    prism = extruded(circle(0.042, 6), 0.062).crisp().turned("x", -90).moved(0, 0.452, 0)
    clear = glass("cfe8f2", 0.28)
    scene.add("lighthouse/lamp/glass", prism.painted(clear))
    light = Paint((1, 0.98, 0.75), (1, 0.8, 0.25), 0.8)
    scene.add("lighthouse/lamp/light", octahedron().scaled(0.042).painted(light).moved(0, 0.455, 0))
    rows = [Row(0.06, 0.482, True), *soft_rows((0.036, 0.512), (0, 0.57))]
    scene.add("lighthouse/lamp/roof", lathe(rows, 8, matte("d2372c"), arcs=4))
    beam = Paint((1, 0.95, 0.55), (1, 0.88, 0.4), 1.0, (0.36, 0.36))
    for name, turn in (("left", 188), ("right", 8)):
        rows = [Row(0.012, 0.05, True), *soft_rows((0.04, 0.17)), Row(0.07, 0.32, True)]
        cone = lathe(rows, 9, beam).turned("z", -90).turned("y", turn).moved(0, 0.455, 0)
        scene.add(f"lighthouse/beams/{name}", cone)


def boat():
    """A hull of two rims and a keel; the sails are sheets that the wind fills."""
    rim = [
        (0.095, 0),
        (0.06, 0.022),
        (0, 0.033),
        (-0.06, 0.026),
        (-0.085, 0),
        (-0.06, -0.026),
        (0, -0.033),
        (0.06, -0.022),
    ]
    keel = [(x * 0.8, z * 0.45) for x, z in rim]
    points = [(x, -0.01, -z) for x, z in keel] + [(x, 0.03 + 1.2 * x * x, -z) for x, z in rim]
    n = len(rim)
    faces = [tuple(range(n - 1, -1, -1)), tuple(range(n, 2 * n))]
    faces += [(i, (i + 1) % n, n + (i + 1) % n, n + i) for i in range(n)]
    return Body.of(points, faces, range(n, 2 * n))


def lighthouse():
    scene = Scene()
    water = Paint((0.3, 0.76, 0.92), (0.0, 0.12, 0.4), 0.9)
    sea = lathe(
        [Row(0.4, -0.05, True), *soft_rows((0.405, -0.025)), Row(0.4, 0.0, True), Row(0.24, 0.0)],
        18,
        water,
    )
    foam = Paint((0.97, 1, 1), (0.8, 0.93, 1), 1, (0.4, 0.4))
    rings = []
    for size, height in ((0.235, 0.0012), (0.2, 0.0024)):
        outline = [
            (x * (1 + 0.07 * math.sin(5 * i)) - 0.05, height, -0.8 * z - 0.03)
            for i, (x, z) in enumerate(circle(size, 14))
        ]
        water = laid(foam, water)
        rings.append(patch(outline).painted(water))
    scene.add("sea", join([sea] + rings))

    rock = lumpy(quartered(icosahedron()), 0.18, 7).painted(matte("8f8478"))
    scene.add("island/rock", rock.scaled(0.2, 0.085, 0.155).moved(-0.05, 0.0, -0.03))
    grass = lumpy(quartered(icosahedron()), 0.05, 2).painted(matte("79ab52"))
    scene.add("island/grass", grass.scaled(0.15, 0.035, 0.115).moved(-0.05, 0.062, -0.03))
    for place, (x, z, size) in enumerate(
        [(0.2, -0.13, 0.05), (0.13, 0.12, 0.047), (-0.27, 0.06, 0.05)]
    ):
        stone = lumpy(icosahedron(), 0.2, place).scaled(size, 0.7 * size, 0.9 * size)
        scene.add(f"island/stone-{place + 1}", stone.painted(matte("857a70")).moved(x, 0, z))

    tall = Scene()
    tall.add("lighthouse/tower", tower())
    lamp(tall)
    for path, body in tall.bodies.items():
        scene.add(path, body.moved(-0.09, 0.075, -0.05))
    cabin = gable(0.07, 0.05, 0.082, 0.09).painted(WHITE)
    roof = pitched_roof(0.07, 0.05, 0.082, 0.1, 0.012, 0.008).painted(matte("c8553a"))
    scene.add("island/cabin", cabin.joined(roof).turned("y", -15).moved(0.03, 0.075, 0.01))

    hull = boat().painted(matte("9a5a34"))
    mast = tube([(0, 0, 0), (0, 0.17, 0)], 0.004, 4).crisp().painted(BARK)
    main = sheet(
        [
            (-0.004, 0.05, 0),
            (-0.006, 0.1, 0.012),
            (-0.004, 0.165, 0),
            (-0.04, 0.11, 0.022),
            (-0.075, 0.055, 0.006),
            (-0.04, 0.05, 0.02),
        ]
    )
    jib = sheet(
        [
            (0.006, 0.145, 0),
            (0.02, 0.1, 0.016),
            (0.006, 0.055, 0.006),
            (0.035, 0.05, 0.018),
            (0.07, 0.05, 0.0),
            (0.04, 0.095, 0.008),
        ]
    )
    cream = matte("fbf3df")
    parts = {
        "hull": hull.joined(mast),
        "mainsail": Body(main.points, main.sides, (2, 4)).painted(cream, visibility=3),
        "jib": Body(jib.points, jib.sides, (0, 2, 4)).painted(matte("e2574a"), visibility=3),
    }
    for name, body in parts.items():
        scene.add(f"boat/{name}", body.scaled(1.15).turned("y", 20).moved(0.21, 0.004, 0.17))
    return scene.turned("y", -8).turned("x", 20).moved(0.0, -0.26, 0)
