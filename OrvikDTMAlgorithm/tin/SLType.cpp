#include <utility>

#include <OrvikDTMAlgorithm/tin/Edits.h>
#include <OrvikDTMAlgorithm/tin/ElementBlocks.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/SLType.h>

inline namespace OrvikDTM {

namespace {

constexpr int kDefaultCapacity = 100;

}  // namespace

SLType::SLType() : maxlen_(kDefaultCapacity) { listData_.reserve(kDefaultCapacity); }

SLType& SLType::operator=(const SLType& other) {
  detail::Edits::note(this);
  listData_ = other.listData_;  // first: it may run out of memory
  run_ = other.run_;
  maxlen_ = other.maxlen_;
  return *this;
}

SLType::SLType(SLType&& other) noexcept
    : maxlen_(other.maxlen_), listData_(std::move(other.listData_)), run_(std::move(other.run_)) {
  detail::Edits::note(&other);
}

SLType& SLType::operator=(SLType&& other) noexcept {
  detail::Edits::note(&other);
  detail::Edits::note(this);
  maxlen_ = other.maxlen_;
  listData_ = std::move(other.listData_);
  run_ = std::move(other.run_);
  return *this;
}

SLType::~SLType() { releaseAll(); }

void SLType::setMaxlen(int n) {
  if (n > 0) detail::reserveLarge(listData_, static_cast<std::size_t>(n));
  maxlen_ = n;
}

std::vector<void*> SLType::getListData() const {
  std::vector<void*> data;
  data.reserve(length());
  for (int number = 1; number <= getListLen(); ++number) data.push_back(findByNum(this, number));
  return data;
}

void SLType::setListData(const std::vector<void*>& data) {
  detail::Edits::note(this);
  listData_ = data;
  run_ = Run();
}

void SLType::init(SLType* list) {
  if (list == nullptr) return;
  detail::Edits::note(list);
  list->releaseAll();
}

int SLType::add(SLType* list, void* data) {
  if (list == nullptr || list->getListLen() >= maxlen_) return 0;
  detail::Edits::note(list);
  list->holdByPointers();
  list->listData_.push_back(data);
  return 1;
}

int SLType::insert(SLType* list, int pos, void* data) {
  if (list == nullptr || list->getListLen() >= maxlen_ || pos < 1 || pos > list->getListLen() + 1) return 0;
  detail::Edits::note(list);
  list->holdByPointers();
  list->listData_.insert(list->listData_.begin() + (pos - 1), data);
  return 1;
}

int SLType::deleteData(SLType* list, int num) {
  if (list == nullptr || num < 1 || num > list->getListLen()) return 0;
  detail::Edits::note(list);
  list->holdByPointers();
  const auto place = list->listData_.begin() + (num - 1);
  detail::releaseElement(*place);
  list->listData_.erase(place);
  return 1;
}

SLType* SLType::switchPos(SLType* list, int a, int b) {
  const auto exists = [list](int num) { return list != nullptr && num >= 1 && num <= list->getListLen(); };
  if (!exists(a) || !exists(b)) return nullptr;
  detail::Edits::note(list);
  list->holdByPointers();
  std::swap(list->listData_[static_cast<std::size_t>(a - 1)], list->listData_[static_cast<std::size_t>(b - 1)]);
  return list;
}

void SLType::holdByPointers() {
  if (run_.first == nullptr) return;
  detail::reserveLarge(listData_, run_.length);
  for (std::size_t i = 0; i < run_.length; ++i) listData_.push_back(run_.at(i));
  run_ = Run();
}

void SLType::releaseAll() {
  if (run_.first != nullptr) detail::releaseRun(run_.first, run_.length);
  run_ = Run();
  detail::releaseElements(std::exchange(listData_, {}));
}

}  // namespace OrvikDTM
