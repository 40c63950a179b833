// The TIN of one surface: hull, edges and triangles in numbered lists, the boundary polygon that limits volumes and
// queries, and what repeated point location remembers.
//
// 1. Axes: x = easting, y = northing, z = elevation, in coordinate units; areas are in their squares, volumes in cubes.
// 2. Numbers are positions in the lists, from 1; 0 means none. Every operation skips a number that names nothing.
// 3. A CEType owns its three lists and its boundary points. The points of its edges belong to whoever built it, save
//    those handed over with holdPoints().
// 4. Copies are shallow: the copy refers to the same lists, boundary points and Triangle3; destroy only one of the two.
//    To copy is to ask for the list of Triangle3: it is made then, once for both.
// 5. Queries of places and heights run on a copy of the lists that the first of them makes. What a setter, an
//    assignment or a list's own operation changes in this TIN, the next query sees: it then compares its copy with the
//    lists, which takes as long as looking at every triangle, and makes a new one if more than heights has changed.
//    Changes in other TINs cost a query next to nothing. After writing elements in any other way, call
//    setEList(getEList()).
// 6. The hull as the first query made it stays, also when the hull list is replaced or its edges move.
// 7. When memory runs out, std::bad_alloc leaves every member, and the TIN is as it was.
// 8. Different TINs may be used in different threads at once; one TIN, or a TIN and its copy, may not.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/Export.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {

class ConvexList;
class EList;
class FillCutResult;
class TEdge;
class TList;
class Triangle3;
struct RangePoint;

namespace detail {
class Construction;
struct Facet;
class FlatTIN;
class HullRing;
class SurfaceComparison;
}  // namespace detail

// Figures of a whole surface: areas in plan (2D) and along the surface (3D), hull lengths, lowest and highest
// elevation.
struct TINMeasures {
  double area2D = 0.0;
  double area3D = 0.0;
  double length2D = 0.0;
  double length3D = 0.0;
  double lowest = 0.0;
  double highest = 0.0;
};

class ORVIKDTM_API CEType {
 public:
  // A TIN that owns the three lists; any of them may be null.
  CEType(ConvexList* hull, EList* edges, TList* triangles);
  CEType(const CEType& source);
  CEType& operator=(const CEType& source);
  ~CEType();

  // The lists. A setter does not release the list that it replaces, nor read it; replacing edges or triangles empties
  // the list of Triangle3 unless it has been read since the latest volume.
  ConvexList* getCList() const { return hullList_; }
  EList* getEList() const { return edgeList_; }
  TList* getTList() const { return triangleList_; }
  void setCList(ConvexList* hull);
  void setEList(EList* edges);
  void setTList(TList* triangles);

  // Keeps `points` alive as long as this TIN and its copies: for points that the library, not the host, allocated.
  void holdPoints(std::shared_ptr<const void> points) { heldPoints_ = std::move(points); }

  // The boundary polygon in plan, in the order given, z = 0. Empty: no boundary.
  std::vector<TPoint*>& getRangeList() { return rangeList_; }

  // Replaces the boundary by copies of `range` (x = e, y = n, z = 0); null entries are skipped.
  void setRangeList(const std::vector<RangePoint*>& range);

  // The triangles and pieces of triangles that the latest volume computation measured, with their status (1 cut, -1
  // fill). They are made when they are first asked for; nothing is spent on them before. Those of a level are made from
  // the lists and points as they are then, those of a second surface or within a boundary are what was compared. The
  // reference is good until the next volume computation; one that runs out of memory leaves the list empty.
  const std::vector<std::shared_ptr<Triangle3>>& getTriangle3List();

  // A new TIN of triangular faces, each of three positions in `vertices` counted from 0. Edges between the same plan
  // positions are one edge; the hull list holds the edges with a face on one side only, in edge order. A face that
  // names no vertex, or whose corners lie in one direction from the lowest, is skipped. The vertices stay the caller's
  // and must outlive the result, which is the caller's.
  static CEType* initCETypeFromFaces(const std::vector<TPoint*>& vertices,
                                     const std::vector<std::array<int, 3>>& faces);

