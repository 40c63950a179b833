// The points of a TIN: an SLType of TPoint.
#pragma once

#include <OrvikDTMAlgorithm/tin/SLType.h>

inline namespace OrvikDTM {

class TPoint;

class ORVIKDTM_API PList : public SLType {
 public:
  using SLType::SLType;

  // Element `num` of `list`, or null when there is no such element.
  TPoint* findByNum(const SLType* list, int num) const { return static_cast<TPoint*>(SLType::findByNum(list, num)); }
};

}  // namespace OrvikDTM
