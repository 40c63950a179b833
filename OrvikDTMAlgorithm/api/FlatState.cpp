// The state of the flat functions.
#include <OrvikDTMAlgorithm/api/FlatState.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

// Keeps its member from being destroyed, without asking for memory, which might fail.
union NeverDestroyed {
  NeverDestroyed() : state() {}
  ~NeverDestroyed() {}  // NOLINT: the member has its own destructor, which is not called

  FlatState state;
};

}  // namespace

FlatState& flatState() {
  static NeverDestroyed kept;
  return kept.state;
}

}  // namespace detail
}  // namespace OrvikDTM
