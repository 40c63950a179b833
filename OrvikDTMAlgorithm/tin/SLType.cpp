#include <new>
#include <utility>

#include <OrvikDTMAlgorithm/tin/SLType.h>

inline namespace OrvikDTM {

namespace {

constexpr int kDefaultCapacity = 100;

void releaseElement(void* element) { ::operator delete(element); }

}  // namespace

SLType::SLType() : maxlen_(kDefaultCapacity) { listData_.reserve(kDefaultCapacity); }

SLType::~SLType() {
  for (void* element : listData_) releaseElement(element);
}

void SLType::setMaxlen(int n) {
  maxlen_ = n;
  if (n > 0) listData_.reserve(static_cast<std::size_t>(n));
}

void SLType::init(SLType* list) {
  if (list == nullptr) return;
  for (void* element : std::exchange(list->listData_, {})) releaseElement(element);
}

int SLType::add(SLType* list, void* data) {
  if (list == nullptr || list->getListLen() >= maxlen_) return 0;
  list->listData_.push_back(data);
  return 1;
}

int SLType::insert(SLType* list, int pos, void* data) {
  if (list == nullptr || list->getListLen() >= maxlen_ || pos < 1 || pos > list->getListLen() + 1) return 0;
  list->listData_.insert(list->listData_.begin() + (pos - 1), data);
  return 1;
}

int SLType::deleteData(SLType* list, int num) {
  if (list == nullptr || num < 1 || num > list->getListLen()) return 0;
  const auto place = list->listData_.begin() + (num - 1);
  releaseElement(*place);
  list->listData_.erase(place);
  return 1;
}

void* SLType::findByNum(SLType* list, int num) const {
  if (list == nullptr || num < 1 || num > list->getListLen()) return nullptr;
  return list->listData_[static_cast<std::size_t>(num - 1)];
}

SLType* SLType::switchPos(SLType* list, int a, int b) {
  if (findByNum(list, a) == nullptr || findByNum(list, b) == nullptr) return nullptr;
  std::swap(list->listData_[static_cast<std::size_t>(a - 1)], list->listData_[static_cast<std::size_t>(b - 1)]);
  return list;
}

}  // namespace OrvikDTM
