// Private. A TIN from what a triangle file holds: points of its own and faces over them.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/tin/CEType.h>

inline namespace OrvikDTM {
namespace detail {

using Face = std::array<int, 3>;  // positions in the points, from 0

// A new TIN of these faces, which keeps the points.
inline std::unique_ptr<CEType> importedModel(std::vector<TPoint> points, const std::vector<Face>& faces) {
  const auto held = std::make_shared<std::vector<TPoint>>(std::move(points));
  std::vector<TPoint*> vertices;
  vertices.reserve(held->size());
  for (TPoint& point : *held) vertices.push_back(&point);
  std::unique_ptr<CEType> model(CEType::initCETypeFromFaces(vertices, faces));
  model->holdPoints(held);
  return model;
}

}  // namespace detail
}  // namespace OrvikDTM
