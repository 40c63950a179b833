// What the tests of volumes between surfaces share: boundaries, records as arrays, and a run of the library's
// comparison against the slow one on fresh networks.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>

#include "Inputs.h"
#include "LiteralComparison.h"
#include "TINSupport.h"

namespace support {

using Polygon = std::vector<std::array<double, 2>>;

void setBoundary(CEType& tin, const Polygon& polygon);

// A network with its points.
struct Model {
  explicit Model(const inputs::Positions& positions) : points(positions), tin(triangulate(points)) {}
  Model(const inputs::Positions& positions, const std::vector<std::array<int, 3>>& faces);

  OwnedPoints points;
  std::unique_ptr<CEType> tin;
};

using MakeModel = std::function<Model()>;

std::unique_ptr<FillCutResult> fillCut(CEType& tin, CEType& reference);
std::array<double, 10> numbersOf(const FillCutResult& result);
std::vector<literal::ComparedPiece> piecesOf(CEType& tin);

// Runs both comparisons on fresh networks, which must agree to the last bit, also in where queries go on from; returns
// the slow one's result.
literal::Comparison expectSameComparison(const MakeModel& own, const MakeModel& reference, const Polygon& boundary);

// The same for a level within the boundary, which the slow way takes for a network over the boundary's corners.
literal::Comparison expectSameLevel(const MakeModel& own, double level, const Polygon& boundary);

}  // namespace support
