// Construction of a TIN from survey points: optimizeTIN() is the way in; initPoins(), initCET() and buildTIN() are its
// first stages, for hosts that want to look at them one by one, and the three tests beneath are those that it decides
// by.
//
// Different points may be triangulated in different threads at once. MAXPOINTS and FLAG are process-wide: constructions
// write them, and none reads them back. COMPAREUNSHIFTED is read once a construction, when it begins; set it while no
// other thread is in the library.
#pragma once

#include <vector>

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

class CEType;
class PList;
class TPoint;

class ORVIKDTM_API Surface {
 public:
  // The number of points of the latest run of initPoins(). The lists of initCET() have room for as many, but take their
  // number from the list that they are made of.
  static int MAXPOINTS;

  // Kept for hosts that read them; the construction does not.
  static int MAXEDGES;
  static int MAXTRANGLES;

  // Set by initCET(): the number of the first point that is not collinear with points 1 and 2.
  static int FLAG;

  // What optimizeTIN() takes for a repeated position.
  // 0 (the default): a point whose rounded coordinates equal the *shifted* coordinates of a point accepted before.
  // Repeats
  //   are recognised where the smallest x and y are both 0; elsewhere both points are kept, and with a negative minimum
  //   a point that merely coincides with a shifted one is dropped.
  // 1: a point whose own rounded coordinates have been accepted before, and nothing else.
  static int COMPAREUNSHIFTED;

  // Triangulates points into a Delaunay TIN that covers their convex hull.
  // The points are the caller's: they must outlive the result, which refers to them. They are rounded to millimetres in
  // place, the vector is sorted by y, then x (points with a NaN coordinate come last and take no part), and a point
  // that ends up in no edge, a repeat say, is left relative to the smallest x and y. Returns null for an empty vector,
  // an empty TIN for fewer than three usable points or collinear ones. The result is the caller's. When memory runs
  // out, std::bad_alloc leaves it and the points are where they were; the vector may be sorted.
  static CEType* optimizeTIN(std::vector<TPoint*>& points);

  // Orders points by direction around the lowest, then leftmost one. Returns a new list of them, which owns them from
  // then on, and empties the vector; null, with the vector emptied all the same and the points still the caller's, for
  // fewer than three points or when all lie in one direction. When it throws, the vector is as it was. Sets MAXPOINTS.
  static PList* initPoins(std::vector<TPoint*>& points);

  // The first triangles: a fan from the first point off the line of points 1 and 2. Returns a new TIN that refers to
  // the list's points, with room for as many points as that list has room for; null for a null list, fewer than three
  // points or collinear ones. Sets FLAG.
  static CEType* initCET(PList* points);

  // Adds the remaining points one by one to what initCET() made of the same list. Returns a new TIN over the same three
  // lists (so only one of the two may be destroyed with its lists in place), null when one of the two is null. Lists
  // that hold more than the fan are left as they are.
  static CEType* buildTIN(PList* points, CEType* cet);

  // The points of the tests must not be null.
  //
  // True when the segments a-d and b-c properly cross, each end farther than the side test's tolerance off the other's
  // line.
  static bool isConvex(const TPoint* a, const TPoint* b, const TPoint* c, const TPoint* d);

  // True when the common edge b-c of the triangles (a, b, c) and (b, c, d) is to be replaced by a-d: one corner lies
  // inside the other triangle's circumcircle by more than 1e-7 (squared units), or all four lie on one circle and a-d
  // is shorter.
  static bool isNeedTrans(const TPoint* a, const TPoint* b, const TPoint* c, const TPoint* d);

  // True when p lies inside or on the boundary of the closed polygon (x, y; either direction, first vertex not repeated
  // or repeated), exactly or within 2e-10 in y of a side; false elsewhere and for an empty polygon. A polygon that
  // crosses itself counts even-odd.
  static bool isPtInPolygon(const TPoint* p, const std::vector<TPoint*>& polygon);
};

}  // namespace OrvikDTM
