// Memory that runs out on request. The program that this is linked into allocates through it: operator new throws, and
// without a sanitizer malloc and its like give null, once an allowance is used up. Blocks of operator new that are in
// use are counted, so that a test sees what is lost.
#pragma once

#include <cstddef>

namespace memory {

enum class Failure {
  kOnce,   // one allocation fails, those after it succeed again
  kAlways  // all fail from there on
};

// From now on `allowed` allocations of this thread succeed before one fails. Counts start anew.
void limit(long allowed, Failure failure);

// Ends the limit. True when an allocation failed under it.
bool unlimit();

// How many blocks of operator new are in use.
long blocksInUse();

}  // namespace memory
