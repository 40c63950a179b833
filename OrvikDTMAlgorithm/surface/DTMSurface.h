// One named terrain surface: its survey points, its TIN, and the statistics of that TIN.
//
// 1. The TIN is built when it is first needed and rebuilt after the points have changed; getCEType() is the way to it.
//
// 2. An edit that promises a rebuilt TIN keeps its word when somebody looks, so any number of edits in a row cost one
// build. To a host that looks, by whatever member, it is as if every edit had rebuilt at once. Reading a statistic,
// also through a const surface, may therefore build, and a host that looks after every edit pays for as many builds.
//
// 3. Not promised: when Surface::MAXPOINTS and Surface::FLAG change, and what a promised TIN makes of a record or a
// list that the host changes through a pointer or reference kept from before the edit. Get it anew from
// getSurfacePoints().
//
// 4. When memory runs out, std::bad_alloc leaves every member, and the surface is as it was: no point is lost, and a
// TIN is never there without its statistics. Members that say so give their failure value instead.
//
// 5. Different surfaces may be used in different threads at once; one surface may not, const members included.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/Export.h>
#include <OrvikDTMAlgorithm/surface/NameSize.h>

inline namespace OrvikDTM {

class CEType;
class DTMFileOperation;
class DrawLine;
class FillCutResult;
class SurfacePoint;
class TPoint;
struct RangePoint;
namespace detail {
class ByteReader;
struct ListedPoints;
}  // namespace detail

class ORVIKDTM_API DTMSurface {
 public:
  DTMSurface() = default;

  // Releases the storage of the point list only: neither the point records nor the TIN, which may be in use elsewhere.
  // Call release() first to be rid of everything.
  ~DTMSurface() = default;

  DTMSurface(const DTMSurface&) = delete;
  DTMSurface& operator=(const DTMSurface&) = delete;

  // Releases the point records (save those of a caller's array, see updateDTMSurface) and the TIN; the surface is then
  // empty.
  void release();

  // A new surface, the caller's, that shares nothing with this one: same name, statistics and switch, copies of the
  // points, no TIN yet.
  DTMSurface* clone() const;

  // Name, switch, statistics of the latest TIN.

  // The name: the surface's own zero-terminated buffer. A name is cut after its 23rd byte.
  char* getSurfaceName() { return surfaceName; }
  const char* getSurfaceName() const { return surfaceName; }
  void setSurfaceName(const char* name);

  // Whether the preview draws the edges of the TIN, or its hull alone.
  void setIsDrawDTM(bool on) { isDrawDTM = on; }

  // Extent in plan: x = easting, y = northing.
  double getRangeMinX() const { return latest().rangeMinX; }
  double getRangeMaxX() const { return latest().rangeMaxX; }
  double getRangeMinY() const { return latest().rangeMinY; }
  double getRangeMaxY() const { return latest().rangeMaxY; }
  void setRangeMinX(double v) { latest().rangeMinX = v; }
  void setRangeMaxX(double v) { latest().rangeMaxX = v; }
  void setRangeMinY(double v) { latest().rangeMinY = v; }
  void setRangeMaxY(double v) { latest().rangeMaxY = v; }

  // Lowest and highest elevation.
  double getMinElev() const { return latest().minElev; }
  double getMaxElev() const { return latest().maxElev; }
  void setMinElev(double v) { latest().minElev = v; }
  void setMaxElev(double v) { latest().maxElev = v; }

  // Area and hull length, in plan (two-D) and along the surface (three-D).
  double getTwoDArea() const { return latest().twoDArea; }
  double getThreeDArea() const { return latest().threeDArea; }
  void setTwoDArea(double v) { latest().twoDArea = v; }
  void setThreeDArea(double v) { latest().threeDArea = v; }
  double getPerimeterTwoD() const { return latest().perimeterTwoD; }
  double getPerimeterThreeD() const { return latest().perimeterThreeD; }
  void setPerimeterTwoD(double v) { latest().perimeterTwoD = v; }
  void setPerimeterThreeD(double v) { latest().perimeterThreeD = v; }

  int getTrianglesNumber() const { return latest().trianglesNumber; }
  void setTrianglesNumber(int v) { latest().trianglesNumber = v; }

  // Points.

  // The number of points in the list.
  int getPointsNumber() const { return static_cast<int>(surfacePoints.size()); }

  // The list itself; the records stay the surface's. Both forms are a look: the records may be changed through them.
  std::vector<SurfacePoint*>& getSurfacePoints() { return keepPromise(), surfacePoints; }
  const std::vector<SurfacePoint*>& getSurfacePoints() const { return keepPromise(), surfacePoints; }

  // Makes the surface refer to the caller's records (made with `new`) in place of its own, which are not released. An
  // empty list changes nothing. The TIN is left alone. An array that updateDTMSurface() was given is forgotten unless
  // one of the records lies in it.
  void setSurfacePoints(const std::vector<SurfacePoint*>& points);

  // Adopts `point` (made with `new`), names its surface, inserts it before position min(index, length) and promises a
  // rebuilt TIN. Returns 1; 0 for a null point. When it throws, the surface is as it was and `point` is the caller's.
  int addSurfacePoint(SurfacePoint* point, unsigned long long index);

  // Puts `point` (made with `new`) in place of entry `index`, which is released, and promises a rebuilt TIN. Returns
  // 1; 0, and `point` stays the caller's, when there is no such entry or `point` is null. Throws as addSurfacePoint().
  int updateSurfacePoint(unsigned int index, SurfacePoint* point);

  // Removes min(length - index, count) entries from `index` on and drops the TIN; the next user rebuilds it. The
  // records at the positions from `index` up to but not including `count` are released, the other removed records are
  // not: `count` serves there as an end position, on purpose, so with count 1 only the record at position 0 is
  // released. Returns 1; 0, and nothing changes, when there is no such entry or count is 0.
  int deleteSurfacePoint(unsigned int index, unsigned long long count);

  // Makes the surface refer to the `count` records of a caller's array, which stay the caller's and must outlive their
  // use here; the records listed before are released (save those of an earlier array). The TIN is left as it is: call
  // setCEType(nullptr) to have it rebuilt. While the surface refers to an array, which may change at any time, edits
  // rebuild at once. Returns 1.
  int updateDTMSurface(int count, SurfacePoint* points);

  // Reads a point file (".dat" or ".csv", any case; name, code, easting, northing, elevation) and appends its points to
  // this surface and to `out`; the records are the surface's. If there are any in `out` then, the TIN is rebuilt at
  // once, since the records are in the host's hands. A file that cannot be read, or has another extension, changes
  // nothing.
  void loadSurfacePointsFile(const char* path, std::vector<SurfacePoint*>& out);

  // Points for the triangulation: x = easting and y = northing rounded to four decimals, halves away from zero, z as it
  // is. Both the list and its points, made with `new`, are the caller's. Empty for fewer than three points. Null
  // entries are skipped.
  std::vector<TPoint*> getTPointList(std::vector<SurfacePoint*> points) const;

  // TIN and queries.

  // The TIN, built with its statistics if there is none. It stays the surface's. Null for fewer than three points; the
  // statistics are then 0.
  CEType* getCEType();

  // True when there is no TIN, or none of the present points.
  bool isNeedInit() const { return keepPromise(), ceType == nullptr; }

  // Destroys the present TIN and adopts `model` (null: the next use rebuilds). The statistics are left alone.
  void setCEType(CEType* model);

  // Limits volumes and queries to a polygon (x = e, y = n). It lives in the TIN and goes with it at the next change of
  // the points. Returns 1; 0 when the surface has no TIN to hold it.
  int setRangeList(const std::vector<RangePoint*>& range);

  // The height at northing n, easting e. Returns 1 and stores it in *z; 0, leaving *z, where the surface has none.
  int checkSurfacePoint(double n, double e, double* z);

  // Fill and cut against the level z = elevation (see CEType::getFillCut); a new record, the caller's, with this
  // surface's name. Null when the surface has no TIN. A level above everything, infinity too, leaves fill
  // only, and one below everything cut only; at an infinite level that side's volume is infinite. A NaN level gives NaN
  // for the areas and volumes of both sides.
  FillCutResult* getFillCut(double elevation);

  // Fill and cut against another TIN; a new record, the caller's, with this surface's name. Null when this surface has
  // no TIN or `reference` is null.
  FillCutResult* getFillCut(CEType* reference);

  // Preview.

  // Appends the edges of the TIN (only below 10,000 edges, and while isDrawDTM is on) and then those of its hull,
  // clipped to a rectangle of eastings (x) and northings (y); the lines are the caller's, made with `new`. False, with
  // nothing appended, when there is no TIN or it has fewer than three edges.
  bool drawSurface(double minX, double maxX, double minY, double maxY, std::vector<DrawLine*>& lines);

  // Files.

  // This surface as the bytes of a surface file behind its header (docs/ttin-format.md). Builds the TIN if need be.
  std::vector<unsigned char> toBytes();

  // Fills this surface from such bytes, written by format `version`. The present records and TIN are replaced, not
  // released (the TIN is); a block without points leaves the points. False when the block is too short or its counts do
  // not fit: the name and the statistics may have changed by then, the points and the TIN have not.
  bool tryParse(const unsigned char* block, int version, int length);

  // Name, statistics and points in one line of text, for diagnosis: every value followed by a comma.
  std::string toString();

  // Writes the TIN as a ".sjw" triangle file. False without a TIN, or when the file cannot be written whole; the
  // earlier file then stays.
  bool exportFileSJW(const char* path);

  // Replaces TIN, name (the file's, without folder and extension), statistics and points by those of a ".sjw" or a
  // LandXML file. False, and nothing changes, when the file gives no triangle. The second throws std::out_of_range, and
  // nothing changes, for a definition without its point or face list, or with faces but no point.
  bool tryParseSJW(const char* path);
  bool tryParseLandXML(const char* path);

 private:
  struct Statistics {
    int trianglesNumber = 0;
    double twoDArea = 0.0;
    double threeDArea = 0.0;
    double minElev = 0.0;
    double maxElev = 0.0;
    double rangeMinX = 0.0;
    double rangeMaxX = 0.0;
    double rangeMinY = 0.0;
    double rangeMaxY = 0.0;
    double perimeterTwoD = 0.0;
    double perimeterThreeD = 0.0;

    void setExtentOf(const CEType* model);
  };

  // Builds the TIN that an edit promised. Whatever shows or replaces the TIN or its statistics, or hands out or
  // releases what it is built from, comes here first.
  void keepPromise() const {
    if (modelPromised) buildPromised();
  }
  Statistics& latest() const { return keepPromise(), statistics; }

  bool adoptImport(CEType* model, const char* path);
  void promiseModel();
  void buildPromised() const;
  void build(int compareUnshifted) const;
  void dropModel();
  static Statistics statisticsOf(const CEType& model);

  // Behind tryParse(), for blocks of any length and those that are read for the last time.
  friend class DTMFileOperation;
  // What a block that brings no points does to a surface that has some: it sets name, statistics and TIN all the same,
  // or nothing.
  enum class WithoutPoints { kTakeHead, kChangeNothing };
  bool parse(detail::ByteReader& reader, int version, WithoutPoints withoutPoints);
  static void readStatistics(const unsigned char* bytes, Statistics& figures);

  // For a look at the list that keeps no promise.
  friend struct detail::ListedPoints;

  void dropLastPoints(std::size_t count);
  bool isInCallersArray(const SurfacePoint* point) const;
  void releaseRecord(const SurfacePoint* point) const;

  char surfaceName[kNameSize] = {};
  int pointsNumber = 0;
  bool isDrawDTM = true;
  std::vector<SurfacePoint*> surfacePoints;

  // The TIN and its statistics: mutable, because keeping a promise changes them although, to the outside, they have
  // been so since the edit. `promisedComparison` is what Surface::COMPAREUNSHIFTED was at that edit.
  mutable CEType* ceType = nullptr;
  mutable Statistics statistics;
  mutable bool modelPromised = false;
  int promisedComparison = 0;

  // The caller's array that updateDTMSurface() was given: its records are never released here.
  const SurfacePoint* arrayBegin = nullptr;
  const SurfacePoint* arrayEnd = nullptr;
};

}  // namespace OrvikDTM
