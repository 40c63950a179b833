#include <memory>

#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>

inline namespace OrvikDTM {

Triangle3::Triangle3(const TPoint* a, const TPoint* b, const TPoint* c, int status)
    : P1_(nullptr), P2_(nullptr), P3_(nullptr), status_(status) {
  auto p1 = std::make_unique<TPoint>(*a);
  auto p2 = std::make_unique<TPoint>(*b);
  P3_ = new TPoint(*c);
  P2_ = p2.release();
  P1_ = p1.release();
}

Triangle3::~Triangle3() {
  delete P1_;
  delete P2_;
  delete P3_;
}

}  // namespace OrvikDTM
