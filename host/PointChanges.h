// The survey points of two surfaces, matched: first by position, then by name. What differs by less than a tenth of a
// millimetre is the same.
#pragma once

#include <cstddef>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

enum class Change { kAdded, kRemoved, kMoved, kRaised, kLowered };

struct PointChange {
  Change change;
  const SurfacePoint* before;  // null for a point that was added
  const SurfacePoint* after;   // null for one that was removed
};

struct PointChanges {
  std::size_t unchanged = 0;
  std::vector<PointChange> changes;  // in the order of the points before, those added at the end

  std::size_t count(Change change) const;
};

// A point is raised or lowered when its position stayed, moved when the one point of its name that is left has another
// position.
PointChanges compare(const DTMSurface& before, const DTMSurface& after);
