#include <functional>
#include <iterator>
#include <map>
#include <mutex>
#include <new>

#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/tin/EditLog.h>
#include <OrvikDTMAlgorithm/tin/ElementBlocks.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

inline namespace OrvikDTM {
namespace detail {

namespace {

// The blocks in use, by address. Lists of independent TINs may go on different threads, hence the lock.
class Blocks {
 public:
  // Never destroyed: a host's static objects may release elements after everything of ours has gone.
  // Made without asking for memory, as the first call may come from a destructor.
  static Blocks& all() {
    union NeverDestroyed {
      NeverDestroyed() : blocks() {}
      ~NeverDestroyed() {}  // NOLINT: the member has its own destructor, which is not called
      Blocks blocks;
    };
    static NeverDestroyed kept;
    return kept.blocks;
  }

  void* allocate(std::size_t count, std::size_t size) {
    auto* begin = static_cast<std::byte*>(::operator new(count* size));
    preferLargePages(begin, count * size);
    try {
      const std::lock_guard<std::mutex> lock(mutex_);
      blocks_.emplace(begin, Block{begin + count * size, count});
    } catch (...) {
      ::operator delete(begin);
      throw;
    }
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    EditLog::forgetHandedOut({address, address + count * size});
    return begin;
  }

  void release(void* const* elements, std::size_t count) noexcept {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (std::size_t i = 0; i < count;) {
      const auto block = blockOf(elements[i]);
      if (block == blocks_.end()) {
        ::operator delete(elements[i++]);
        continue;
      }
      const std::less<const void*> before;
      std::size_t run = i;
      while (run < count && !before(elements[run], block->first) && before(elements[run], block->second.end)) ++run;
      drop(block, run - i);
      i = run;
    }
  }

  void releaseRun(void* first, std::size_t count) noexcept {
    const std::lock_guard<std::mutex> lock(mutex_);
    drop(blockOf(first), count);
  }

  bool find(const void* element, const void*& begin, const void*& end) noexcept {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto block = blockOf(element);
    if (block == blocks_.end()) return false;
    begin = block->first;
    end = block->second.end;
    return true;
  }

 private:
  struct Block {
    std::byte* end;
    std::size_t inUse;
  };
  using BlockMap = std::map<std::byte*, Block, std::less<>>;

  BlockMap::iterator blockOf(const void* element) {
    const auto* address = static_cast<const std::byte*>(element);
    const auto behind = blocks_.upper_bound(address);
    if (behind == blocks_.begin()) return blocks_.end();
    const auto block = std::prev(behind);
    return std::less<>()(address, block->second.end) ? block : blocks_.end();
  }

  void drop(BlockMap::iterator block, std::size_t elements) {
    block->second.inUse -= elements;
    if (block->second.inUse != 0) return;
    ::operator delete(block->first);
    blocks_.erase(block);
  }

  std::mutex mutex_;
  BlockMap blocks_;
};

}  // namespace

void* allocateElements(std::size_t count, std::size_t size) { return Blocks::all().allocate(count, size); }

void releaseElement(void* element) noexcept { Blocks::all().release(&element, 1); }

void releaseElements(const std::vector<void*>& elements) noexcept {
  Blocks::all().release(elements.data(), elements.size());
}

void releaseRun(void* first, std::size_t count) noexcept { Blocks::all().releaseRun(first, count); }

bool findBlock(const void* element, const void*& begin, const void*& end) noexcept {
  return Blocks::all().find(element, begin, end);
}

}  // namespace detail

void TEdge::operator delete(void* edge) noexcept { detail::releaseElement(edge); }
void Triangle::operator delete(void* triangle) noexcept { detail::releaseElement(triangle); }
void TConvex::operator delete(void* entry) noexcept { detail::releaseElement(entry); }

}  // namespace OrvikDTM
