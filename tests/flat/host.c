/* A host in C: every function of the flat interface, and nothing else of the library. It is run by itself and under
   valgrind, in an empty folder of its own: host FOLDER. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <OrvikDTMAlgorithm/api/orvikdtm.h>

static int failures = 0;

#define CHECK(condition)                                             \
  do {                                                               \
    if (!(condition)) {                                              \
      printf("%s:%d: not so: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                    \
    }                                                                \
  } while (0)

/* ---- What the callbacks have received */

enum { kMost = 64 };

static int lines = 0;
static int hull_lines = 0;
static double longest_x = 0.0;
static int points = 0;
static SurfacePoint last_point;
static SurfacePoint* own_points[kMost];
static int owned = 0;
static bool keep_points = false;
static int surfaces = 0;
static DTMSurface* last_surface = NULL;
static int vertices = 0;
static RangePoint last_vertex;

static void on_line(DrawLine* line) {
  ++lines;
  if (line->flag == 1) ++hull_lines;
  if (fabs(line->endX - line->startX) > longest_x) longest_x = fabs(line->endX - line->startX);
}

static void on_point(SurfacePoint* point) {
  ++points;
  last_point = *point;
  if (keep_points && owned < kMost) own_points[owned++] = point;
}

static void on_surface(DTMSurface* surface) {
  ++surfaces;
  last_surface = surface;
}

static void on_vertex(RangePoint* vertex) {
  ++vertices;
  last_vertex = *vertex;
}

static void forget(void) {
  lines = hull_lines = points = surfaces = vertices = owned = 0;
  longest_x = 0.0;
}

/* ---- Files */

static const char* folder = ".";
static const char* const labels = "Report,Surface,Level,Volumes,Cut,Fill,2D,3D,P2D,P3D,Cut areas,Fill areas";

/* Good until the third call after it. */
static const char* path(const char* name) {
  static char buffers[3][1024];
  static int next = 0;
  char* buffer = buffers[next];
  next = (next + 1) % 3;
  snprintf(buffer, sizeof buffers[0], "%s/%s", folder, name);
  return buffer;
}

static void write_file(const char* name, const char* contents) {
  FILE* file = fopen(path(name), "wb");
  CHECK(file != NULL);
  if (file == NULL) return;
  fputs(contents, file);
  fclose(file);
}

static bool file_holds(const char* name, const char* text) {
  static char contents[8192];
  FILE* file = fopen(path(name), "rb");
  size_t length;
  if (file == NULL) return false;
  length = fread(contents, 1, sizeof contents - 1, file);
  fclose(file);
  contents[length] = '\0';
  return strstr(contents, text) != NULL;
}

/* ---- The steps */

/* Ten by ten, the south-west corner at e = 100, n = 200. */
static void add_square(unsigned int index, const char* name, double west, double east) {
  CHECK(addDTMSurface(name) == getSurface(index));
  CHECK(addSurfacePoint(index, "SW", 200, 100, west) == 1);
  CHECK(addSurfacePoint(index, "SE", 200, 110, east) == 1);
  CHECK(addSurfacePoint(index, "NE", 210, 110, east) == 1);
  CHECK(addSurfacePoint(index, "NW", 210, 100, west) == 1);
}

static void without_a_library(void) {
  double z = 77.0;
  setCallBack(on_line, on_point, on_surface, on_vertex);
  CHECK(addDTMSurface("S") == NULL);
  CHECK(getSurface(0) == NULL);
  CHECK(loadDTMSurface(path("absent.ttin"), 0) == NULL);
  CHECK(setCurrentDTMSurfaceLib(0) == 0);
  CHECK(deleteDTMSurface(0) == 0);
  CHECK(releaseDTMSurface(0) == 0);
  CHECK(saveSurface(0, path("s.ttin")) == 0);
  CHECK(exportFileSJW(0, path("s.sjw")) == 0);
  CHECK(previewDTMSurface(0, 0, 1, 0, 1) == 0);
  CHECK(addSurfacePoint(0, "P", 1, 2, 3) == 0);
  CHECK(updateSurfacePoint(0, 0, "P", 1, 2, 3) == 0);
  CHECK(deleteSurfacePoint(0, 0) == 0);
  CHECK(getSurfacePoints(0) == 0);
  CHECK(loadSurfacePointsFile(0, path("absent.csv")) == 0);
  CHECK(checkSurfacePoint(0, 205, 105, &z) == 0 && z == 77.0);
  getSurfaceByPath(folder, ".ttin");
  CHECK(lines + points + surfaces + vertices == 0);
  setCallBack(NULL, NULL, NULL, NULL);
}

