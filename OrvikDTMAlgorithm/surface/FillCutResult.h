// What one fill/cut computation found. Lengths are in coordinate units, areas in their squares, volumes in their cubes;
// "2D" is in plan, "3D" along the surface.
#pragma once

#include <OrvikDTMAlgorithm/Export.h>
#include <OrvikDTMAlgorithm/surface/NameSize.h>

inline namespace OrvikDTM {

class ORVIKDTM_API FillCutResult {
 public:
  // Everything 0, names empty.
  FillCutResult() = default;

  void setFillPerimeterTwoD(double v) { fillPerimeterTwoD = v; }
  void setFillPerimeterThreeD(double v) { fillPerimeterThreeD = v; }
  void setCutPerimeterTwoD(double v) { cutPerimeterTwoD = v; }
  void setCutPerimeterThreeD(double v) { cutPerimeterThreeD = v; }

  void setFillTwoDArea(double v) { fillTwoDArea = v; }
  double getFillTwoDArea() const { return fillTwoDArea; }
  void setFillThreeDArea(double v) { fillThreeDArea = v; }
  double getFillThreeDArea() const { return fillThreeDArea; }
  void setCutTwoDArea(double v) { cutTwoDArea = v; }
  double getCutTwoDArea() const { return cutTwoDArea; }
  void setCutThreeDArea(double v) { cutThreeDArea = v; }
  double getCutThreeDArea() const { return cutThreeDArea; }
  void setFillVolume(double v) { fillVolume = v; }
  double getFillVolume() const { return fillVolume; }
  void setCutVolume(double v) { cutVolume = v; }
  double getCutVolume() const { return cutVolume; }

  // The surface that was measured, and the one that it was measured against; cut after the 23rd byte.
  void setSurfaceName(const char* name);
  void setRefSurfaceName(const char* name);

  // The measured surface's own totals.
  void setTwoDArea(double v) { twoDArea = v; }
  void setThreeDArea(double v) { threeDArea = v; }
  void setPerimeterTwoD(double v) { perimeterTwoD = v; }
  void setPerimeterThreeD(double v) { perimeterThreeD = v; }

 private:
  friend struct RecordLayout;

  double fillPerimeterTwoD = 0.0;
  double fillPerimeterThreeD = 0.0;
  double cutPerimeterTwoD = 0.0;
  double cutPerimeterThreeD = 0.0;
  double fillTwoDArea = 0.0;
  double fillThreeDArea = 0.0;
  double cutTwoDArea = 0.0;
  double cutThreeDArea = 0.0;
  double fillVolume = 0.0;
  double cutVolume = 0.0;
  char surfaceName[kNameSize] = {};
  double twoDArea = 0.0;
  double threeDArea = 0.0;
  double perimeterTwoD = 0.0;
  double perimeterThreeD = 0.0;
  char refSurfaceName[kNameSize] = {};
};

}  // namespace OrvikDTM
