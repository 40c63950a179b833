// Private. Everything that the flat functions remember between calls.
#pragma once

#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/api/orvikdtm.h>
#include <OrvikDTMAlgorithm/surface/DTMSurfaceLib.h>

inline namespace OrvikDTM {
namespace detail {

struct Callbacks {
  DrawLineCallback drawLine = nullptr;
  SurfacePointCallback surfacePoint = nullptr;
  SurfaceCallback surface = nullptr;
  RangePointCallback rangePoint = nullptr;
};

struct FlatState {
  std::vector<std::unique_ptr<DTMSurfaceLib>> libraries;  // in order of creation; never shrinks
  DTMSurfaceLib* current = nullptr;
  Callbacks callbacks;
  std::vector<RangePoint*> rangePoints;  // the boundary that is being edited; the records are its own
};

// The one state of the process. It is never destroyed: hosts may call the library while the process ends.
FlatState& flatState();

// Hands a record to the callback that is registered now: the calls before it may have registered another one, or none.
// False without a callback.
template <typename Callback, typename Record>
bool handOut(Callback Callbacks::*receiver, Record* record) {
  const Callback callback = flatState().callbacks.*receiver;
  if (callback == nullptr) return false;
  callback(record);
  return true;
}

}  // namespace detail
}  // namespace OrvikDTM