static void libraries(void) {
  DTMSurfaceLib* first = newDTMSurfaceLib();
  DTMSurfaceLib* second;
  CHECK(strlen(libraryVersion()) >= strlen("0.0.0"));
  CHECK(first != NULL);
  CHECK(setCurrentDTMSurfaceLib(1) == 0);
  second = newDTMSurfaceLib();
  CHECK(second != NULL && second != first);
  CHECK(addDTMSurface("in the second") != NULL);
  CHECK(setCurrentDTMSurfaceLib(0) == 1);
  CHECK(getSurface(0) == NULL);
  CHECK(setCurrentDTMSurfaceLib(1) == 1);
  CHECK(releaseDTMSurface(0) == 1);
  CHECK(setCurrentDTMSurfaceLib(0) == 1);
}

/* All of this twice, without callbacks and with them: the results are the same. */
static void points_and_preview(bool called_back) {
  double z = 0.0;
  forget();
  add_square(0, "a ground with a name of more than 23 bytes", 15, 16);
  CHECK(updateSurfacePoint(0, 3, "replaced", 210, 100, 15) == 1);
  CHECK(updateSurfacePoint(0, 4, "P", 1, 2, 3) == 0);
  CHECK(deleteSurfacePoint(0, 4) == 0);
  CHECK(checkSurfacePoint(0, 205, 105, &z) == 1 && z == 15.5);
  CHECK(checkSurfacePoint(0, 305, 105, &z) == 0 && z == 15.5);
  CHECK(getSurfacePoints(0) == 1);
  CHECK(previewDTMSurface(0, 102, 108, 190, 220) == 1);
  CHECK(previewDTMSurface(0, 500, 600, 500, 600) == 1);
  CHECK(previewDTMSurface(1, 0, 1, 0, 1) == 0);
  if (called_back) {
    CHECK(points == 4);
    CHECK(strcmp(last_point.pointName, "replaced") == 0);
    CHECK(strcmp(last_point.surfaceName, "a ground with a name of") == 0);
    CHECK(last_point.n == 210 && last_point.e == 100 && last_point.z == 15);
    CHECK(lines > hull_lines && hull_lines == 2 && longest_x == 6.0);
  } else {
    CHECK(points == 0 && lines == 0);
  }
  CHECK(releaseDTMSurface(0) == 1);
}

static void point_files(bool called_back) {
  forget();
  write_file("points.csv", "A,code,100,200,1\nB,,110,200,2\nC,,110,210,3\nshort,,1,2\n");
  addDTMSurface("S");
  keep_points = true;
  CHECK(loadSurfacePointsFile(0, path("points.csv")) == 1);
  CHECK(loadSurfacePointsFile(0, path("points.txt")) == 0);
  keep_points = false;
  CHECK(releaseDTMSurface(0) == 1);
  CHECK(owned == (called_back ? 3 : 0));
  while (owned > 0) {
    SurfacePoint* mine = own_points[--owned];
    CHECK(mine->e >= 100 && mine->n >= 200 && strcmp(mine->surfaceName, "S") == 0);
    freeSurfacePoint(mine);
  }
  freeSurfacePoint(NULL);
}

static void surface_files(void) {
  DTMSurface* loaded;
  forget();
  add_square(0, "ground", 10, 10);
  add_square(1, "design", 12, 12);
  CHECK(saveSurface(0, path("ground.ttin")) == 1);
  CHECK(saveSurface(1, path("design.ttin")) == 1);
  CHECK(saveSurface(0, path("absent/ground.ttin")) == 0);
  CHECK(exportFileSJW(1, path("design.sjw")) == 1);
  CHECK(releaseDTMSurface(1) == 1 && releaseDTMSurface(0) == 1 && getSurface(0) == NULL);

  loaded = loadDTMSurface(path("ground.ttin"), 0);
  CHECK(loaded != NULL && loaded == getSurface(0));
  CHECK(loadDTMSurface(path("ground.ttin"), 1) == NULL);
  getSurfaceByPath(folder, ".TTIN");
  CHECK(surfaces == 2 && last_surface == getSurface(2));
  getSurfaceByPath(folder, ".sjw");
  CHECK(surfaces == 3 && last_surface == getSurface(3));
  while (getSurface(0) != NULL) releaseDTMSurface(0);

  write_file("to delete.ttin", "x");
  CHECK(deleteSurface(path("to delete.ttin")) == 1);
  CHECK(deleteSurface(path("to delete.ttin")) == 1);
}

