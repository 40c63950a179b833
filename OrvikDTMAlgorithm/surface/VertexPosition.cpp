#include <OrvikDTMAlgorithm/surface/SurveyedCoordinate.h>
#include <OrvikDTMAlgorithm/surface/VertexPosition.h>
#include <OrvikDTMAlgorithm/tin/Mesh.h>

namespace orvik {

PlanPosition vertexPosition(double easting, double northing) {
  const auto rounded = [](double v) {
    return detail::roundThroughText(detail::kDecimalsOfPosition, detail::surveyedCoordinate(v));
  };
  return {rounded(easting), rounded(northing)};
}

}  // namespace orvik
