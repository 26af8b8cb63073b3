"""Writes scenes of named bodies as the program itself would write them.

The text is made as the program makes it (decimal comma, exact digits of 32-bit floats, folders
before shapes and both in order of their names), so that loading a scene and saving it again
changes nothing but the order in which sides are cut into triangles.
"""

import math
import struct
from collections import Counter, defaultdict

from .vectors import cross, dot, minus, plus

VIEW = 0.45  # what the start view shows, less a margin, to each side of the origin
DEPTH = 1.0  # what lies farther than this towards or away from the viewer is not drawn
SMOOTHED = 0.0001  # a shape is smoothed while radius * radius / triangles exceeds this
VISIBILITIES = ("invisible", "front", "back", "frontback")
NAME_CHARACTERS = set("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-")


class Scene:
    """Bodies by path, where a path is "folder/folder/name"."""

    def __init__(self):
        self.bodies = {}
        self.faceted = set()

    def add(self, path, body, faceted=False):
        """Only a `faceted` body may be too small to be smoothed in the start view."""
        assert path not in self.bodies, f"{path}: this name is taken"
        assert all(part and set(part) <= NAME_CHARACTERS for part in path.split("/")), path
        self.bodies[path] = body
        if faceted:
            self.faceted.add(path)

    def changed(self, change):
        """The same scene with every body changed."""
        scene = Scene()
        scene.bodies = {path: change(body) for path, body in self.bodies.items()}
        scene.faceted = self.faceted
        return scene

    def turned(self, axis, degrees):
        """The scene turned about an axis through the origin."""
        return self.changed(lambda body: body.turned(axis, degrees))

    def moved(self, x, y, z):
        return self.changed(lambda body: body.moved(x, y, z))

    def save(self, filename):
        written = self.changed(lambda body: rounded_to_floats(blendable(body)))
        for path, body in written.bodies.items():
            problem = problem_of(body, path in self.faceted)
            assert not problem, f"{filename}: {path} {problem}"
        with open(filename, "w", encoding="ascii", newline="\n") as file:
            file.write(scene_text(written))


def blendable(body):
    """A clear body with its sides in the order in which they have to be painted."""
    clear = all(side.front.is_clear() for side in body.sides)
    return body.back_to_front() if clear else body


# ----------------------------------------------------------------------------------------- checks


def problem_of(body, faceted):
    """What is wrong with a body, as a sentence without its subject; None when all is well."""
    used = {corner for side in body.sides for corner in side.corners}
    if used != set(range(len(body.points))):
        return "has a point that no side uses"
    if not body.marked <= used:
        return "marks a point that it does not have"
    for side in body.sides:
        if len(set(side.corners)) < max(3, len(side.corners)):
            return "has a side that meets a point twice"
        if any(body.points[a] == body.points[b] for a, b in side.edges()):
            return "has a side with two neighbouring corners in one place"
    if len(body.sides) > 1:
        problem = problem_of_surface(body)
        if problem:
            return problem
    return problem_of_size(body, faceted)


def problem_of_surface(body):
    edges = Counter(edge for side in body.sides for edge in side.edges())
    if max(edges.values()) > 1:
        return "has two sides that walk an edge in the same direction"
    if any((b, a) not in edges for a, b in edges):
        return "is open"
    for sides in pieces(body):
        # Two sides back to back are a patch, which has no inside.
        if len(sides) > 2 and volume(body, sides) <= 0:
            return "is inside out"
    return None


def pieces(body):
    """The sides, in groups that hang together."""
    group = {point: {point} for point in range(len(body.points))}
    for side in body.sides:
        for a, b in side.edges():
            if group[a] is not group[b]:
                group[a] |= group[b]
                for point in group[b]:
                    group[point] = group[a]
    found = defaultdict(list)
    for side in body.sides:
        found[id(group[side.corners[0]])].append(side)
    return found.values()


def volume(body, sides):
    """Six times the volume that the sides enclose, seen from one of their points."""
    origin = body.points[sides[0].corners[0]]
    total = 0.0
    for side in sides:
        a, *others = (minus(point, origin) for point in body.corners_of(side))
        for b, c in zip(others, others[1:]):
            total += dot(a, cross(b, c))
    return total


def problem_of_size(body, faceted):
    x, y, z = (max(abs(point[axis]) for point in body.points) for axis in range(3))
    if max(x, y) > VIEW:
        return f"leaves the start view ({max(x, y):.3f})"
    center, radius = ball_about(body)
    if abs(center[2]) + radius >= DEPTH:
        return f"reaches too far in depth ({z:.3f})"
    triangles = triangle_count(body)
    if not faceted and radius * radius / triangles <= SMOOTHED:
        budget = int(radius * radius / SMOOTHED)
        return f"has {triangles} triangles where {budget} can be smoothed"
    return None


