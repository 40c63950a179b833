// The hull entries of a TIN: an SLType of TConvex.
#pragma once

#include <OrvikDTMAlgorithm/tin/SLType.h>

inline namespace OrvikDTM {

class TConvex;

class ORVIKDTM_API ConvexList : public SLType {
 public:
  using SLType::SLType;

  // Element `num` of `list`, or null when there is no such element.
  TConvex* findByNum(const SLType* list, int num) const { return static_cast<TConvex*>(SLType::findByNum(list, num)); }

  // Builds a text dump of `list` and discards it: a hook for a debug log.
  void getAllNode(ConvexList* list);
};

}  // namespace OrvikDTM
