// Square roots of square roots take longer than all else here. Nearly every processor of the kind that the library is
// built for takes twice as many of them at a time as the oldest ones do, so there is a second copy of the one loop for
// those. Both give the same results to the last bit.
#include <algorithm>
#include <cmath>

#include <OrvikDTMAlgorithm/tin/TriangleAreas.h>
#include <OrvikDTMAlgorithm/tin/TriangleFigures.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

#if defined(__x86_64__) && defined(__GNUC__)
#define ORVIKDTM_INLINE_IN_BOTH inline __attribute__((always_inline))
#define ORVIKDTM_WITH_WIDE_REGISTERS __attribute__((target("avx")))
bool hasWideRegisters() { return __builtin_cpu_supports("avx") != 0; }
#else
#define ORVIKDTM_INLINE_IN_BOTH inline
#define ORVIKDTM_WITH_WIDE_REGISTERS
bool hasWideRegisters() { return false; }
#endif

double prismVolume(double level, const TPoint& p1, const TPoint& p2, const TPoint& p3) {
  const double area =
      std::fabs((p2.getX() - p1.getX()) * (p3.getY() - p2.getY()) - (p2.getY() - p1.getY()) * (p3.getX() - p2.getX())) /
      2;
  return std::fabs(((p1.getZ() - level) + (p2.getZ() - level) + (p3.getZ() - level)) * area) / 3;
}

ORVIKDTM_INLINE_IN_BOTH void workOutEach(TriangleFigures& t, double level, std::size_t begin, std::size_t end) {
  for (std::size_t i = begin; i < end; ++i) {
    const TPoint p1(t.x[0][i], t.y[0][i], t.z[0][i]);
    const TPoint p2(t.x[1][i], t.y[1][i], t.z[1][i]);
    const TPoint p3(t.x[2][i], t.y[2][i], t.z[2][i]);
    const double a = planDistance(p1, p2);
    const double b = planDistance(p2, p3);
    const double c = planDistance(p3, p1);
    t.sides[i] = a * b * c;
    t.planArea[i] = planArea(a, b, c);
    t.spatialArea[i] = spatialArea(p1, p2, p3);
    t.volume[i] = prismVolume(level, p1, p2, p3);
    t.lowest[i] = std::min(std::min(p1.getZ(), p2.getZ()), p3.getZ());
    t.highest[i] = std::max(std::max(p1.getZ(), p2.getZ()), p3.getZ());
  }
}

ORVIKDTM_WITH_WIDE_REGISTERS void workOutWide(TriangleFigures& t, double level, std::size_t begin, std::size_t end) {
  workOutEach(t, level, begin, end);
}

void workOutNarrow(TriangleFigures& t, double level, std::size_t begin, std::size_t end) {
  workOutEach(t, level, begin, end);
}

}  // namespace

void TriangleFigures::workOut(double level, std::size_t begin, std::size_t end) {
  static const bool wide = hasWideRegisters();
  wide ? workOutWide(*this, level, begin, end) : workOutNarrow(*this, level, begin, end);
}

}  // namespace detail
}  // namespace OrvikDTM
