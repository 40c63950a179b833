// Private. Names as surface files hold them: fields of 24 bytes of UTF-8, zeros behind them. A surface may have
// millions of names, so what needs no conversion gets none.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/surface/Name.h>

inline namespace OrvikDTM {
namespace detail {

inline constexpr std::size_t kNameFieldBytes = 24;

class NameField {
 public:
  NameField()
      : isUtf8_(isCodePageUtf8()), keepsAscii_(isUtf8_ || codePageToUtf8(printableAscii()) == printableAscii()) {}

  // Fills a field from a name. An empty name, and one that does not belong to the code page, is a single blank; a name
  // that is too long in UTF-8 is cut, even inside a character.
  void write(unsigned char* field, const char* name) const {
    const std::string_view text(name, strnlen(name, kNameSize));
    if (needsNoConversion(text)) return fill(field, text);
    fill(field, codePageToUtf8(std::string(text)));
  }

  // Fills a name from a field.
  void read(char (&name)[kNameSize], const unsigned char* field) const {
    const auto* bytes = reinterpret_cast<const char*>(field);  // char may alias everything
    const std::string_view text(bytes, strnlen(bytes, kNameFieldBytes));
    if (needsNoConversion(text)) return copyName(name, text);
    copyName(name, std::string_view(utf8ToCodePage(std::string(text))));
  }

 private:
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
