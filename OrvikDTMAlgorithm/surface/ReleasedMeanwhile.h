// Private. The records that are released while a list of them is handed out: a new record may come to stand at the
// address of one of them, in the same list, and must not be taken for it.
#pragma once

#include <unordered_set>

inline namespace OrvikDTM {
namespace detail {

// Watches, from its making on, what this thread releases. Watches may be nested, as hand-overs are, and end in the
// reverse order.
class ReleasedMeanwhile {
 public:
  ReleasedMeanwhile();
  ~ReleasedMeanwhile();
  ReleasedMeanwhile(const ReleasedMeanwhile&) = delete;
  ReleasedMeanwhile& operator=(const ReleasedMeanwhile&) = delete;

  // Whether a record has been released at this address. Throws when there was no memory to remember it all.
  bool holds(const void* record) const;

  // Tells all watches of this thread that a record is about to be released. Without a watch it costs one look.
  static void note(const void* record) noexcept;

 private:
  std::unordered_set<const void*> addresses;
  bool isComplete = true;
  ReleasedMeanwhile* outer;
};

}  // namespace detail
}  // namespace OrvikDTM
