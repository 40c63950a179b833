#!/usr/bin/env python3
"""Makes the files of the sample site: ground.csv, design.csv and boundary.waa, beside this script.

The site is a strip of a valley's side, 560 m along a farm road and some 190 m across, that falls from a spur in the
north-west to the flood plain in the south-east. A ridge runs down the spur, a hollow with a spring lies beside it, an
old quarry has left a scarp, a terrace crosses the slope, and two ditches lead the water off. The relief is a sum of
these landforms and of roughness at many scales, so it repeats nowhere.

The survey is the kind of thing a crew brings home in three days: cross-sections of the road every 20 m, spot heights
between them, the ridge and the ditches (bed and both banks) shot as runs of points, and some shots taken twice: sent
twice by the instrument to the last digit, or measured again at another set-up and therefore some millimetres off.
Coordinates are projected, metres, with the zone number 38 before the easting, rounded to millimetres.

The design is a level platform for a yard, with side slopes that run past the ground on all sides: they come down over
it where the platform is fill and rise out of it where it is cut. The boundary encloses the works.

    python3 make_site.py        writes the three files again, byte for byte the same
"""

import math
import random
from pathlib import Path

FOLDER = Path(__file__).resolve().parent
SEED = 20240417

ORIGIN_E = 38_512_340.0  # zone prefix, then the easting in the zone
ORIGIN_N = 3_414_180.0
BEARING = math.radians(24.0)  # of the strip's long side against east, so that nothing runs along an axis

LENGTH = 560.0
HALF_WIDTH = 95.0

PLATFORM_CENTRE = (318.0, -6.0)  # along the strip, across it
PLATFORM_SIZE = (96.0, 54.0)
PLATFORM_LEVEL = 76.0
CUT_SLOPE = 1.5  # horizontal to 1 vertical
FILL_SLOPE = 2.0
SLOPE_OVERLAP = 1.0  # metres in plan that the side slopes run past the ground


# Landforms, in site coordinates: u along the strip, v across it (positive uphill, north-west).


def lattice_value(i, j, octave):
    """A fixed random value in -1..1 for each point of a lattice."""
    return random.Random(f"{SEED}/{octave}/{i}/{j}").uniform(-1.0, 1.0)


LATTICE = {}


def noise(u, v, octave, wavelength):
    """Smooth noise: random values at the points of a lattice, blended between them."""
    x, y = u / wavelength, v / wavelength
    i, j = math.floor(x), math.floor(y)
    fx, fy = x - i, y - j
    sx, sy = fx * fx * (3 - 2 * fx), fy * fy * (3 - 2 * fy)
    corner = [LATTICE.setdefault((i + a, j + b, octave), lattice_value(i + a, j + b, octave))
              for a in (0, 1) for b in (0, 1)]
    low = corner[0] + (corner[1] - corner[0]) * sy
    high = corner[2] + (corner[3] - corner[2]) * sy
    return low + (high - low) * sx


def roughness(u, v):
    """From swells of 1.9 m over 130 m down to tussocks of some centimetres."""
    waves = ((130.0, 1.9), (61.0, 0.85), (27.0, 0.34), (11.0, 0.12), (4.3, 0.05))
    return sum(height * noise(u, v, octave, length) for octave, (length, height) in enumerate(waves))


def to_line(u, v, line):
    """Distance of (u, v) from a polyline, and how far along it the nearest place is, 0..1."""
    best, at, total = math.inf, 0.0, sum(math.dist(a, b) for a, b in zip(line, line[1:]))
    run = 0.0
    for a, b in zip(line, line[1:]):
        length = math.dist(a, b)
        t = ((u - a[0]) * (b[0] - a[0]) + (v - a[1]) * (b[1] - a[1])) / length**2
        t = min(1.0, max(0.0, t))
        away = math.dist((u, v), (a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1])))
        if away < best:
            best, at = away, (run + t * length) / total
        run += length
    return best, at


def smooth_step(x):
    x = min(1.0, max(0.0, x))
    return x * x * (3 - 2 * x)


RIDGE = [(96.0, 93.0), (128.0, 61.0), (151.0, 34.0), (187.0, 11.0), (203.0, -19.0)]
UPPER_DITCH = [(236.0, 84.0), (288.0, 63.0), (352.0, 55.0), (409.0, 62.0), (468.0, 48.0), (549.0, 57.0)]
LOWER_DITCH = [(22.0, -58.0), (83.0, -71.0), (166.0, -63.0), (241.0, -74.0), (330.0, -69.0), (447.0, -83.0)]
DITCHES = {"upper": (UPPER_DITCH, 0.85, 1.5), "lower": (LOWER_DITCH, 1.25, 2.1)}  # line, depth, half width at the top
DITCH_BED = 0.3  # half its width


