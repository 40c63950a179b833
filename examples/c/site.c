/* A host in C: from survey files to a volume report, through the flat interface alone.
 *
 *   site SITE GROUND OUT
 *
 * SITE is the folder of the sample site, GROUND a surface of its ground (LandXML, .sjw or .ttin), OUT an existing
 * folder for what is written. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <OrvikDTMAlgorithm/api/orvikdtm.h>

enum { kLongestPath = 1024 };

static void require(int done, const char* what) {
  if (done) return;
  fprintf(stderr, "site: this failed: %s\n", what);
  exit(1);
}

/* folder/name in a buffer of the caller's */
static const char* joined(char* buffer, const char* folder, const char* name) {
  require(snprintf(buffer, kLongestPath, "%s/%s", folder, name) < kLongestPath, "a path that fits");
  return buffer;
}

/* ---- What the callbacks receive. Each record is copied or counted at once: it may be gone after the call. */

static struct {
  int points;
  SurfacePoint first;
  DrawLine* lines;
  int line_count;
  int line_room;
  int surfaces;
  int vertices;
} received;

static void on_read_point(SurfacePoint* point) { /* of a file: the record is ours */
  if (received.points++ == 0) received.first = *point;
  freeSurfacePoint(point);
}

static void on_line(DrawLine* line) {
  if (received.line_count == received.line_room) {
    received.line_room = received.line_room == 0 ? 256 : 2 * received.line_room;
    received.lines = realloc(received.lines, (size_t)received.line_room * sizeof *received.lines);
    require(received.lines != NULL, "memory for the lines");
  }
  received.lines[received.line_count++] = *line;
}

static void on_surface(DTMSurface* surface) {
  (void)surface;
  ++received.surfaces;
}

static void on_vertex(RangePoint* vertex) {
  (void)vertex;
  ++received.vertices;
}

/* ---- The steps */

static void build(const char* site) {
  char path[kLongestPath];
  require(newDTMSurfaceLib() != NULL, "making a library");
  require(addDTMSurface("design") != NULL, "adding a surface");
  require(loadSurfacePointsFile(0, joined(path, site, "design.csv")), "reading design.csv");
  printf("Built     the design of %d points\n", received.points);
}

/* Raises the first point, looks at the height there, and puts the point back as the last one. */
static void edit(void) {
  const SurfacePoint* p = &received.first;
  double z = 0.0;
  require(updateSurfacePoint(0, 0, p->pointName, p->n, p->e, p->z + 0.5), "replacing a point");
  require(checkSurfacePoint(0, p->n, p->e, &z), "asking for a height");
  require(deleteSurfacePoint(0, 0), "deleting a point");
  require(addSurfacePoint(0, p->pointName, p->n, p->e, p->z), "adding a point");
  printf("Edited    point %s: raised to %.4f, deleted, added as surveyed at %.4f\n", p->pointName, z, p->z);
}

static void write_svg(FILE* svg) {
  const DrawLine* lines = received.lines;
  double west = lines[0].startX, east = west, south = lines[0].startY, north = south;
  int i;
  for (i = 0; i < received.line_count; ++i) {
    west = fmin(west, fmin(lines[i].startX, lines[i].endX));
    east = fmax(east, fmax(lines[i].startX, lines[i].endX));
    south = fmin(south, fmin(lines[i].startY, lines[i].endY));
    north = fmax(north, fmax(lines[i].startY, lines[i].endY));
  }
  fprintf(svg, "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %.3f %.3f\">\n", east - west, north - south);
  for (i = 0; i < received.line_count; ++i) {
    fprintf(svg, "<line x1=\"%.3f\" y1=\"%.3f\" x2=\"%.3f\" y2=\"%.3f\" stroke=\"%s\" stroke-width=\"0.2\"/>\n",
            lines[i].startX - west, north - lines[i].startY, lines[i].endX - west, north - lines[i].endY,
            lines[i].flag == 1 ? "#c00" : "#888");
  }
  fprintf(svg, "</svg>\n");
}

static void preview(const char* out) {
  char path[kLongestPath];
  FILE* svg;
  require(previewDTMSurface(0, -INFINITY, INFINITY, -INFINITY, INFINITY), "drawing the design");
  require(received.line_count > 0, "receiving lines");
  svg = fopen(joined(path, out, "design.svg"), "w");
  require(svg != NULL, "opening design.svg");
  write_svg(svg);
  require(fclose(svg) == 0, "writing design.svg");
  printf("Drew      %d lines to design.svg\n", received.line_count);
  free(received.lines);
}

static void save_and_list(const char* out) {
  char path[kLongestPath];
  require(saveSurface(0, joined(path, out, "design.ttin")), "saving the design");
  getSurfaceByPath(out, ".ttin");
  printf("Saved     design.ttin; the folder holds %d such file(s)\n", received.surfaces);
}

static void bound(const char* site) {
  char path[kLongestPath];
  bool first = false;
  bool second = false;
  require(loadRangePointFile(joined(path, site, "boundary.waa"), &first, &second), "reading boundary.waa");
  printf("Bounded   by %d vertices, switches %d and %d\n", received.vertices, first, second);
}

static void measure(const char* ground, const char* out) {
  char design[kLongestPath];
  FillCutResult* result = getFillCut2(ground, joined(design, out, "design.ttin"), true);
  require(result != NULL, "measuring the volume");
  printf("Measured  %s against %s\n", result->surfaceName, result->refSurfaceName);
  printf("Cut       %.4f over %.4f, %.4f along the surface\n", result->cutVolume, result->cutTwoDArea,
         result->cutThreeDArea);
  printf("Fill      %.4f over %.4f, %.4f along the surface\n", result->fillVolume, result->fillTwoDArea,
         result->fillThreeDArea);
  freeFillCutResult(result);
}

static void report(const char* ground, const char* out) {
  static const char* const labels =
      "Volume report,Ground,Design,Volumes,Cut volume,Fill volume,Plan area,Surface area,Plan perimeter,"
      "Surface perimeter,Cut areas,Fill areas";
  char design[kLongestPath];
  char path[kLongestPath];
  joined(design, out, "design.ttin");
  require(exportVolumeReport2(ground, design, true, 0, labels, joined(path, out, "volume.html")), "the HTML report");
  require(exportVolumeReport2(ground, design, true, 1, labels, joined(path, out, "volume.txt")), "the text report");
  printf("Reported  in volume.html and volume.txt\n");
}

int main(int argc, char** argv) {
  if (argc != 4) {
    fprintf(stderr, "usage: site SITE GROUND OUT\n");
    return 2;
  }
  setCallBack(on_line, on_read_point, on_surface, on_vertex);
  build(argv[1]);
  edit();
  preview(argv[3]);
  save_and_list(argv[3]);
  bound(argv[1]);
  measure(argv[2], argv[3]);
  report(argv[2], argv[3]);
  while (releaseDTMSurface(0)) {
  }
  return 0;
}
