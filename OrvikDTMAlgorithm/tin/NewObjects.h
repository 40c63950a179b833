// Private. Objects made with `new` for a list of pointers, kept together until the list has its owner.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

inline namespace OrvikDTM {
namespace detail {

template <typename Object>
class NewObjects {
 public:
  explicit NewObjects(std::size_t expected) { pointers_.reserve(expected); }
  ~NewObjects() {
    for (const Object* object : pointers_) delete object;
  }
  NewObjects(const NewObjects&) = delete;
  NewObjects& operator=(const NewObjects&) = delete;

  void add(const Object& object) {
    auto made = std::make_unique<Object>(object);
    pointers_.push_back(made.get());
    static_cast<void>(made.release());
  }

  const std::vector<Object*>& all() const { return pointers_; }

  // Hands the objects over.
  std::vector<Object*> take() { return std::exchange(pointers_, {}); }

 private:
  std::vector<Object*> pointers_;
};

}  // namespace detail
}  // namespace OrvikDTM
