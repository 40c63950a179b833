// A bounded list of owned elements, numbered from 1. Every collection of a TIN is one, and the numbers that a TIN
// stores (a triangle's edges, an edge's triangles, a hull entry's edge) are positions in these lists; 0 means none.
//
// 1. Elements are held as untyped pointers made with `new` and released as raw storage: no destructor runs, so elements
//    hold no resources of their own. Those that the library makes many of at once lie side by side, and need no
//    pointers until the list is changed.
// 2. The operations take the list to work on as their first argument; callers pass the list itself:
//    list->add(list, element). A null list has no elements and accepts none.
// 3. When memory runs out, std::bad_alloc leaves the operation, the list is as it was, and an element that it was given
//    stays the caller's.
// 4. Copying copies the capacity and the pointers, not the elements: copy and source share them, and both would release
//    them. Empty one of the two with setListData({}) before it goes.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

namespace detail {
class ListElements;
}

class ORVIKDTM_API SLType {
 public:
  // An empty list that accepts 100 elements.
  SLType();
  SLType(const SLType&) = default;
  SLType& operator=(const SLType& other);
  SLType(SLType&& other) noexcept;
  SLType& operator=(SLType&& other) noexcept;

  // Releases every element.
  ~SLType();

  // The number of elements that the list accepts. Setting it reserves room for them at once.
  int getMaxlen() const { return maxlen_; }
  void setMaxlen(int n);

  int getListLen() const { return static_cast<int>(length()); }

  // A copy of the pointers, and their replacement by a copy of the ones given (the old elements are not released).
  std::vector<void*> getListData() const;
  void setListData(const std::vector<void*>& data);

  // Releases every element of `list` and gives up its storage.
  void init(SLType* list);

  // Appends `data`, which becomes number length + 1 and the list's own, and returns 1. A full list stores nothing,
  // releases nothing and returns 0.
  int add(SLType* list, void* data);

  // Makes `data` number `pos`; the elements from there on move up by one. Returns 1, or 0 when the list is full or
  // `pos` is not in 1..length + 1.
  int insert(SLType* list, int pos, void* data);

  // Removes and releases element `num`; later ones are renumbered one lower. Returns 1, or 0 when there is no such
  // element.
  int deleteData(SLType* list, int num);

  // Element `num`, or null when there is no such element.
  void* findByNum(const SLType* list, int num) const {
    const auto index = static_cast<std::size_t>(static_cast<unsigned>(num) - 1u);
    if (list == nullptr || index >= list->length()) return nullptr;
    return list->run_.first != nullptr ? list->run_.at(index) : list->listData_[index];
  }

  // Swaps elements a and b and returns `list`; null, and nothing is changed, when either does not exist.
  SLType* switchPos(SLType* list, int a, int b);

 private:
  friend class detail::ListElements;

  // Elements side by side; without a first one there are none.
  struct Run {
    std::byte* first = nullptr;
    std::size_t length = 0;
    std::size_t bytesOfOne = 0;

    Run() = default;
    Run(std::byte* begin, std::size_t count, std::size_t bytes) : first(begin), length(count), bytesOfOne(bytes) {}
    Run(const Run&) = default;
    Run& operator=(const Run&) = default;
    Run(Run&& other) noexcept : Run(other.first, other.length, other.bytesOfOne) { other.first = nullptr; }
    Run& operator=(Run&& other) noexcept {
      first = std::exchange(other.first, nullptr);
      length = other.length;
      bytesOfOne = other.bytesOfOne;
      return *this;
    }
    ~Run() = default;

    void* at(std::size_t index) const { return first + index * bytesOfOne; }
  };

  std::size_t length() const { return run_.first != nullptr ? run_.length : listData_.size(); }
  void holdByPointers();
  void releaseAll();

  int maxlen_;

  // The elements are in one of the two: in the run if there is one.
  std::vector<void*> listData_;
  Run run_;
};

}  // namespace OrvikDTM
