// A stranger's program: it builds a TIN of its own points, asks for a height and measures a volume.
#include <iostream>
#include <memory>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

int main() {
  TPoint a(0, 0, 10), b(100, 0, 10), c(100, 50, 20), d(0, 50, 20);
  std::vector<TPoint*> points{&a, &b, &c, &d};
  const std::unique_ptr<CEType> tin(Surface::optimizeTIN(points));
  const std::unique_ptr<FillCutResult> result(tin->getFillCut(10.0));
  std::cout << tin->getHeight(50, 25) << ' ' << result->getCutVolume() << '\n';
  return U::isEqual(tin->getHeight(50, 25), 15.0) && U::isEqual(result->getCutVolume(), 25000.0) ? 0 : 1;
}
