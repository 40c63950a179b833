#include <utility>

#include <OrvikDTMAlgorithm/tin/ElementBlocks.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/SLType.h>

inline namespace OrvikDTM {

namespace {

constexpr int kDefaultCapacity = 100;

}  // namespace

SLType::SLType() : maxlen_(kDefaultCapacity) { listData_.reserve(kDefaultCapacity); }

SLType::~SLType() { detail::releaseElements(listData_); }

void SLType::setMaxlen(int n) {
  maxlen_ = n;
  if (n > 0) detail::reserveLarge(listData_, static_cast<std::size_t>(n));
}

void SLType::setListData(const std::vector<void*>& data) {
  listData_ = data;
  sideBySide_ = nullptr;
}

void SLType::init(SLType* list) {
  if (list == nullptr) return;
  list->sideBySide_ = nullptr;
  detail::releaseElements(std::exchange(list->listData_, {}));
}

int SLType::add(SLType* list, void* data) {
  if (list == nullptr || list->getListLen() >= maxlen_) return 0;
  list->listData_.push_back(data);
  list->sideBySide_ = nullptr;
  return 1;
}

int SLType::insert(SLType* list, int pos, void* data) {
  if (list == nullptr || list->getListLen() >= maxlen_ || pos < 1 || pos > list->getListLen() + 1) return 0;
  list->listData_.insert(list->listData_.begin() + (pos - 1), data);
  list->sideBySide_ = nullptr;
  return 1;
}

int SLType::deleteData(SLType* list, int num) {
  if (list == nullptr || num < 1 || num > list->getListLen()) return 0;
  const auto place = list->listData_.begin() + (num - 1);
  detail::releaseElement(*place);
  list->listData_.erase(place);
  list->sideBySide_ = nullptr;
  return 1;
}

SLType* SLType::switchPos(SLType* list, int a, int b) {
  const auto exists = [list](int num) { return list != nullptr && num >= 1 && num <= list->getListLen(); };
  if (!exists(a) || !exists(b)) return nullptr;
  list->sideBySide_ = nullptr;
  std::swap(list->listData_[static_cast<std::size_t>(a - 1)], list->listData_[static_cast<std::size_t>(b - 1)]);
  return list;
}

}  // namespace OrvikDTM