  // The number of a triangle that holds (x, y), by exact signs and boundary included; 0 outside the hull. Within the
  // hull, where no triangle does so: the first, in scan order, in which (x, y) lies within an area of 0.0001. Starts at
  // the triangle found last.
  int locateTri(double x, double y);

  // The same by a walk from triangle `start` alone, which neither uses nor changes the triangle found last; 0 when the
  // walk ends outside. `start` 0 means locateTri(x, y).
  int locateTri(double x, double y, int start);

  // The same by testing every triangle, beginning ten before the one found last.
  int locateTri1(double x, double y);

  // The height of the surface at (x, y); DBL_MAX outside.
  double getHeight(double x, double y);

  // A new array of three: the neighbours of triangle `tri` across its three edges, 0 on the hull and for what does not
  // exist. The caller releases it with delete[].
  int* getRelateT(int tri) const;

  // How many of a, b, c are 0.
  int getZero(int a, int b, int c) const;

  // Heights on a grid, DBL_MAX outside the surface or its boundary: row i, column j is the height at
  // (x0 + i * step, y0 + j * step), i = 0..nx, j = 0..ny. No rows for a negative nx, empty rows for a negative ny.
  std::vector<std::vector<double>> proxyTri(double x0, double y0, int nx, int ny, double step);

  // Where a point surveyed at (*x, *y) lies as a vertex of this TIN. The construction works relative to a local origin,
  // and moving there and back can change a coordinate's last digit; a host that asks at a surveyed position asks here
  // first. Positions that are not whole thousandths stay. In a TIN that was not constructed here, but read from a file,
  // say, only those do not stay that lie beside a vertex by no more than such rounding.
  void toVertexPosition(double* x, double* y) const;

  // The sum of the triangles' areas in plan and along the surface; 0 without triangles. The area along the surface is
  // NaN when that of a triangle without extent rounds below zero under the root.
  double getArea2D() const;
  double getArea3D() const;

  // These and the other figures of the whole surface at once, in the time of one area.
  TINMeasures getMeasures() const;

  // The length of the hull in plan and in space; 0 without a hull.
  double getTotalLength2D() const;
  double getTotalLength3D() const;

  // A new array of two, [lowest z, highest z] over all edges; heights that are NaN do not count unless all are. [0, 0]
  // without edges. The caller releases it with delete[].
  double* getMinMaxHeight() const;

  // [largest y, smallest y, largest x, smallest x] of the hull; four zeros without a hull.
  std::vector<double> getRangeXY() const;

  // Every distinct point (x, y and z) that the edges use, in order of first use. The points stay the TIN's.
  std::vector<TPoint*> getOriginalList() const;

  // Fill and cut between this surface and the level z = elevation: where the surface lies below it is filled, where it
  // lies above it is cut. A triangle in the level itself counts as fill without volume. Names are left empty, the
  // totals are this TIN's own measures. The record is the caller's. Within a boundary of three or more points the level
  // becomes a surface over the boundary and is compared as getFillCut(CEType*) does; the boundary's points then get
  // z = elevation.
  FillCutResult* getFillCut(double elevation);

  // Fill and cut between this surface and `reference`, by sampling: where this surface lies below the reference it is
  // filled, where it lies above it is cut, within the boundary of this TIN if it has one. The triangles of the network
  // that covers less are cut into pieces until each lies in one triangle of the other; how fine is bounded, so on
  // surfaces with few common points the result is approximate. getFillCutExact() is not. The four perimeters are 0,
  // names are left empty, the totals are this TIN's own measures. The record is the caller's. Null for a null
  // reference.
  FillCutResult* getFillCut(CEType* reference);

  // The same figures without sampling: the two networks are overlaid, and every common piece is measured as a prism
  // between two planes. Areas along the surface are those of this one. Stores the plan area over which both surfaces
  // exist, within the boundary of this TIN, in *coverage unless it is null. The list of Triangle3 is left as it is,
  // and so is the boundary.
  FillCutResult* getFillCutExact(CEType* reference, double* coverage = nullptr);
  FillCutResult* getFillCutExact(double elevation, double* coverage = nullptr);

