"""The showcase: a still life of turned, smoothed, crisp and clear things on a wooden table."""

from .modelling import BOTH, Row, box, join, lathe, shadow, soft_rows, tube
from .paint import Paint, matte
from .polyhedra import archimedeans, ball, cube
from .scenefile import Scene
from .tabletop import GOLD, amphora, bowl, goblet

RED = Paint((1.0, 0.52, 0.36), (0.42, 0.02, 0.05), 0.45)
ORANGE = Paint((1.0, 0.76, 0.36), (0.6, 0.2, 0.0), 0.55)
LEMON = Paint((1.0, 0.95, 0.5), (0.58, 0.38, 0.0), 0.6)
PEAR = Paint((0.9, 0.93, 0.5), (0.3, 0.34, 0.04), 0.55)
GRAPE = Paint((0.78, 0.6, 0.98), (0.16, 0.04, 0.32), 0.4)


WOODS = [matte(colour, 0.9) for colour in ("b9824e", "a9733f", "c08a56")]
PLANK = 0.172  # from the middle of one to that of the next


def table():
    """Three planks of different woods."""
    planks = []
    for place, wood in enumerate(WOODS):
        plank = box(0.8, 0.035, 0.17).painted(wood)
        planks.append(plank.moved(0, -0.0175, PLANK * (place - 1)))
    return join(planks)


def stalk(height):
    path = [(0, height, 0), (0.004, height + 0.02, 0), (0.014, height + 0.04, 0)]
    return tube(path, [0.004, 0.0035, 0.005], 3).painted(matte("5f4126"))


def apple():
    rows = soft_rows((0, 0.012), (0.04, 0), (0.084, 0.062), (0.062, 0.13), (0.02, 0.132), (0, 0.1))
    return lathe(rows, 7, RED, arcs=7)


def pear():
    rows = soft_rows(
        (0, 0.01), (0.04, 0), (0.085, 0.055), (0.058, 0.12), (0.032, 0.175), (0.014, 0.2), (0, 0.19)
    )
    return lathe(rows, 7, PEAR, arcs=7)


def grapes():
    """A bunch that hangs over the rim of a bowl."""
    berry = cube().soft().turned("y", 30).scaled(0.031)
    spots = [
        (0, 0, 0), (0.036, 0.008, 0.01), (-0.036, 0.006, 0.008),
        (0.018, -0.026, 0.028), (-0.02, -0.024, 0.026), (0.002, -0.052, 0.04),
        (0.034, -0.05, 0.034), (0.02, -0.082, 0.046), (-0.002, -0.116, 0.046),
    ]  # fmt: skip
    return join([berry.moved(*spot) for spot in spots]).painted(GRAPE)


def bottle():
    """Clear glass, with wine in it."""
    outside = [
        Row(0.07, 0.0, True),
        *soft_rows((0.078, 0.012), (0.078, 0.2), (0.07, 0.25), (0.03, 0.3), (0.024, 0.4)),
        Row(0.032, 0.405, True),
        *soft_rows((0.033, 0.418)),
        Row(0.032, 0.43, True),
    ]
    wine = [
        Row(0.062, 0.01, True),
        *soft_rows((0.07, 0.022), (0.069, 0.1)),
        Row(0.069, 0.17, True),
    ]
    return (
        lathe(
            outside, 12, Paint((0.9, 1.0, 0.95), (0.05, 0.4, 0.25), 0.3, (0.62, 0.26)), arcs=6
        ).painted_by(lambda _: None, visibility=BOTH),
        lathe(wine, 12, Paint((0.75, 0.1, 0.2), (0.22, 0.0, 0.06), 0.5)),
    )


def showcase():
    scene = Scene()
    ground = [table()]

    def stand(path, body, x, z, under=0.0, reach=0.08):
        """Puts a body on the table, with a shadow as wide as what stands on it."""
        scene.add(path, body.moved(x, 0.001, z))
        if under:
            wood = WOODS[round(z / PLANK) + 1]
            ground.append(shadow(under, reach, 15, wood).moved(x, 0, z))

    stand("vessels/amphora", amphora().scaled(0.98), -0.215, -0.13, 0.1, 0.14)
    stand("vessels/goblet", goblet().painted(GOLD), 0.105, -0.14, 0.108, 0.1)
    dish = (-0.01, 0.06)
    stand("vessels/bowl", bowl(), *dish, 0.1, 0.12)
    clear, wine = bottle()
    stand("vessels/bottle/wine", wine, 0.29, 0.01, 0.08, 0.02)
    stand("vessels/bottle/glass", clear, 0.29, 0.01)

    x, z = dish
    scene.add("fruit/bowl/apple", apple().turned("x", 12).moved(x - 0.075, 0.09, z - 0.01))
    scene.add("fruit/bowl/orange", ball(0.07).painted(ORANGE).moved(x + 0.065, 0.15, z - 0.035))
    lemon = ball(0.056).scaled(1.35, 1, 1).painted(LEMON).turned("z", 20).turned("y", 25)
    scene.add("fruit/bowl/lemon", lemon.moved(x + 0.015, 0.165, z + 0.06))
    scene.add("fruit/bowl/grapes", grapes().moved(x + 0.1, 0.185, z + 0.115))
    stand("fruit/pear", pear().joined(stalk(0.185)).turned("z", -4), 0.19, 0.185, 0.066, 0.06)

    toy = archimedeans()["icosidodecahedron"].turned("z", 31.7175).crisp().scaled(0.1)
    lift = -min(point[1] for point in toy.points)
    sky, ivory = matte("2f86d8"), matte("f6ecd2")
    toy = toy.painted_by(lambda number: ivory if len(toy.sides[number].corners) == 3 else sky)
    stand("toy", toy.moved(0, lift, 0).turned("y", 20), -0.28, 0.135, 0.06, 0.05)

    scene.add("table", join(ground))
    return scene.turned("y", -7).turned("x", 22).moved(0, -0.215, 0)
