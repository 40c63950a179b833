// The watches of each thread, as a chain from the innermost outwards.
#include <new>

#include <OrvikDTMAlgorithm/surface/ReleasedMeanwhile.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

thread_local ReleasedMeanwhile* innermost = nullptr;

}  // namespace

ReleasedMeanwhile::ReleasedMeanwhile() : outer(innermost) { innermost = this; }

ReleasedMeanwhile::~ReleasedMeanwhile() { innermost = outer; }

bool ReleasedMeanwhile::holds(const void* record) const {
  if (!isComplete) throw std::bad_alloc();
  return addresses.count(record) != 0;
}

void ReleasedMeanwhile::note(const void* record) noexcept {
  for (ReleasedMeanwhile* watch = innermost; watch != nullptr; watch = watch->outer) {
    try {
      watch->addresses.insert(record);
    } catch (...) {
      watch->isComplete = false;
    }
  }
}

}  // namespace detail
}  // namespace OrvikDTM
