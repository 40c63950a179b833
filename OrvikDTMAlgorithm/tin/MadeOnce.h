// A value that is made when it is first asked for. Private.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>

inline namespace OrvikDTM {
namespace detail {

// Several threads may ask at once: one of them makes the value, the others wait for it. Afterwards asking costs one
// load. When making it fails by an exception, the next one to ask makes it.
template <typename T>
class MadeOnce {
 public:
  bool isMade() const { return made_.load(std::memory_order_acquire) != nullptr; }

  // `make` gives a std::unique_ptr<const T>.
  template <typename Make>
  const T& get(const Make& make) const {
    if (const T* made = made_.load(std::memory_order_acquire)) return *made;
    const std::lock_guard<std::mutex> lock(mutex_);
    if (owned_ == nullptr) {
      owned_ = make();
      made_.store(owned_.get(), std::memory_order_release);
    }
    return *owned_;
  }

 private:
  mutable std::mutex mutex_;
  mutable std::unique_ptr<const T> owned_;
  mutable std::atomic<const T*> made_{nullptr};
};

}  // namespace detail
}  // namespace OrvikDTM
