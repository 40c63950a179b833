"""Prints the benchmarks' table from the JSON that they leave: medians, ratios, and what the ratios have to reach.

The first argument is the JSON file. The exit status is 1 when a ratio that must be reached is missed."""

import json
import re
import sys

MILLISECOND, BYTES_PER_POINT = "ms", "B/point"

# What is shown, the measurement and what it is divided by, what the ratio (or the measurement itself, where it is divided by
# nothing) must reach and what it aims at; None where it is for information only.
UNIFORM = "build/ours/uniform_1m"
ROWS = [
    ("1 M uniform : CGAL", UNIFORM, "build/cgal/uniform_1m", 0.7, 0.4),
    ("1 M uniform, moved far off : CGAL", "build/ours/uniform_1m_offset", "build/cgal/uniform_1m_offset", None, None),
    ("1 M grid : CGAL", "build/ours/grid_1m", "build/cgal/grid_1m", 0.7, 0.35),
    ("1 M grid, rotated : CGAL", "build/ours/grid_1m_rotated", "build/cgal/grid_1m_rotated", None, None),
    ("1 M scan lines : CGAL", "build/ours/scan_lines_1m", "build/cgal/scan_lines_1m", None, None),
    ("1 M clusters : CGAL", "build/ours/clusters_1m", "build/cgal/clusters_1m", None, None),
    ("1 M with repeats : CGAL", "build/ours/repeats_1m", "build/cgal/repeats_1m", None, None),
    ("1 M uniform, moved far off : own uniform", "build/ours/uniform_1m_offset", UNIFORM, 1.5, 1.0),
    ("1 M grid : own uniform", "build/ours/grid_1m", UNIFORM, 1.5, 1.0),
    ("1 M grid, rotated : own uniform", "build/ours/grid_1m_rotated", UNIFORM, 1.5, 1.0),
    ("1 M scan lines : own uniform", "build/ours/scan_lines_1m", UNIFORM, 1.5, 1.0),
    ("1 M clusters : own uniform", "build/ours/clusters_1m", UNIFORM, 1.5, 1.0),
    ("1 M with repeats : own uniform", "build/ours/repeats_1m", UNIFORM, 1.5, 1.0),
    ("100 k uniform, as swept : CGAL", "build/ours/uniform_100k_sweep", "build/cgal/uniform_100k_sweep", 1.3, 0.8),
    ("100 k uniform, exact : CGAL", "build/ours/uniform_100k_exact", "build/cgal/uniform_100k_exact", None, None),
    ("200 k uniform, as swept : CGAL", "build/ours/uniform_200k_sweep", "build/cgal/uniform_200k_sweep", None, None),
    ("10 k uniform, as swept : CGAL", "build/ours/uniform_10k_sweep", "build/cgal/uniform_10k_sweep", None, None),
    ("100 k collinear and an apex : CGAL", "build/ours/collinear_100k_apex", "build/cgal/collinear_100k_apex", None, None),
    ("100 k uniform, as swept : GEOS", "build/ours/uniform_100k_sweep", "build/geos/uniform_100k_sweep", None, None),
    ("10 k uniform, as swept : GEOS", "build/ours/uniform_10k_sweep", "build/geos/uniform_10k_sweep", None, None),
    ("growth, 100 k to 1 M", UNIFORM, "build/ours/uniform_100k_exact", 12.0, 10.5),
    ("growth, 100 k to 200 k, as swept", "build/ours/uniform_200k_sweep", "build/ours/uniform_100k_sweep", None, None),
    ("peak memory, 1 M uniform", "memory/ours/uniform_1m", None, 400.0, 250.0),
    ("peak memory, 1 M uniform : CGAL", "memory/ours/uniform_1m", "memory/cgal/uniform_1m", None, None),
    ("destroying 1 M : building it", "destroy/ours/uniform_1m", UNIFORM, 0.1, 0.03),
    ("statistics of 2 M triangles : building", "statistics/ours/uniform_1m", UNIFORM, 0.15, 0.05),
    ("20,000 edits and a height : bulk build", "edits/one_by_one/uniform_20k", "edits/bulk/uniform_20k", 3.0, 1.5),
    ("exact volume, 100 k against 100 k : building one", "exact_volume/surfaces/uniform_100k_exact",
     "build/ours/uniform_100k_exact", None, None),
    ("exact volume, 1 M against 1 M : building one", "exact_volume/surfaces/uniform_1m", UNIFORM, None, None),
    ("exact volume of 2 M triangles, level : building", "exact_volume/level/uniform_1m", UNIFORM, None, None),
    ("topology of 1 M faces : building 500 k", "topology/ours/uniform_500k", "build/ours/uniform_500k", 1.0, 0.5),
    (".sjw of 200 k triangles, there and back : building", "sjw/ours/uniform_100k_sweep", "build/ours/uniform_100k_sweep", 2.0, 0.8),
    ("LandXML of 50 MB : TinyXML", "landxml/ours/uniform_200k_sweep", "landxml/tinyxml/uniform_200k_sweep", 2.0, 1.3),
    ("save 1 M points : one write", "save/ours/uniform_1m", "save/at_once/uniform_1m", 1.5, 1.1),
    ("save 1 M points, by the clock : one write", "save_clock/ours/uniform_1m", "save_clock/at_once/uniform_1m", 1.5, 1.1),
    ("load 1 M points : building", "load/ours/uniform_1m", UNIFORM, 0.5, 0.2),
    ("read 1 M lines of points : building", "read_points/ours/uniform_1m_offset", "build/ours/uniform_1m_offset", 0.5, 0.15),
]


