// One entry of a TIN's hull: the number of a hull edge in the same TIN.
#pragma once

#include <OrvikDTMAlgorithm/Export.h>
#include <OrvikDTMAlgorithm/tin/Edits.h>

inline namespace OrvikDTM {

class ORVIKDTM_API TConvex {
 public:
  explicit TConvex(int edgeNumber) : edgeNumber_(edgeNumber) {}
  TConvex(const TConvex&) = default;
  TConvex& operator=(const TConvex& other) noexcept {
    setEdgeNo(other.edgeNumber_);
    return *this;
  }

  int getEdgeNo() const { return edgeNumber_; }
  void setEdgeNo(int edgeNumber) {
    detail::Edits::noteInBlock(this);
    edgeNumber_ = edgeNumber;
  }

  // Elements of a published list may lie in a block of many; deleting one is right wherever it came from.
  static void operator delete(void* entry) noexcept;

 private:
  int edgeNumber_;
};

}  // namespace OrvikDTM
