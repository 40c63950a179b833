// Private. The name of a surface or point in UTF-8, as files and pages hold it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/surface/NameSize.h>

inline namespace OrvikDTM {
namespace detail {

// A name that fills its record was perhaps cut inside a character of several bytes. No conversion takes such a name, so
// what is left of that character goes, not the name. Empty when the name does not belong to the code page otherwise.
inline std::string nameInUtf8(std::string_view name) {
  constexpr std::size_t kMostOfACharacter = 3;  // the code pages' longest have four bytes
  std::string converted = codePageToUtf8(std::string(name));
  if (name.size() + 1 != kNameSize) return converted;
  for (std::size_t dropped = 0; converted.empty() && dropped < kMostOfACharacter; ++dropped) {
    name.remove_suffix(1);
    converted = codePageToUtf8(std::string(name));
  }
  return converted;
}

}  // namespace detail
}  // namespace OrvikDTM