static void boundary(void) {
  bool first = false;
  bool second = true;
  forget();
  CHECK(deleteRangePoint(0) == 0);
  CHECK(updateRangePoint(0, "A", 1, 2, 3) == 0);
  CHECK(addRangePoint("A", 200, 100, 0) == 1);
  CHECK(addRangePoint("B", 200, 104, 0) == 1);
  CHECK(addRangePoint("C", 210, 105, 0) == 1);
  CHECK(addRangePoint("D", 210, 100, 0) == 1);
  CHECK(addRangePoint("E", 205, 90, 0) == 1);
  CHECK(updateRangePoint(1, "B", 200, 105, 0) == 1);
  CHECK(deleteRangePoint(4) == 1);
  CHECK(saveRangePointFile(path("half.waa"), true, false) == 1);
  CHECK(loadRangePointFile(path("half.txt"), &first, &second) == 0);
  CHECK(loadRangePointFile(path("half.waa"), &first, &second) == 1);
  CHECK(first && !second);
  CHECK(vertices == 4 && strcmp(last_vertex.name, "D") == 0 && last_vertex.n == 210 && last_vertex.e == 100);
}

static void volumes(void) {
  FillCutResult* result = getFillCut(path("ground.ttin"), 8.0, false);
  CHECK(result != NULL);
  if (result == NULL) return;
  CHECK(fabs(result->cutVolume - 200.0) < 1e-9 && result->fillVolume == 0.0);
  CHECK(fabs(result->cutTwoDArea - 100.0) < 1e-9 && fabs(result->cutThreeDArea - 100.0) < 1e-9);
  CHECK(result->fillTwoDArea == 0.0 && result->fillThreeDArea == 0.0);
  CHECK(fabs(result->twoDArea - 100.0) < 1e-9 && fabs(result->threeDArea - 100.0) < 1e-9);
  CHECK(fabs(result->perimeterTwoD - 40.0) < 1e-9 && fabs(result->perimeterThreeD - 40.0) < 1e-9);
  CHECK(strcmp(result->surfaceName, "ground") == 0 && strcmp(result->refSurfaceName, "") == 0);
  freeFillCutResult(result);

  result = getFillCut(path("ground.ttin"), 8.0, true);
  CHECK(result != NULL && fabs(result->cutVolume - 100.0) < 1e-6);
  freeFillCutResult(result);

  result = getFillCut2(path("ground.ttin"), path("design.ttin"), false);
  CHECK(result != NULL && fabs(result->fillVolume - 200.0) < 1e-6);
  CHECK(result != NULL && strcmp(result->refSurfaceName, "design") == 0);
  freeFillCutResult(result);

  CHECK(getFillCut(path("absent.ttin"), 8.0, false) == NULL);
  CHECK(getFillCut2(path("ground.ttin"), path("ground.csv"), false) == NULL);
  freeFillCutResult(NULL);
}

static void reports(void) {
  CHECK(exportVolumeReport(path("ground.ttin"), 8.0, false, 1, labels, path("level.txt")) == 1);
  CHECK(file_holds("level.txt", "Level               8.0000              \n"));
  CHECK(file_holds("level.txt", "Cut                 200.0000            \n"));
  CHECK(exportVolumeReport(path("ground.ttin"), 8.0, true, 0, labels, path("level.html")) == 1);
  CHECK(file_holds("level.html", "<title>Report</title>"));
  CHECK(exportVolumeReport2(path("ground.ttin"), path("design.ttin"), false, 1, labels, path("design.txt")) == 1);
  CHECK(file_holds("design.txt", "Level               design              \n"));
  CHECK(file_holds("design.txt", "Fill                200.0000            \n"));
  CHECK(exportVolumeReport2(path("ground.ttin"), path("design.sjw"), false, 0, labels, path("design.html")) == 1);
  CHECK(exportVolumeReport(path("ground.ttin"), 8.0, false, 2, labels, path("none")) == 0);
  CHECK(!file_holds("none", ""));
}

/* ---- What stays in memory on purpose: see valgrind.supp */

static void leave_what_a_deleted_surface_held(void) {
  double z = 0.0;
  add_square(0, "deleted", 15, 16);
  CHECK(checkSurfacePoint(0, 205, 105, &z) == 1);
  CHECK(deleteDTMSurface(0) == 1);
}

static void add_the_point_whose_record_stays(unsigned int index) {
  CHECK(addSurfacePoint(index, "stays", 220, 100, 15) == 1);
}

static void delete_points(void) {
  add_square(0, "S", 15, 16);
  add_the_point_whose_record_stays(0);
  CHECK(deleteSurfacePoint(0, 4) == 1); /* this record stays */
  CHECK(deleteSurfacePoint(0, 0) == 1); /* this one does not */
  CHECK(releaseDTMSurface(0) == 1);
}

int main(int argc, char** argv) {
  if (argc > 1) folder = argv[1];
  without_a_library();
  libraries();
  points_and_preview(false);
  point_files(false);
  CHECK(setCallBack(on_line, on_point, on_surface, on_vertex) == 1);
  points_and_preview(true);
  point_files(true);
  surface_files();
  boundary();
  volumes();
  reports();
  leave_what_a_deleted_surface_held();
  delete_points();
  printf(failures == 0 ? "All is well.\n" : "%d failures\n", failures);
  return failures == 0 ? 0 : 1;
}
