/*
 * OrvikDTMAlgorithm for programs that cannot use its classes: plain functions with C linkage, for C11 and C++.
 *
 * Conventions
 *
 *  1. State. The functions act on process-wide state: a list of surface libraries and the current one of them, four
 *     callbacks, and one boundary that is being edited. All surface indices are positions, from 0, in the current
 *     library; deleting a surface moves later ones down by one. An index that names nothing changes nothing.
 *  2. Results. An int is 1 for success and 0 for failure, a pointer is null on failure. No exception and no message
 *     leaves a function, and no failure ends the process: when memory runs out that is a failure like any other, and
 *     what the function would have changed is as it was.
 *  3. Axes. n is the northing (y), e the easting (x), z the elevation. Records and arguments have n before e; a preview
 *     has x before y.
 *  4. Units. Coordinates and lengths are in one plane unit (metres as a rule), areas in its square, volumes
 *     in its cube. Numbers are doubles. Nothing depends on the process locale.
 *  5. Strings are zero-terminated bytes in the system's code page and are not kept. A name is cut after its 23rd byte
 *     (inside a character of several bytes, if it comes to that); null is the empty name. A path may separate folders
 *     by a backslash on every platform; null fails like a path that cannot be opened.
 *  6. Booleans are bool: one byte, 0 or 1.
 *  7. Ownership. Libraries and surfaces belong to this library: use a surface's pointer until the surface is deleted,
 *     and do not free it. What the host gets for itself, it frees with the function named here: a FillCutResult
 *     with freeFillCutResult, a SurfacePoint from loadSurfacePointsFile with freeSurfacePoint. Nothing else is the
 *     host's to free.
 *  8. A callback's record lives as long as that one call of the callback, unless its type says otherwise below: copy
 *     what is to be kept.
 *  9. Callbacks run inside the call, on the caller's thread, and may call every function of this header: each function
 *     hands out the records that there were when it began, and leaves out what a callback has deleted meanwhile. Each
 *     record goes to the callback that is registered when its turn comes; without one the rest is not handed out. An
 *     exception that a callback throws (or lets pass) ends the function with its failure; what the function had done
 *     before its first callback stays done, and records that have not been handed out yet are freed. A callback
 *     must not leave by longjmp.
 * 10. Threads. Nothing is locked: call these functions from one thread at a time (the classes: docs/threads.md).
 */
#pragma once

#include <OrvikDTMAlgorithm/Export.h>

#ifdef __cplusplus

#include <OrvikDTMAlgorithm/surface/DrawLine.h>
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

