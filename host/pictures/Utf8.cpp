#include "Utf8.h"

namespace pictures {

std::size_t characterLength(const std::string& text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const unsigned lead = byte(at);
  if (lead < 0x80U) return 1;
  const std::size_t length = lead >= 0xF0U ? 4 : lead >= 0xE0U ? 3 : 2;
  if (lead < 0xC2U || lead > 0xF4U) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xC0U) != 0x80U) return 0;
  }
  const unsigned second = byte(at + 1);
  const bool isTooLong = (lead == 0xE0U && second < 0xA0U) || (lead == 0xF0U && second < 0x90U);
  const bool isNoCharacter = (lead == 0xEDU && second >= 0xA0U) || (lead == 0xF4U && second >= 0x90U) ||
                             (lead == 0xEFU && second == 0xBFU && byte(at + 2) >= 0xBEU);
  return isTooLong || isNoCharacter ? 0 : length;
}

}  // namespace pictures
