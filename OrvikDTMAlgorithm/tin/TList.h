// The triangles of a TIN: an SLType of Triangle.
#pragma once

#include <OrvikDTMAlgorithm/tin/SLType.h>

inline namespace OrvikDTM {

class Triangle;

class ORVIKDTM_API TList : public SLType {
 public:
  using SLType::SLType;

  // Element `num` of `list`, or null when there is no such element.
  Triangle* findByNum(const SLType* list, int num) const {
    return static_cast<Triangle*>(SLType::findByNum(list, num));
  }

  // Builds a text dump of `list` and discards it: a hook for a debug log.
  void getAllNode(TList* list);
};

}  // namespace OrvikDTM
