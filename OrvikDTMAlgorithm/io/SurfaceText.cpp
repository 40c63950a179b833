// A surface in one line of text, for diagnosis.
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

inline namespace OrvikDTM {

std::string DTMSurface::toString() {
  std::string text;
  const auto append = [&text](const std::string& value) { text.append(value).append(","); };
  append(surfaceName);
  append(U::intToString(getTrianglesNumber()));
  for (const double v :
       {getTwoDArea(), getThreeDArea(), getMinElev(), getMaxElev(), getPerimeterTwoD(), getPerimeterThreeD()}) {
    append(detail::generalText(v));
  }
  for (const SurfacePoint* point : surfacePoints) {
    if (point == nullptr) continue;
    append(point->getSurfacePointName());
    for (const double v : {point->getN(), point->getE(), point->getZ()}) append(U::toString(v));
  }
  return text;
}

}  // namespace OrvikDTM