  // The three lists as bytes, big-endian, without framing (docs/ttin-format.md).
  std::vector<unsigned char> getBytes() const;

  // A new TIN, the caller's, from the bytes that getBytes() gave; every edge gets two points of its own, which go with
  // the TIN. The first form trusts the counts in the block. The second never reads past `length` and gives null when
  // the counts do not fit it; bytes after the block are ignored. Null for a null block.
  static CEType* tryParse(unsigned char* block);
  static CEType* tryParse(const unsigned char* block, std::size_t length);

  // The triangles as text, a coordinate a line (x, y, z of three corners each) and "nil" at the end.
  std::string getCASSsjw() const;

  // A new TIN, the caller's, of the triangles in such a file, or of the first surface definition in a LandXML file; its
  // points go with it. Null when the file gives no triangle. The second throws std::out_of_range for a definition
  // without points or faces, and for a face beyond the points.
  static CEType* initCETypeFromSJW(const char* path);
  static CEType* initCETypeFromLandXml(const char* path);

 private:
  friend class detail::Construction;  // knows the local origin
  friend class detail::FlatTIN;       // copies what the lists hold
  friend struct detail::Facet;        // likewise, for exact volumes
  friend struct CETypeInternals;      // the tests' way in

  // The corners of a triangle: the ends of its first edge, then the end of its second edge that is neither. False when
  // one of the two edges does not exist.
  struct Corners {
    TPoint* p1;
    TPoint* p2;
    TPoint* p3;
  };
  bool cornersOf(int tri, Corners& corners) const;
  TEdge* edgeOf(int tri, int which) const;
  int triangleCount() const;

  const detail::FlatTIN& flat() const;
  void bringCopyUpToDate() const;
  void lookForEdits() const;
  void takeEditsOver() const;
  void watchNumbers() const;
  template <typename Locate>
  int locateOnCopy(double x, double y, Locate locate);
  bool copyStandsFor(int found, double x, double y) const;
  void forgetCopy() const;
  double getHeightByNumXY(int tri, double x, double y) const;
  int countInfinite(double x, double y, double z) const;

  // What the list of Triangle3 is made of when somebody asks for it: a level, or a comparison with another surface.
  struct Triangle3Source {
    std::optional<double> level;
    std::shared_ptr<const detail::SurfaceComparison> comparison;
  };

  bool hasBoundary() const;
  FillCutResult* getFillCutWithinBoundary(double elevation);
  void appendLevelPieces(double level, std::vector<std::shared_ptr<Triangle3>>& pieces) const;
  void makeTriangle3List() const;
  bool sharesFewPointsWith(const detail::FlatTIN& queried, int& lastFound) const;
  std::shared_ptr<const detail::FlatTIN> newCopy();

  ConvexList* hullList_;
  EList* edgeList_;
  TList* triangleList_;
  std::vector<TPoint*> rangeList_;
  mutable std::vector<std::shared_ptr<Triangle3>> triangle3List_;
  // The hull as a ring, which the first question whether a point lies within it settles, and the copy that queries run
  // on. The copy is dropped with the lists it was made from, and brought up to date when one of their elements has been
  // changed after seenEdits_, a state of detail::Edits. Queries need not look for that while the state is quietState_.
  mutable std::shared_ptr<const detail::HullRing> hullRing_;
  bool hullRingIsSettled_ = false;
  mutable std::shared_ptr<detail::FlatTIN> flat_;
  mutable std::uint64_t quietState_ = 0;
  mutable std::uint64_t seenEdits_ = 0;

  // Pointers to numbers of the elements have been handed out: every query looks at those that it relies on.
  mutable bool numbersMayChange_ = false;
  int lastTriangleNo_ = 1;

  // Set where the construction worked relative to a local origin.
  bool movedBack_ = false;
  double originX_ = 0.0;
  double originY_ = 0.0;

  std::shared_ptr<const void> heldPoints_;
  mutable Triangle3Source triangle3Source_;
};

}  // namespace OrvikDTM
