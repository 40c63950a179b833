// Is this TIN a valid triangulation of its points? The check that decides whether a construction can be trusted, for
// hosts, for tests, and for whoever wants to know what is wrong with an imported surface, and where.
#pragma once

#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

class CEType;
class TPoint;

enum class TINFault {
  None,
  MissingEdge,   // a triangle names an edge that does not exist or lacks a point
  WrongSlot,     // an edge names a triangle that does not list it, or a triangle lists an edge that does not name it
  OpenTriangle,  // a triangle's edges, walked with the triangle on their left, do not close
  NotCounterClockwise,  // a closed triangle is clockwise, or flat although no two of its corners share a position
  WrongHull,  // the hull list does not hold, once each and in any order, the edges with no triangle on their right, or
              // an edge has no triangle on its left
  MissingPoint,  // a position that should be a vertex is none
  AreaGap,       // the triangles' areas do not add up to that of the convex hull, within 0.001 square units
  UnusedEdge,    // an edge joins two points, but no triangle lists it: its ends may be no corners; after WrongSlot
  Overlap,       // a triangle covers what another one covers, however little; before AreaGap
};

struct TINCheck {
  TINFault fault = TINFault::None;

  // Where: the number of the triangle, edge, hull entry or (MissingPoint, counted from 1) point at fault; 0 where the
  // fault belongs to the whole TIN.
  int number = 0;

  // The area of the convex hull less that of the triangles, in squared coordinate units; 0 unless the areas were
  // compared.
  double areaGap = 0.0;

  bool valid() const { return fault == TINFault::None; }
};

// The first fault of `tin`, in the order of TINFault but for the last two, lowest number first (of triangles that
// overlap, one of them). All signs are exact: coordinates that are whole millimetres to within what a shift of the
// origin leaves behind are taken as such, others as they are stored. An empty TIN is valid. Nothing is changed.
ORVIKDTM_API TINCheck verifyTIN(const CEType& tin);

// The same, and every point of `points` without a NaN coordinate must share its plan position with a vertex.
ORVIKDTM_API TINCheck verifyTIN(const CEType& tin, const std::vector<TPoint*>& points);

// The fault in words for a user: "triangle 17 is not counter-clockwise". "valid" when there is none.
ORVIKDTM_API std::string toText(const TINCheck& check);

}  // namespace OrvikDTM
