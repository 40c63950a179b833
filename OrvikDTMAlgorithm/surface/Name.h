// Filling the names of the records: at most 23 bytes (not characters: a longer name is cut silently, even inside a
// multi-byte character) and zeros behind them. Private.
#pragma once

#include <cstring>
#include <string_view>

#include <OrvikDTMAlgorithm/surface/NameSize.h>

inline namespace OrvikDTM {

// Fills `name` from `text`, which may be `name` itself.
inline void copyName(char (&name)[kNameSize], std::string_view text) {
  char copy[kNameSize] = {};
  text.copy(copy, kNameSize - 1);
  std::memcpy(name, copy, kNameSize);
}

// The same from a zero-terminated text; a null text gives the empty name.
inline void copyName(char (&name)[kNameSize], const char* text) {
  copyName(name, text == nullptr ? std::string_view() : std::string_view(text, strnlen(text, kNameSize - 1)));
}

}  // namespace OrvikDTM