def ball_about(body):
    total = (0.0, 0.0, 0.0)
    for point in body.points:
        total = plus(total, point)
    center = tuple(value / len(body.points) for value in total)
    return center, max(math.dist(center, point) for point in body.points)


def triangle_count(body):
    return sum(len(side.corners) - 2 for side in body.sides)


# ------------------------------------------------------------------------------------------- text


def rounded_to_floats(body):
    """The body with the coordinates that 32-bit floats can hold, tiny ones made 0."""

    def as_float(value):
        return struct.unpack("f", struct.pack("f", round(value, 7) + 0.0))[0]

    return body.mapped(lambda point: tuple(as_float(value) for value in point))


def scene_text(scene):
    tree = folder_tree(scene)
    parts = ["Korvane v1.0\n\n", "#Created by Mirtal v1.0\n\n", rule("~") + "\n"]
    parts.append(f"ShapeNumber: {len(scene.bodies)}\n\nFolders:\n\n")
    parts += folder_lines(tree, 1)
    parts.append("\n")
    parts += shape_blocks(tree, "")
    return "".join(parts)


def rule(character):
    return "#" + 70 * character + "\n"


def folder_tree(scene):
    """Nested dictionaries for the folders, bodies for the shapes."""
    tree = {}
    for path, body in scene.bodies.items():
        *folders, name = path.split("/")
        node = tree
        for folder in folders:
            node = node.setdefault(folder, {})
        node[name] = body
    return tree


def in_tree_order(node):
    """Folders first, then shapes, each by name without regard to case."""
    return sorted(node.items(), key=lambda item: (not isinstance(item[1], dict), item[0].lower()))


def folder_lines(node, depth):
    for name, child in in_tree_order(node):
        if isinstance(child, dict):
            yield depth * "/" + name + "\n"
            yield from folder_lines(child, depth + 1)


def shape_blocks(node, path):
    for name, child in in_tree_order(node):
        if isinstance(child, dict):
            yield from shape_blocks(child, f"{path}/{name}")
        else:
            yield f"{rule('~')}\nName:\n{path}/{name}\n\n{shape_text(child)}"


def shape_text(body):
    parts = [f"PointNumber: {len(body.points)}\nPoints:\n"]
    for number, point in enumerate(body.points):
        parts.append("\t".join(real(value) for value in point) + f"\t#{number}.\n")
    parts.append(rule("-"))
    if body.marked:
        parts.append(f"VertexNumber: {len(body.marked)}\nVertexes:\n")
        parts.append(integer_rows(sorted(body.marked)) + "\n" + rule("-"))
    parts.append(f"TriangleNumber: {triangle_count(body)}\nTriangles:\n")
    fans = [fan(side) for side in body.sides]
    for number, triangle in enumerate(triangle for run in fans for triangle in run):
        parts.append("%d\t%d\t%d\t" % triangle + f"#{number}.\n")
    parts.append(rule("-") + f"SideNumber: {len(body.sides)}\nSides:\n")
    first = 0
    for side, run in zip(body.sides, fans):
        parts.append(side_text(side, range(first, first + len(run))))
        first += len(run)
    return "".join(parts)


def real(value):
    return ("%.20g" % value).replace(".", ",")


def fan(side):
    """The side's triangles as far as this file needs them: the program cuts sides anew."""
    a, *others = side.corners
    return [(a, b, c) for b, c in zip(others, others[1:])]


def side_text(side, triangles):
    return (
        f"#{35 * '- '}\nPointNumber: {len(side.corners)}\nPoints:\n{integer_rows(side.corners)}\n\n"
        + f"TriangleNumber: {len(triangles)}\nTriangles:\n{integer_rows(triangles)}\n\n"
        + f"Visibility: {VISIBILITIES[side.visibility]}\n\n"
        + f"Colors:\n{paint_text(side.front)}{paint_text(side.back)}"
    )


def integer_rows(values):
    """Rows of ten, each value followed by a tab; the last row has no line end of its own."""
    text = ""
    for place, value in enumerate(values, 1):
        text += f"{value}\t" + ("\n" if place % 10 == 0 else "")
    return text


def paint_text(paint):
    rows = [(*paint.light, paint.alphas[0]), (*paint.shadow, paint.alphas[1]), (paint.acuity,)]
    return "".join(" ".join("%f" % value for value in row).replace(".", ",") + "\n" for row in rows)
