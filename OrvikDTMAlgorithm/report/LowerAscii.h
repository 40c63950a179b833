// Private. Case as the library ignores it: that of the letters of ASCII, in every locale.
#pragma once

inline namespace OrvikDTM {
namespace detail {

inline char lowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace detail
}  // namespace OrvikDTM
