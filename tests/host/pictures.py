"""Reading back what the host draws: SVG as polygons in survey coordinates, DXF as polylines."""

import re
import xml.etree.ElementTree as ElementTree

SVG = "{http://www.w3.org/2000/svg}"
NUMBER = re.compile(r"-?(?:\d+\.?\d*|\.\d+)")


def path_points(data):
    """The lines of a path, each a list of points and whether it is closed."""
    lines = []
    for part in re.findall(r"M[^M]*", data):
        numbers = [float(n) for n in NUMBER.findall(part)]
        points = [(numbers[0], numbers[1])]
        for dx, dy in zip(numbers[2::2], numbers[3::2]):
            points.append((points[-1][0] + dx, points[-1][1] + dy))
        lines.append((points, part.endswith("z")))
    return lines


def double_area(points):
    return sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(points, points[1:] + points[:1]))


class Picture:
    def __init__(self, text):
        self.root = ElementTree.fromstring(text)
        self.map = next(e for e in self.root.iter(SVG + "g") if e.get("class") == "map")
        self.scale, self.left, self.top, self.west, self.north = (
            float(self.map.get("data-" + name)) for name in ("scale", "left", "top", "west", "north"))

    def paths(self, name):
        return [e for e in self.map.iter(SVG + "path") if name in e.get("class", "").split()]

    def lines(self, name):
        """The lines of all paths of a class, in survey coordinates."""
        return [self.survey(points) for e in self.paths(name) for points, _ in path_points(e.get("d"))]

    def survey(self, points):
        return [(self.west + (x - self.left) / self.scale, self.north - (y - self.top) / self.scale)
                for x, y in points]

    def area(self, name):
        """What the loops of a class enclose: as they are drawn, outer ones and holes run in opposite directions."""
        return sum(abs(sum(double_area(points) for points, _ in path_points(e.get("d")))) / 2
                   for e in self.paths(name)) / self.scale ** 2

    def texts(self):
        return [e.text for e in self.root.iter(SVG + "text")]


class Drawing:
    """A DXF file: pairs of a group code and a value."""

    def __init__(self, text):
        lines = text.split("\n")
        assert lines[-1] == "" and len(lines) % 2 == 1
        self.pairs = [(int(code), value) for code, value in zip(lines[0:-1:2], lines[1:-1:2])]
        self.sections = [b[1] for a, b in zip(self.pairs, self.pairs[1:]) if a == (0, "SECTION")]
        self.layers = [self.after(i, 2) for i, pair in enumerate(self.pairs) if pair == (0, "LAYER")]
        self.polylines = []
        for i, pair in enumerate(self.pairs):
            if pair == (0, "POLYLINE"):
                self.polylines.append({"layer": self.after(i, 8), "level": float(self.after(i, 30)),
                                       "closed": self.after(i, 70) == "1", "points": []})
            if pair == (0, "VERTEX"):
                point = tuple(float(self.after(i, code)) for code in (10, 20, 30))
                self.polylines[-1]["points"].append(point)

    def after(self, at, code):
        """The value of the first pair with this code in the entity that begins at `at`."""
        for found, value in self.pairs[at + 1:]:
            if found == 0:
                break
            if found == code:
                return value
        raise AssertionError(f"no group {code}")
