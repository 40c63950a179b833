#include "StoredTin.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>

namespace {

constexpr std::uintmax_t kVersion = 1;
constexpr std::streamoff kVersionAt = 3;
constexpr std::size_t kVersionSize = 2;
constexpr std::streamoff kPointCountAt = 29;
constexpr std::uintmax_t kPointsAt = 85;
constexpr std::uintmax_t kPointSize = 48;
constexpr std::size_t kCountSize = 4;
constexpr std::array<std::uintmax_t, 3> kEntrySizes = {4, 56, 12};  // a hull entry, an edge, a triangle

// A number with its most significant byte first; 0 behind the end of the file.
std::uintmax_t bytesAt(std::ifstream& file, std::streamoff at, std::size_t size) {
  std::array<char, kCountSize> bytes{};
  file.clear();
  file.seekg(at);
  file.read(bytes.data(), static_cast<std::streamsize>(size));
  std::uintmax_t number = 0;
  for (std::size_t i = 0; i < size; ++i) number = (number << 8U) | static_cast<unsigned char>(bytes[i]);
  return number;
}

// Negative counts are 0.
std::uintmax_t countAt(std::ifstream& file, std::uintmax_t at) {
  constexpr std::uintmax_t kMost = 0x7FFFFFFF;
  const std::uintmax_t count = bytesAt(file, static_cast<std::streamoff>(at), kCountSize);
  return count <= kMost ? count : 0;
}

}  // namespace

bool isTinLost(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;  // nothing is known about it
  std::error_code fault;
  const std::uintmax_t size = std::filesystem::file_size(path, fault);
  const std::uintmax_t tin = kPointsAt + kPointSize * countAt(file, kPointCountAt);
  if (fault || size <= tin) return false;
  if (bytesAt(file, kVersionAt, kVersionSize) != kVersion) return true;
  std::uintmax_t end = tin + kEntrySizes.size() * kCountSize;
  for (std::size_t i = 0; i < kEntrySizes.size(); ++i) end += kEntrySizes[i] * countAt(file, tin + i * kCountSize);
  return size < end;
}
