#include "memory/FailingAllocator.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <new>

#if defined(__GLIBC__) && !defined(ORVIKDTM_SANITIZED)
#define ORVIKDTM_TEST_FAILS_MALLOC 1
#endif

namespace {

constexpr long kUnlimited = -1;
thread_local long allowance = kUnlimited;
thread_local memory::Failure manner = memory::Failure::kOnce;
thread_local bool hasFailed = false;
std::atomic<long> inUse{0};

// Whether this allocation is the one that fails.
bool failsNow() {
  if (allowance == kUnlimited) return false;
  if (allowance > 0) {
    --allowance;
    return false;
  }
  if (hasFailed && manner == memory::Failure::kOnce) return false;
  hasFailed = true;
  return true;
}

}  // namespace

#if defined(ORVIKDTM_TEST_FAILS_MALLOC)

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
  if (!failsNow()) return __libc_malloc(size);
  errno = ENOMEM;
  return nullptr;
}

void* calloc(std::size_t count, std::size_t size) {
  if (!failsNow()) return __libc_calloc(count, size);
  errno = ENOMEM;
  return nullptr;
}

void* realloc(void* block, std::size_t size) {
  if (!failsNow()) return __libc_realloc(block, size);
  errno = ENOMEM;
  return nullptr;
}

}  // extern "C"

namespace {

void* rawBlock(std::size_t size) { return __libc_malloc(size); }

}  // namespace

#else

namespace {

void* rawBlock(std::size_t size) { return std::malloc(size); }

}  // namespace

#endif

namespace {

void* allocate(std::size_t size, std::size_t alignment) {
  if (failsNow()) throw std::bad_alloc();
  const std::size_t whole = (size / alignment + 1) * alignment;
  void* block = alignment <= alignof(std::max_align_t) ? rawBlock(size + 1) : std::aligned_alloc(alignment, whole);
  if (block == nullptr) throw std::bad_alloc();
  inUse.fetch_add(1, std::memory_order_relaxed);
  return block;
}

void* allocateOrNull(std::size_t size) noexcept {
  try {
    return allocate(size, 1);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void release(void* block) {
  if (block != nullptr) inUse.fetch_sub(1, std::memory_order_relaxed);
  std::free(block);
}

std::size_t bytes(std::align_val_t alignment) { return static_cast<std::size_t>(alignment); }

}  // namespace

void* operator new(std::size_t size) { return allocate(size, 1); }
void* operator new[](std::size_t size) { return allocate(size, 1); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocateOrNull(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocateOrNull(size); }
void* operator new(std::size_t size, std::align_val_t alignment) { return allocate(size, bytes(alignment)); }
void* operator new[](std::size_t size, std::align_val_t alignment) { return allocate(size, bytes(alignment)); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::align_val_t) noexcept { release(block); }
void operator delete[](void* block, std::align_val_t) noexcept { release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { release(block); }

namespace memory {

void limit(long allowed, Failure failure) {
  hasFailed = false;
  manner = failure;
  allowance = allowed;
}

bool unlimit() {
  allowance = kUnlimited;
  return hasFailed;
}

long blocksInUse() { return inUse.load(std::memory_order_relaxed); }

}  // namespace memory
