"""A host in Python: from survey files to a volume report, through the flat interface.

    survey_site.py SITE GROUND OUT

SITE is the folder of the sample site, GROUND a surface of its ground (LandXML, .sjw or .ttin), OUT an existing folder
for what is written.
"""

import ctypes
import math
import os
import sys
from pathlib import Path

import orvikdtm

try:
    dtm = orvikdtm.load()
except OSError as reason:
    sys.exit(f"survey_site.py: {reason}")


def require(done, what):
    if not done:
        sys.exit(f"survey_site.py: this failed: {what}")


class Received:
    """What the callbacks are handed. Each record is copied at once: it may be gone after the call."""

    def __init__(self):
        self.points, self.lines, self.surfaces, self.vertices = [], [], [], []
        self.callbacks = (orvikdtm.DrawLineCallback(self.on_line), orvikdtm.SurfacePointCallback(self.on_read_point),
                          orvikdtm.SurfaceCallback(self.surfaces.append), orvikdtm.RangePointCallback(self.on_vertex))
        dtm.setCallBack(*self.callbacks)

    def on_read_point(self, point):  # of a file: the record is ours
        p = point.contents
        self.points.append((p.pointName, p.n, p.e, p.z))
        dtm.freeSurfacePoint(point)

    def on_line(self, line):
        c = line.contents
        self.lines.append((c.startX, c.startY, c.endX, c.endY, c.flag))

    def on_vertex(self, vertex):
        self.vertices.append(vertex.contents.name)


def build(site, received):
    require(dtm.newDTMSurfaceLib(), "making a library")
    require(dtm.addDTMSurface(b"design"), "adding a surface")
    require(dtm.loadSurfacePointsFile(0, os.fsencode(site / "design.csv")), "reading design.csv")
    print(f"Built     the design of {len(received.points)} points")


def edit(received):
    """Raises the first point, looks at the height there, and puts the point back as the last one."""
    name, n, e, z = received.points[0]
    height = ctypes.c_double()
    require(dtm.updateSurfacePoint(0, 0, name, n, e, z + 0.5), "replacing a point")
    require(dtm.checkSurfacePoint(0, n, e, height), "asking for a height")
    require(dtm.deleteSurfacePoint(0, 0), "deleting a point")
    require(dtm.addSurfacePoint(0, name, n, e, z), "adding a point")
    print(f"Edited    point {name.decode()}: raised to {height.value:.4f}, deleted, added as surveyed at {z:.4f}")


def preview(out, received):
    require(dtm.previewDTMSurface(0, -math.inf, math.inf, -math.inf, math.inf), "drawing the design")
    eastings = [x for line in received.lines for x in (line[0], line[2])]
    northings = [y for line in received.lines for y in (line[1], line[3])]
    west, north = min(eastings), max(northings)
    size = f"{max(eastings) - west:.3f} {north - min(northings):.3f}"
    with open(out / "design.svg", "w", encoding="ascii", newline="\n") as svg:
        svg.write(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {size}">\n')
        for x1, y1, x2, y2, flag in received.lines:
            svg.write(f'<line x1="{x1 - west:.3f}" y1="{north - y1:.3f}" x2="{x2 - west:.3f}" y2="{north - y2:.3f}" '
                      f'stroke="{"#c00" if flag == 1 else "#888"}" stroke-width="0.2"/>\n')
        svg.write("</svg>\n")
    print(f"Drew      {len(received.lines)} lines to design.svg")


def save_and_list(out, received):
    require(dtm.saveSurface(0, os.fsencode(out / "design.ttin")), "saving the design")
    dtm.getSurfaceByPath(os.fsencode(out), b".ttin")
    print(f"Saved     design.ttin; the folder holds {len(received.surfaces)} such file(s)")


def bound(site, received):
    first, second = ctypes.c_bool(), ctypes.c_bool()
    require(dtm.loadRangePointFile(os.fsencode(site / "boundary.waa"), first, second), "reading boundary.waa")
    print(f"Bounded   by {len(received.vertices)} vertices, switches {int(first.value)} and {int(second.value)}")


def measure(ground, out):
    result = dtm.getFillCut2(os.fsencode(ground), os.fsencode(out / "design.ttin"), True)
    require(result, "measuring the volume")
    r = result.contents
    print(f"Measured  {r.surfaceName.decode()} against {r.refSurfaceName.decode()}")
    print(f"Cut       {r.cutVolume:.4f} over {r.cutTwoDArea:.4f}, {r.cutThreeDArea:.4f} along the surface")
    print(f"Fill      {r.fillVolume:.4f} over {r.fillTwoDArea:.4f}, {r.fillThreeDArea:.4f} along the surface")
    dtm.freeFillCutResult(result)


def report(ground, out):
    labels = (b"Volume report,Ground,Design,Volumes,Cut volume,Fill volume,Plan area,Surface area,Plan perimeter,"
              b"Surface perimeter,Cut areas,Fill areas")
    for kind, name in enumerate(("volume.html", "volume.txt")):
        require(dtm.exportVolumeReport2(os.fsencode(ground), os.fsencode(out / "design.ttin"), True, kind, labels,
                                        os.fsencode(out / name)), name)
    print("Reported  in volume.html and volume.txt")


def main():
    if len(sys.argv) != 4:
        sys.exit("usage: survey_site.py SITE GROUND OUT")
    site, ground, out = map(Path, sys.argv[1:])
    received = Received()
    build(site, received)
    edit(received)
    preview(out, received)
    save_and_list(out, received)
    bound(site, received)
    measure(ground, out)
    report(ground, out)
    while dtm.releaseDTMSurface(0):
        pass


if __name__ == "__main__":
    main()
