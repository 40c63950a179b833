// Private. Names as surface files hold them: fields of 24 bytes of UTF-8, zeros behind them. A surface may have
// millions of names, so what needs no conversion gets none.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/NameInUtf8.h>

inline namespace OrvikDTM {
namespace detail {

inline constexpr std::size_t kNameFieldBytes = 24;

class NameField {
 public:
  NameField()
      : isUtf8_(isCodePageUtf8()), keepsAscii_(isUtf8_ || codePageToUtf8(printableAscii()) == printableAscii()) {}

  // Fills a field from a name. An empty name, and one that does not belong to the code page, is a single blank; a name
  // that is too long in UTF-8 is cut, even inside a character. Of a character that was cut off in the record nothing is
  // written.
  void write(unsigned char* field, const char* name) const {
    const std::string_view text(name, strnlen(name, kNameSize));
    if (needsNoConversion(text)) return fill(field, text);
    fill(field, nameInUtf8(text));
  }

  // Fills a name from a field. A character that was cut off in the field, or has no room in the name, is left out.
  void read(char (&name)[kNameSize], const unsigned char* field) const {
    const auto* bytes = reinterpret_cast<const char*>(field);  // char may alias everything
    const std::string_view text(bytes, strnlen(bytes, kNameFieldBytes));
    if (needsNoConversion(text)) return copyName(name, text);
    std::string converted;
    std::string_view whole = withoutBrokenEnd(text);
    while ((converted = utf8ToCodePage(std::string(whole))).size() > kNameSize - 1) {
      whole = withoutBrokenEnd(whole.substr(0, whole.size() - 1));
    }
    copyName(name, std::string_view(converted));
  }

 private:
  // A text in UTF-8 without the bytes at its end that only begin a character.
  static std::string_view withoutBrokenEnd(std::string_view text) {
    constexpr std::size_t kLongest = 4;
    for (std::size_t length = 1; length <= std::min(kLongest, text.size()); ++length) {
      const auto byte = static_cast<unsigned char>(text[text.size() - length]);
      if ((byte & 0xC0u) == 0x80u) continue;  // the first byte of the character is further ahead
      const std::size_t needed = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
      if (length < needed) text.remove_suffix(length);
      break;
    }
    return text;
  }

  static constexpr char kFirstPrintable = ' ';
  static constexpr char kLastPrintable = '~';

  static std::string printableAscii() {
    std::string all;
    for (char c = kFirstPrintable; c <= kLastPrintable; ++c) all += c;
    return all;
  }

  bool needsNoConversion(std::string_view text) const {
    if (isUtf8_) return true;
    if (!keepsAscii_) return false;
    for (const char c : text) {
      if (c < kFirstPrintable || c > kLastPrintable) return false;
    }
    return true;
  }

  static void fill(unsigned char* field, std::string_view text) {
    if (text.empty()) text = " ";
    const std::size_t kept = std::min(text.size(), kNameFieldBytes);
    std::memcpy(field, text.data(), kept);
    std::memset(field + kept, 0, kNameFieldBytes - kept);
  }

  bool isUtf8_;
  bool keepsAscii_;
};

}  // namespace detail
}  // namespace OrvikDTM
