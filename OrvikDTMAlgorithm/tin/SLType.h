// A bounded list of owned elements, numbered from 1. Every collection of a TIN is one, and the numbers that a TIN
// stores (a triangle's edges, an edge's triangles, a hull entry's edge) are positions in these lists; 0 means none.
//
// 1. Elements are held as untyped pointers made with `new` and released as raw storage: no destructor runs, so elements
// hold
//    no resources of their own.
// 2. The operations take the list to work on as their first argument; callers pass the list itself:
//    list->add(list, element). A null list has no elements and accepts none.
// 3. Copying copies the capacity and the pointers, not the elements: copy and source share them, and both would release
//    them. Empty one of the two with setListData({}) before it goes.
#pragma once

#include <cstddef>
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
  SLType& operator=(const SLType&) = default;
  SLType(SLType&&) = default;
  SLType& operator=(SLType&&) = default;

  // Releases every element.
  ~SLType();

  // The number of elements that the list accepts. Setting it reserves room for them at once.
  int getMaxlen() const { return maxlen_; }
  void setMaxlen(int n);

  int getListLen() const { return static_cast<int>(listData_.size()); }

  // A copy of the pointers, and their replacement by a copy of the ones given (the old elements are not released).
  std::vector<void*> getListData() const { return listData_; }
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
    return list == nullptr || index >= list->listData_.size() ? nullptr : list->listData_[index];
  }

  // Swaps elements a and b and returns `list`; null, and nothing is changed, when either does not exist.
  SLType* switchPos(SLType* list, int a, int b);

 private:
  friend class detail::ListElements;

  int maxlen_;
  std::vector<void*> listData_;

  // The first element where all of them lie side by side in their order, as they do in a list that was filled at once
  // and not changed since; null otherwise.
  const void* sideBySide_ = nullptr;
};

}  // namespace OrvikDTM
