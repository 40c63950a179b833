// The 24-byte names of the records: at most 23 bytes (not characters: a longer name is cut silently, even inside a
// multi-byte character) and zeros behind them.
#pragma once

#include <cstring>

inline namespace OrvikDTM {

inline constexpr int kNameSize = 24;

// Fills `name` from a zero-terminated text; a null text gives the empty name. `text` may be `name` itself.
inline void copyName(char (&name)[kNameSize], const char* text) {
  char copy[kNameSize] = {};
  if (text != nullptr) std::memcpy(copy, text, strnlen(text, kNameSize - 1));
  std::memcpy(name, copy, kNameSize);
}

}  // namespace OrvikDTM
