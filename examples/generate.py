#!/usr/bin/env python3
"""Makes the example scenes that lie beside this file; see generator/ for how they are built.

usage: generate.py [scene ...]     without a name, all of them
"""

import sys
from pathlib import Path

from generator import light, mathematics, places, stilllife, tabletop

SCENES = {
    "showcase": stilllife.showcase,
    "platonic": mathematics.platonic,
    "archimedean": mathematics.archimedean,
    "knot": mathematics.knot,
    "hundred": mathematics.hundred,
    "handles": mathematics.handles,
    "chess": tabletop.chess,
    "vessels": tabletop.vessels,
    "house": places.house,
    "lighthouse": places.lighthouse,
    "glass": light.stained_glass,
    "lotus": light.lotus,
}


def main(names):
    unknown = [name for name in names if name not in SCENES]
    if unknown:
        sys.exit(f"There is no scene {unknown[0]}; there are: {', '.join(SCENES)}.")
    for name in names or SCENES:
        SCENES[name]().save(Path(__file__).parent / f"{name}.mrt")


if __name__ == "__main__":
    main(sys.argv[1:])
