// Writes a volume report as a page, of values and texts that it is given:
//   write_page PATH LABELS SURFACE (level ELEVATION | surface NAME) TEN-VALUES
// The values: cut and fill volume; the surface's plan and spatial area, plan and spatial perimeter; plan and spatial
// area of cut, then of fill.
#include <array>
#include <iostream>
#include <sstream>
#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

namespace {

double number(const std::string& text) {
  std::istringstream in(text);
  in.imbue(std::locale::classic());
  double v = 0.0;
  in >> v;
  return v;
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int kTexts = 6;
  constexpr int kValues = 10;
  if (argc != kTexts + kValues) return 2;
  std::array<double, kValues> v{};
  for (int i = 0; i < kValues; ++i) v[static_cast<std::size_t>(i)] = number(argv[kTexts + i]);

  FillCutResult result;
  DTMSurface surface;
  surface.setSurfaceName(argv[3]);
  result.setCutVolume(v[0]);
  result.setFillVolume(v[1]);
  surface.setTwoDArea(v[2]);
  surface.setThreeDArea(v[3]);
  surface.setPerimeterTwoD(v[4]);
  surface.setPerimeterThreeD(v[5]);
  result.setCutTwoDArea(v[6]);
  result.setCutThreeDArea(v[7]);
  result.setFillTwoDArea(v[8]);
  result.setFillThreeDArea(v[9]);

  DTMFileOperation files;
  const bool written = std::string(argv[4]) == "level"
                           ? files.exportVolumeReport(&result, &surface, 0, number(argv[5]), argv[2], argv[1])
                           : files.exportVolumeReport(&result, &surface, 0, argv[5], argv[2], argv[1]);
  return written ? 0 : 1;
}
