// Private. Which kind of surface file an extension stands for.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include <OrvikDTMAlgorithm/report/LowerAscii.h>

inline namespace OrvikDTM {
namespace detail {

// What DTMFileOperation::loadSurface() refuses.
inline constexpr int kNoFileKind = -1;

// In the order of the kinds, from 0.
inline constexpr std::array<std::string_view, 3> kSurfaceExtensions = {".ttin", ".sjw", ".xml"};

inline bool isSameText(std::string_view text, std::string_view lower) {
  return text.size() == lower.size() &&
         std::equal(text.begin(), text.end(), lower.begin(), [](char a, char b) { return lowerAscii(a) == b; });
}

// The kind of an extension, in any case. Null is none.
inline int kindOfExtension(const char* extension) {
  for (std::size_t kind = 0; extension != nullptr && kind < kSurfaceExtensions.size(); ++kind) {
    if (isSameText(extension, kSurfaceExtensions[kind])) return static_cast<int>(kind);
  }
  return kNoFileKind;
}

// The kind of a file, by the end of its path.
inline int kindOfPath(const char* path) {
  const std::string_view text = path == nullptr ? "" : path;
  const std::size_t dot = text.rfind('.');
  return dot == std::string_view::npos ? kNoFileKind : kindOfExtension(path + dot);
}

}  // namespace detail
}  // namespace OrvikDTM