// The handles and the records are the classes.
inline namespace OrvikDTM {

class DTMSurface;
class DTMSurfaceLib;

extern "C" {

#else

#include <stdbool.h>
#include <stdint.h>

enum { ORVIKDTM_NAME_SIZE = 24 }; /* of a name in a record: at most 23 bytes, zeros behind them */

/* A library of surfaces, and a surface: known by their pointers only. */
typedef struct DTMSurfaceLib DTMSurfaceLib;
typedef struct DTMSurface DTMSurface;

/* A survey point. */
typedef struct SurfacePoint {
  char surfaceName[ORVIKDTM_NAME_SIZE];
  char pointName[ORVIKDTM_NAME_SIZE];
  double n;
  double e;
  double z;
} SurfacePoint;

/* A vertex of the boundary; its z is kept, but a boundary lies in plan. */
typedef struct RangePoint {
  char name[ORVIKDTM_NAME_SIZE];
  double n;
  double e;
  double z;
} RangePoint;

/* Fill and cut. TwoD is in plan, ThreeD along the surface; the four totals are the measured surface's own. */
typedef struct FillCutResult {
  double fillPerimeterTwoD;
  double fillPerimeterThreeD;
  double cutPerimeterTwoD;
  double cutPerimeterThreeD;
  double fillTwoDArea;
  double fillThreeDArea;
  double cutTwoDArea;
  double cutThreeDArea;
  double fillVolume;
  double cutVolume;
  char surfaceName[ORVIKDTM_NAME_SIZE];
  double twoDArea;
  double threeDArea;
  double perimeterTwoD;
  double perimeterThreeD;
  char refSurfaceName[ORVIKDTM_NAME_SIZE]; /* empty when measured against a level */
} FillCutResult;

/* A line of a preview, x = easting, y = northing. */
typedef struct DrawLine {
  double startX;
  double startY;
  double endX;
  double endY;
  int32_t flag; /* 0 an edge of the TIN, 1 an edge of its hull */
} DrawLine;

#endif

/* Receives the lines of a preview. */
typedef void (*DrawLineCallback)(DrawLine* line);

/* Receives points. From getSurfacePoints it is the surface's own record, good until the surface changes; from
   loadSurfacePointsFile a record of the host's own, to be freed with freeSurfacePoint. */
typedef void (*SurfacePointCallback)(SurfacePoint* point);

/* Receives the surfaces that getSurfaceByPath has loaded. They stay in the current library. */
typedef void (*SurfaceCallback)(DTMSurface* surface);

/* Receives the vertices that loadRangePointFile has read: the boundary's own records, good until it is edited or read
   again. */
typedef void (*RangePointCallback)(RangePoint* point);

/* ---- Libraries and callbacks */

/* The version of this library, such as "1.2.3". Never fails; the text is the library's. */
ORVIKDTM_API const char* libraryVersion(void);

/* Makes an empty library, the current one from now on, and returns it. It lives as long as the process. Null when out
   of memory. */
ORVIKDTM_API DTMSurfaceLib* newDTMSurfaceLib(void);

/* Makes the library at `index`, counted from 0 in the order of creation, the current one. 0 when there is none. */
ORVIKDTM_API int setCurrentDTMSurfaceLib(unsigned int index);

/* Registers the receivers of lists, in place of those before; a null one is not called. Always 1. */
ORVIKDTM_API int setCallBack(DrawLineCallback drawLine, SurfacePointCallback surfacePoint, SurfaceCallback surface,
                             RangePointCallback rangePoint);

/* ---- Surfaces of the current library. Without one, every function of this and the next section fails, deleteSurface
   excepted. */

/* Appends a new empty surface and returns it. */
ORVIKDTM_API DTMSurface* addDTMSurface(const char* name);

/* Removes a surface. Its point records and its TIN stay in memory, since they may be in use elsewhere. 0 for a bad
   index. */
ORVIKDTM_API int deleteDTMSurface(unsigned int index);

/* Removes a surface together with its point records and its TIN. 0 for a bad index. */
ORVIKDTM_API int releaseDTMSurface(unsigned int index);

/* The surface at `index`, or null for a bad index. */
ORVIKDTM_API DTMSurface* getSurface(unsigned int index);

/* Appends a surface loaded from a file and returns it: kind 0 is a ".ttin" file, 1 ".sjw", 2 LandXML ".xml". Null when
   the file cannot be loaded; nothing changes then. */
ORVIKDTM_API DTMSurface* loadDTMSurface(const char* path, int kind);

/* Loads every file in the folder `location` whose name ends in `type` (".ttin", ".sjw" or ".xml", any case) into the
   current library and hands each surface to the surface callback. Files that cannot be loaded are passed over. */
ORVIKDTM_API void getSurfaceByPath(const char* location, const char* type);

/* Writes a surface to a ".ttin" file. 0 for a bad index and when the file cannot be written whole: the earlier file
   then stays. */
ORVIKDTM_API int saveSurface(unsigned int index, const char* path);

/* Writes a surface's TIN to a ".sjw" file. 0 for a bad index, without a TIN, and when the file cannot be written whole:
   the earlier file then stays. */
ORVIKDTM_API int exportFileSJW(unsigned int index, const char* path);

/* Deletes a file. 1 when it is gone or never was there, 0 when it cannot be removed. */
ORVIKDTM_API int deleteSurface(const char* path);

/* Hands the edges of a surface's TIN (when they are fewer than 10,000) and those of its hull, cut to the rectangle of
   eastings minX to maxX and northings minY to maxY, to the line callback. An edge that leaves the rectangle exactly
   at its own start may come as a line without length. 1 also when none of them is in there; 0 for a bad index and when
   there is no TIN of at least three edges. */
ORVIKDTM_API int previewDTMSurface(unsigned int index, double minX, double maxX, double minY, double maxY);

/* ---- Points of a surface of the current library */

/* Appends a point. 0 for a bad index. */
ORVIKDTM_API int addSurfacePoint(unsigned int index, const char* pointName, double n, double e, double z);

/* Replaces the point at `pointIndex`. 0 for a bad index of either kind. */
ORVIKDTM_API int updateSurfacePoint(unsigned int index, unsigned int pointIndex, const char* pointName, double n,
                                    double e, double z);

/* Removes the point at `pointIndex`; later ones move down. The record of a point that was not the first stays in
   memory. 0 for a bad index of either kind. */
ORVIKDTM_API int deleteSurfacePoint(unsigned int index, unsigned int pointIndex);

/* Hands every point, in order, to the point callback. 1 when there is at least one, 0 when there is none and for a bad
   index. */
ORVIKDTM_API int getSurfacePoints(unsigned int index);

/* Appends the points of a point file (".dat" or ".csv", any case; name, code, easting, northing, elevation) to a
   surface and hands a copy of each to the point callback, which owns it. 1 when at least one was read, 0 otherwise and
   for a bad index. */
ORVIKDTM_API int loadSurfacePointsFile(unsigned int index, const char* path);

/* Frees a point that loadSurfacePointsFile has handed out. Null is allowed. */
ORVIKDTM_API void freeSurfacePoint(SurfacePoint* point);

/* Stores the height of a surface at northing n, easting e in *z. 0, with *z as it was, for a bad index, outside the
   surface and without a TIN. */
ORVIKDTM_API int checkSurfacePoint(unsigned int index, double n, double e, double* z);

/* ---- The boundary: one for the process, not bound to a library */

/* Appends a vertex. 0 only when out of memory. */
ORVIKDTM_API int addRangePoint(const char* name, double n, double e, double z);

/* Replaces the vertex at `index`. 0 for a bad index. */
ORVIKDTM_API int updateRangePoint(unsigned int index, const char* name, double n, double e, double z);

/* Removes the vertex at `index`; later ones move down. 0 for a bad index. */
ORVIKDTM_API int deleteRangePoint(unsigned int index);

/* Replaces the boundary by that of a boundary file (".waa" or ".csv", any case), stores the file's two switches in
   *first and *second (either may be null) and hands every vertex, in order, to the range point callback. 1 when there
   is at least one vertex. 0 otherwise: another extension leaves the boundary as it was, a file that cannot be read or
   that holds no vertex leaves it empty. */
ORVIKDTM_API int loadRangePointFile(const char* path, bool* first, bool* second);

/* Writes the boundary and two switches to a file of any extension, with six significant digits a coordinate. 0 when it
   cannot be written whole. */
ORVIKDTM_API int saveRangePointFile(const char* path, bool first, bool second);

/* ---- Volumes between surface files, by their extensions ".ttin", ".sjw" or ".xml" (any case). No library takes part.
   useRange limits a volume to the boundary; without it, and with a boundary of fewer than three vertices, nothing
   does. */

/* Fill and cut of the surface in a file against the level z = elevation. The record is the host's: free it with
   freeFillCutResult. Null when the file cannot be loaded or its surface has no TIN. */
ORVIKDTM_API FillCutResult* getFillCut(const char* path, double elevation, bool useRange);

/* Fill and cut of the surface in a file against the surface in another: where the first lies below, it is filled. The
   record is the host's: free it with freeFillCutResult. Null when a file cannot be loaded or its surface has no TIN. */
ORVIKDTM_API FillCutResult* getFillCut2(const char* path, const char* refPath, bool useRange);

/* Frees a result. Null is allowed. */
ORVIKDTM_API void freeFillCutResult(FillCutResult* result);

/* Computes as getFillCut does and writes a report to reportPath: kind 0 is a page of HTML in UTF-8, 1 a text. `labels`
   are all its words, twelve texts separated by commas: title, surface name, level, volumes, cut volume, fill volume, 2D
   area, 3D area, 2D perimeter, 3D perimeter, cut areas, fill areas; absent ones are empty. 0 for another kind, when
   there is no result, and when the file cannot be written whole. The page is UTF-8 throughout, names and infinities
   included; the text holds names in their own bytes and the infinity sign in GBK. */
ORVIKDTM_API int exportVolumeReport(const char* path, double elevation, bool useRange, int kind, const char* labels,
                                    const char* reportPath);

/* Computes as getFillCut2 does and writes the same report, with the other surface's name in place of the level. 0
   likewise. */
ORVIKDTM_API int exportVolumeReport2(const char* path, const char* refPath, bool useRange, int kind, const char* labels,
                                     const char* reportPath);

#ifdef __cplusplus
}  // extern "C"
}  // namespace OrvikDTM
#endif
