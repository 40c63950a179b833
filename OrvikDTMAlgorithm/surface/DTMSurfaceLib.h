// The surfaces that a host works with, addressed by their position in a list.
//
// 1. The library owns its surfaces. Its destructor deletes them, but neither their point records nor their TINs, which
//    may be in use elsewhere (see DTMSurface); release() and releaseDTMSurface() leave nothing behind.
// 2. An index is a position, from 0: deleting a surface moves every later one down by one. An index that names no
//    surface changes nothing and gives the result named for failure.
// 3. Copies are shallow: the copy refers to the same surfaces; let only one of the two delete them.
// 4. Paths and names are zero-terminated texts in the system's code page; a null path fails like one that cannot be
//    opened, a null name is the empty one.
// 5. Different libraries may be used in different threads at once; one library may not.
#pragma once

#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

class DTMSurface;
class DrawLine;
class FillCutResult;
class SurfacePoint;
struct RangePoint;

class ORVIKDTM_API DTMSurfaceLib {
 public:
  DTMSurfaceLib() = default;
  DTMSurfaceLib(const DTMSurfaceLib&) = default;
  DTMSurfaceLib& operator=(const DTMSurfaceLib&) = default;
  ~DTMSurfaceLib();

  // Deletes all surfaces with their points and TINs; the library is then empty.
  void release();

  // Surfaces.

  // Appends a new empty surface and returns it. A name is cut after its 23rd byte.
  DTMSurface* addDTMSurface(const char* name);

  // Deletes a surface, but not its point records and its TIN. Returns 1, or 0 for a bad index.
  int deleteDTMSurface(unsigned int index);

  // Deletes a surface with its points and TIN. Returns 1, or 0 for a bad index.
  int releaseDTMSurface(unsigned int index);

  // The surface, which stays the library's; null for a bad index.
  DTMSurface* getSurface(unsigned int index) const;

  // How many surfaces there are.
  std::size_t getSurfacesNumber() const { return surfaces_.size(); }

  // Appends a new surface filled from a file (see DTMFileOperation::loadSurface: 0 ".ttin", 1 ".sjw", 2 LandXML) and
  // returns it. Null, and nothing changes, when it cannot be loaded, whatever is wrong with the file.
  DTMSurface* loadDTMSurface(const char* path, int type);

  // Writes a surface to a ".ttin" file, or its TIN to a ".sjw" one. 1 when done, 0 for a bad index or a file that
  // cannot be written whole.
  int saveSurface(unsigned int index, const char* path);
  int exportFileSJW(unsigned int index, const char* path);

  // Appends the line work of a preview to `lines`; the lines are the caller's (see DTMSurface::drawSurface). False when
  // there is nothing to draw.
  bool previewDTMSurface(unsigned int index, double minX, double maxX, double minY, double maxY,
                         std::vector<DrawLine*>& lines);

  // Points: as the members of DTMSurface of these names. 0 for a bad index.

  // Makes the surface refer to the `count` records of a caller's array.
  int updateDTMSurface(unsigned int index, int count, SurfacePoint* points);

  // Makes `out` a copy of the surface's list; the records stay the surface's. A bad index leaves `out` alone.
  void getSurfacePoints(unsigned int index, std::vector<SurfacePoint*>& out);

  // Appends `point`, which is the surface's from then on unless the result is 0.
  int addSurfacePoint(unsigned int index, SurfacePoint* point);

  // Puts `point` in place of an entry, likewise. 0 also when there is no such entry.
  int updateSurfacePoint(unsigned int index, int pointIndex, SurfacePoint* point);

  // Removes an entry; its record is released only if it was the first. 0 also when there is no such entry.
  int deleteSurfacePoint(unsigned int index, int pointIndex);

  // Appends the points of a point file to the surface and to `out`; the records are the surface's.
  void loadSurfacePointsFile(unsigned int index, const char* path, std::vector<SurfacePoint*>& out);

  // The height at northing n, easting e: 1, and it is in *z; 0, and *z is as it was, where there is none.
  int checkSurfacePoint(unsigned int index, double n, double e, double* z);

  // Volumes.

  // Limits a surface's volumes to a polygon until its points change. Returns 1; 0 for a bad index, or when the surface
  // has no TIN to hold it.
  int setRangeList(unsigned int index, const std::vector<RangePoint*>& range);

  // Fill and cut of a surface against a level or against another surface; a new record, the caller's, with the names
  // of both. Null for a bad index and for a surface without a TIN.
  FillCutResult* getFillCut(unsigned int index, double elevation);
  FillCutResult* getFillCut(unsigned int index, unsigned int refIndex);

  // The same, written as a report (see DTMFileOperation::exportVolumeReport): kind 0 is HTML, 1 text. Returns 1 when it
  // was written, 0 otherwise; another kind writes nothing.
  int exportVolumeReport(int index, double elevation, int kind, const char* labels, const char* path);
  int exportVolumeReport(int index, unsigned int refIndex, int kind, const char* labels, const char* path);

 private:
  std::vector<DTMSurface*> surfaces_;
};

}  // namespace OrvikDTM
