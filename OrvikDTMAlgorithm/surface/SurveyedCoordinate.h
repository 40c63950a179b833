// The first rounding of a surveyed coordinate on its way into a TIN. Private.
#pragma once

#include <OrvikDTMAlgorithm/report/NumberText.h>

inline namespace OrvikDTM {
namespace detail {

// Coordinates that differ only beyond this decimal are the same position to the triangulation.
inline constexpr int kDecimalsOfSurvey = 4;

inline double surveyedCoordinate(double v) { return roundThroughText(kDecimalsOfSurvey, v); }

}  // namespace detail
}  // namespace OrvikDTM
