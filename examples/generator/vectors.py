"""Points and directions as tuples of three numbers."""

import math


def plus(a, b):
    return tuple(x + y for x, y in zip(a, b))


def minus(a, b):
    return tuple(x - y for x, y in zip(a, b))


def times(a, factor):
    return tuple(x * factor for x in a)


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def unit(a):
    return times(a, 1 / math.sqrt(dot(a, a)))


def mean(points):
    points = list(points)
    return tuple(sum(axis) / len(points) for axis in zip(*points))


def turned_point(point, axis, degrees):
    """The point turned about the axis "x", "y" or "z", counter-clockwise seen from its tip."""
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    first = {"x": 1, "y": 2, "z": 0}[axis]
    second = (first + 1) % 3
    out = list(point)
    out[first] = c * point[first] - s * point[second]
    out[second] = s * point[first] + c * point[second]
    return tuple(out)