def name_of(entry):
    """The benchmark's own name, without what the framework appends."""
    return re.sub(r"/(iterations:|repeats:|manual_time).*$", "", entry["run_name"])


def medians_and_errors(report):
    medians, errors = {}, {}
    for entry in report["benchmarks"]:
        name = name_of(entry)
        if entry.get("error_occurred"):
            errors[name] = entry["error_message"]
        elif entry.get("aggregate_name") == "median":
            is_memory = name.startswith("memory/")
            medians[name] = entry["bytes_per_point"] if is_memory else entry["real_time"]
    return medians, errors


def verdict_of(value, must, aim):
    if must is None:
        return ""
    if value is None or value > must:
        return "MISSED"
    return "aim reached" if value <= aim else "reached"


def text_of(value, digits):
    return "-" if value is None else f"{value:.{digits}f}"


def row_cells(row, medians, errors):
    what, ours_name, peer_name, must, aim = row
    ours, peer = medians.get(ours_name), medians.get(peer_name)
    unit = BYTES_PER_POINT if ours_name.startswith("memory/") else MILLISECOND
    is_ratio = peer_name is not None
    ratio = ours / peer if is_ratio and ours is not None and peer else None
    verdict = verdict_of(ratio if is_ratio else ours, must, aim)
    if ours_name in errors:
        verdict = f"{verdict} ({errors[ours_name]})".lstrip()
    elif peer_name is not None and peer is None:
        verdict = "not measured: no peer"
    ours_text = f"{text_of(ours, 1)} {unit}"
    return [what, ours_text, text_of(peer, 1), text_of(ratio, 3), text_of(must, 2), text_of(aim, 2), verdict]


def print_table(rows):
    widths = [max(len(row[i]) for row in rows) for i in range(len(rows[0]))]
    for number, row in enumerate(rows):
        cells = [row[0].ljust(widths[0])]
        cells += [cell.rjust(width) for cell, width in zip(row[1:-1], widths[1:-1])]
        print("| " + " | ".join(cells + [row[-1]]) + " |")
        if number == 0:
            marks = ["-" * widths[0]] + ["-" * (width - 1) + ":" for width in widths[1:-1]] + ["---"]
            print("| " + " | ".join(marks) + " |")


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        medians, errors = medians_and_errors(json.load(file))
    header = ["what", "ours", "peer", "ratio", "must reach", "aim", "verdict"]
    rows = [row_cells(row, medians, errors) for row in ROWS]
    print_table([header] + rows)
    return 1 if any(row[-1].startswith("MISSED") for row in rows) else 0


if __name__ == "__main__":
    sys.exit(main())