def road_offset(u):
    """The road's centre line winds about the middle of the strip."""
    return -22.0 + 9.0 * math.sin(u / 83.0) + 5.0 * math.sin(u / 41.0 + 1.3)


def valley_side(u, v):
    """Steep above, flat towards the flood plain, and falling down the valley."""
    uphill = v + HALF_WIDTH
    return 71.0 + 0.022 * uphill + 0.00062 * uphill**2 - 0.0095 * u


def ditch_depth(u, v):
    depth = 0.0
    for line, deepest, half_width in DITCHES.values():
        away, at = to_line(u, v, line)
        ends = smooth_step(at / 0.06) * smooth_step((1 - at) / 0.06)
        depth += deepest * ends * min(1.0, max(0.0, (half_width - away) / (half_width - DITCH_BED)))
    return depth


def height(u, v):
    """The ground's elevation."""
    z = valley_side(u, v) + roughness(u, v)
    away, at = to_line(u, v, RIDGE)
    z += (4.6 - 2.9 * at) * math.exp(-away / 17.0)  # a sharp crest that dies away down the slope
    z -= 2.7 * math.exp(-(((u - 262.0) / 34.0) ** 2) - ((v - 37.0) / 21.0) ** 2)  # the spring's hollow
    z += 1.8 * math.exp(-(((u - 455.0) / 27.0) ** 2) - ((v + 31.0) / 19.0) ** 2)  # a knoll
    terrace = v - (28.0 + 7.0 * math.sin(u / 57.0))
    z += 1.1 * smooth_step(terrace / 6.0) * smooth_step((u - 330.0) / 40.0)
    scarp, _ = to_line(u, v, [(492.0, 12.0), (508.0, 27.0), (531.0, 24.0)])
    z -= 2.4 * smooth_step((13.0 - scarp) / 4.0) * smooth_step((24.0 - v) / 6.0)  # the quarry
    off_road = abs(v - road_offset(u))
    z += 0.35 * smooth_step((5.5 - off_road) / 2.5)  # the road's bank
    return z - ditch_depth(u, v)


# The survey.


def along(line, spacing, rng):
    """Places along a polyline at about the given spacing, with the direction of the line at each."""
    for a, b in zip(line, line[1:]):
        length = math.dist(a, b)
        done = 0.0
        while done < length:
            t = done / length
            yield (a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]),
                   (b[0] - a[0]) / length, (b[1] - a[1]) / length)
            done += spacing * rng.uniform(0.75, 1.2)


def cross_sections(rng):
    for chainage in range(0, int(LENGTH) + 1, 20):
        road = road_offset(chainage)
        offsets = [(-4.2, "VG"), (-2.6, "RE"), (0.0, "CL"), (2.6, "RE"), (4.2, "VG")]
        for side in (-1, 1):
            offset = 4.2
            while True:
                offset += rng.uniform(4.0, 8.5)
                if abs(road + side * offset) > HALF_WIDTH:
                    break
                offsets.append((side * offset, "XS"))
        for offset, code in sorted(offsets):
            yield chainage + rng.gauss(0, 0.12), road + offset + rng.gauss(0, 0.06), f"{code}{chainage:04d}"


def spot_heights(rng, count):
    """Where the rod-man thinks that it matters: anywhere, but seldom close to a spot that he has."""
    taken = []
    while len(taken) < count:
        u, v = rng.uniform(-4, LENGTH + 4), rng.uniform(-HALF_WIDTH, HALF_WIDTH)
        near = min((math.dist((u, v), p) for p in taken), default=99.0)
        if near > 3.2 or rng.random() < 0.02:
            taken.append((u, v))
            yield u, v, "GL"


def breaklines(rng):
    for u, v, _, _ in along(RIDGE, 2.2, rng):
        yield u + rng.gauss(0, 0.1), v + rng.gauss(0, 0.1), "RDG"
    for name, (line, _, half_width) in DITCHES.items():
        mark = name[0].upper()
        for side, code in ((-1, "BK"), (0, "BED"), (1, "BK")):
            for u, v, du, dv in along(line, 4.5, rng):
                away = side * half_width + rng.gauss(0, 0.05)
                yield u - dv * away, v + du * away, f"D{mark}-{code}"


