// The edges of a TIN: an SLType of TEdge.
#pragma once

#include <OrvikDTMAlgorithm/tin/SLType.h>

inline namespace OrvikDTM {

class TEdge;

class ORVIKDTM_API EList : public SLType {
 public:
  using SLType::SLType;

  // Element `num` of `list`, or null when there is no such element.
  TEdge* findByNum(const SLType* list, int num) const { return static_cast<TEdge*>(SLType::findByNum(list, num)); }

  // Builds a text dump of `list` and discards it: a hook for a debug log.
  void getAllNode(EList* list);
};

}  // namespace OrvikDTM
