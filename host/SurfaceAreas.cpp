#include "SurfaceAreas.h"

#include <memory>

#include "Console.h"

// Every level has all of the surface above it or below it.
void setExactAreas(DTMSurface& surface) {
  const std::unique_ptr<FillCutResult> all(surface.getCEType()->getFillCutExact(surface.getMinElev()));
  if (all == nullptr) throw console::Failure("the areas could not be computed: close other programs, try again");
  surface.setTwoDArea(all->getCutTwoDArea() + all->getFillTwoDArea());
  surface.setThreeDArea(all->getCutThreeDArea() + all->getFillThreeDArea());
}