def to_grid(u, v):
    return (ORIGIN_E + u * math.cos(BEARING) - v * math.sin(BEARING),
            ORIGIN_N + u * math.sin(BEARING) + v * math.cos(BEARING))


def survey(rng):
    """Lists of [code, easting, northing, elevation], rounded as the instrument writes them."""
    shots = []
    for u, v, code in [*cross_sections(rng), *breaklines(rng), *spot_heights(rng, 1420)]:
        e, n = to_grid(u, v)
        shots.append([code, round(e, 3), round(n, 3), round(height(u, v) + rng.gauss(0, 0.012), 3)])
    return shots


def with_repeats(shots, rng):
    """Shots sent twice, and shots measured again from another set-up."""
    again = [list(shots[i]) for i in rng.sample(range(len(shots)), 14)]
    for i in rng.sample(range(len(shots)), 16):
        _, e, n, z = shots[i]
        away, direction = rng.uniform(0.003, 0.009), rng.uniform(0, 2 * math.pi)
        again.append(["CHK", round(e + away * math.cos(direction), 3), round(n + away * math.sin(direction), 3),
                      round(z + rng.gauss(0, 0.006), 3)])
    for shot in again:
        shots.insert(rng.randrange(len(shots)), shot)
    return shots


# The design.


def platform_edge():
    """Corners and points between them, counter-clockwise, each with the direction that its slope falls in."""
    (cu, cv), (length, width) = PLATFORM_CENTRE, PLATFORM_SIZE
    corners = [(-1, -1), (1, -1), (1, 1), (-1, 1)]
    for (a, b), (c, d) in zip(corners, corners[1:] + corners[:1]):
        yield cu + a * length / 2, cv + b * width / 2, a / math.sqrt(2), b / math.sqrt(2)
        steps = round((length if b == d else width) / 6.0)
        for k in range(1, steps):
            t = k / steps
            yield (cu + (a + (c - a) * t) * length / 2, cv + (b + (d - b) * t) * width / 2,
                   0.0 if b == d else a, b if b == d else 0.0)


def side_slope_end(u, v, du, dv):
    """Where the slope from an edge point has run SLOPE_OVERLAP past the ground."""
    rises = height(u, v) > PLATFORM_LEVEL
    grade = 1 / CUT_SLOPE if rises else -1 / FILL_SLOPE
    away = 0.5
    while (height(u + du * away, v + dv * away) > PLATFORM_LEVEL + grade * away) == rises and away < 60.0:
        away += 0.05
    away += SLOPE_OVERLAP
    return u + du * away, v + dv * away, PLATFORM_LEVEL + grade * away


def design():
    (cu, cv), (length, width) = PLATFORM_CENTRE, PLATFORM_SIZE
    points = []
    for u, v, du, dv in platform_edge():
        points.append(("TOP", u, v, PLATFORM_LEVEL))
        points.append(("TOE", *side_slope_end(u, v, du, dv)))
    points += [("PAD", cu + i * length / 4, cv + j * width / 4, PLATFORM_LEVEL) for i in (-1, 0, 1) for j in (-1, 0, 1)]
    return [[code, *(round(c, 3) for c in to_grid(u, v)), round(z, 3)] for code, u, v, z in points]


BOUNDARY = [(252, -58), (307, -63), (381, -54), (397, -21), (394, 24), (377, 47), (318, 51), (262, 43), (238, 12),
            (241, -29)]


# The files.


def write_points(name, prefix, points):
    lines = [f"{prefix}{i},{code},{e:.3f},{n:.3f},{z:.3f}\n" for i, (code, e, n, z) in enumerate(points, start=1)]
    (FOLDER / name).write_text("".join(lines), encoding="ascii", newline="\n")


def write_boundary():
    lines = ["1\n", "0\n"]
    for i, (u, v) in enumerate(BOUNDARY, start=1):
        e, n = to_grid(u, v)
        lines.append(f"B{i},{n:.3f},{e:.3f},{height(u, v):.3f}\n")
    (FOLDER / "boundary.waa").write_text("".join(lines), encoding="ascii", newline="\n")


def main():
    rng = random.Random(SEED)
    write_points("ground.csv", "G", with_repeats(survey(rng), rng))
    write_points("design.csv", "P", design())
    write_boundary()


if __name__ == "__main__":
    main()
