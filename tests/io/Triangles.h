// The triangles of a TIN as plain numbers, found through its lists alone, to compare a TIN with what was read or
// written.
#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <vector>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

namespace triangles {

using Corner = std::array<double, 3>;
using Corners = std::array<Corner, 3>;

inline Corner cornerOf(const TPoint& p) { return {p.getX(), p.getY(), p.getZ()}; }

inline Corners sorted(Corners corners) {
  std::sort(corners.begin(), corners.end());
  return corners;
}

// All triangles, each as its sorted corners, in sorted order. The edges of each must name exactly three points.
inline std::vector<Corners> of(const CEType& tin) {
  std::vector<Corners> all;
  EList* edges = tin.getEList();
  for (int tri = 1; tri <= tin.getTList()->getListLen(); ++tri) {
    std::set<Corner> corners;
    for (int i = 0; i < 3; ++i) {
      const TEdge* edge = edges->findByNum(edges, tin.getTList()->findByNum(tin.getTList(), tri)->getEno()[i]);
      corners.insert(cornerOf(*edge->getStartPoint()));
      corners.insert(cornerOf(*edge->getEndPoint()));
    }
    Corners three{};
    if (corners.size() == three.size()) std::copy(corners.begin(), corners.end(), three.begin());
    all.push_back(three);
  }
  std::sort(all.begin(), all.end());
  return all;
}

}  // namespace triangles
