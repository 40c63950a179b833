// Storage for the elements of the numbered lists. Private.
//
// A list's element is the list's own and may be removed, replaced, moved to another list or deleted by the host one at
// a time. The construction makes millions of them at once, so it lays them side by side in one block: a block counts
// the elements that are still in use and goes with the last of them. Whoever releases an element need not know where it
// came from.
#pragma once

#include <cstddef>
#include <vector>

inline namespace OrvikDTM {
namespace detail {

// Room for `count` elements of `size` bytes each, all counted as in use. Throws std::bad_alloc.
void* allocateElements(std::size_t count, std::size_t size);

// Releases elements made with `new` or taken from a block, without destroying them. Null ones are passed over.
void releaseElement(void* element) noexcept;
void releaseElements(const std::vector<void*>& elements) noexcept;

// The same for `count` elements side by side in one block.
void releaseRun(void* first, std::size_t count) noexcept;

// The block that an element lies in; false when it was made with `new`.
bool findBlock(const void* element, const void*& begin, const void*& end) noexcept;

}  // namespace detail
}  // namespace OrvikDTM
