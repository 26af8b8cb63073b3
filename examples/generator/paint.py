"""What a face looks like: colours, and the surfaces made of them."""

import math
from dataclasses import dataclass


@dataclass(frozen=True)
class Paint:
    """How a face looks in the light and away from it; a small acuity makes a small highlight.
    The alphas say how much it hides of what is behind it, in the light and away from it."""

    light: tuple
    shadow: tuple
    acuity: float = 0.6
    alphas: tuple = (1.0, 1.0)

    def is_clear(self):
        """Whether the program paints it after the opaque sides of the same body."""
        return sum(self.alphas) < 0.98


def rgb(code):
    """The three components, 0 to 1, of a colour written as in "e8913a"."""
    return tuple(int(code[i : i + 2], 16) / 255 for i in (0, 2, 4))


def mixed(a, b, part):
    """The colour that is `part` of the way from a to b."""
    return tuple((1 - part) * x + part * y for x, y in zip(a, b))


def matte(code, acuity=0.75):
    """A plain surface: its shadow is darker and a little towards the blue of the evening."""
    colour = rgb(code)
    return Paint(mixed(colour, (1, 1, 0.95), 0.15), mixed((0.03, 0.03, 0.1), colour, 0.36), acuity)


def shiny(code, acuity=0.3):
    """A polished surface: nearly white where the light falls, its own deep colour elsewhere."""
    colour = rgb(code)
    return Paint(mixed(colour, (1, 1, 1), 0.5), mixed((0, 0, 0.04), colour, 0.5), acuity)


def glass(code, alpha, acuity=0.5):
    """A surface through which one sees what stands behind it."""
    colour = rgb(code)
    return Paint(
        mixed(colour, (1, 1, 1), 0.4), mixed((0, 0, 0), colour, 0.75), acuity, (alpha, alpha)
    )


def laid(clear, ground):
    """An opaque surface that looks like a clear one lying closely on a ground. A clear one there is
    not always painted after the ground: triangles are painted by the depth of their middles."""
    light = mixed(ground.light, clear.light, clear.alphas[0])
    shadow = mixed(ground.shadow, clear.shadow, clear.alphas[1])
    return Paint(light, shadow, ground.acuity)


def hue(turn, strength=0.75, brightness=0.95):
    """The colour code at a place of the colour wheel, where 1 is once round."""
    weights = (0.5 + 0.5 * math.cos(2 * math.pi * (turn - third / 3)) for third in range(3))
    parts = (brightness * (1 - strength + strength * weight) for weight in weights)
    return "".join(f"{round(255 * part):02x}" for part in parts)
