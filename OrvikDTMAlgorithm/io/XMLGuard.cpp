#include <algorithm>
#include <string_view>
#include <vector>

#include <OrvikDTMAlgorithm/io/XMLGuard.h>
#include <OrvikDTMAlgorithm/report/LowerAscii.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kDeclaration = "<?xml";

bool isWhite(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isHexDigit(char c) { return isDigit(c) || (lowerAscii(c) >= 'a' && lowerAscii(c) <= 'f'); }

// To the parser every byte from 127 on is a letter.
bool startsName(char c) {
  return (lowerAscii(c) >= 'a' && lowerAscii(c) <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 127;
}

// What is a letter to the parser, and white space in no locale: the letters of ASCII, and the bytes with which a
// character begins in UTF-8.
bool surelyStartsName(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return startsName(c) && (byte < 127 || (byte >= 0xC2 && byte <= 0xF4));
}

bool continuesName(char c) { return startsName(c) || isDigit(c) || c == '-' || c == '.' || c == ':'; }

// Walks through a text node by node. Every step is false when it gives up.
class Scan {
 public:
  Scan(std::string& text, const XMLLimits& limits) : text_(text), limits_(limits) {}

  bool run() {
    for (;;) {
      if (open_.empty()) {
        skipWhite();
        if (atEnd()) return true;
        // Whether a byte beyond ASCII is white to the parser is up to the process locale.
        if (text_[at_] != '<') return isAscii(text_[at_]);
      } else if (!passText()) {
        return false;
      }
      if (!passNode()) return false;
    }
  }

 private:
  static constexpr std::size_t kEnd = std::string::npos;

  bool atEnd() const { return at_ == text_.size(); }
  bool isNext(char c) const { return !atEnd() && text_[at_] == c; }
  bool isNext(std::string_view word) const { return std::string_view(text_).substr(at_).starts_with(word); }

  void skipWhite() {
    while (!atEnd() && isWhite(text_[at_])) ++at_;
  }

  bool passOver(char c) {
    if (!isNext(c)) return false;
    ++at_;
    return true;
  }

  // Goes on behind the next `end`.
  bool passBehind(std::string_view end, std::size_t from) {
    const std::size_t found = text_.find(end, from);
    if (found == kEnd) return false;
    at_ = found + end.size();
    return true;
  }

  // Stops at the next `end`. Everything before it is text in which the parser replaces references.
  bool passTo(char end) {
    const std::size_t found = text_.find(end, at_);
    if (found == kEnd || !referencesEnd(std::string_view(text_).substr(at_, found - at_))) return false;
    at_ = found;
    return true;
  }

  // The parser looks for the ";" of a reference by number beyond all bounds, and swallows what it finds on the way.
  static bool referencesEnd(std::string_view part) {
    for (std::size_t at = part.find("&#"); at != kEnd; at = part.find("&#", at)) {
      at += 2;
      const bool hex = at < part.size() && part[at] == 'x';
      if (hex) ++at;
      const std::size_t first = at;
      while (at < part.size() && (hex ? isHexDigit(part[at]) : isDigit(part[at]))) ++at;
      if (at == first || at == part.size() || part[at] != ';') return false;
    }
    return true;
  }

  bool passText() { return passTo('<'); }

  // Any thing that starts with "<".
  bool passNode() {
    if (isDeclarationNext()) return open_.empty() && blankDeclaration();
    if (isNext("<!--")) return passBehind("-->", at_ + 4);
    if (isNext("<![CDATA[")) return passBehind("]]>", at_ + 9);
    if (!open_.empty() && isNext("</")) return passEndTag();
    if (at_ + 1 < text_.size() && startsName(text_[at_ + 1])) return passStartTag();
    return passBehind(">", at_);  // to the parser all else ends here, document types with rules of their own too
  }

  bool isDeclarationNext() const {
    const std::string_view next = std::string_view(text_).substr(at_, kDeclaration.size());
    return std::equal(next.begin(), next.end(), kDeclaration.begin(), kDeclaration.end(),
                      [](char c, char expected) { return lowerAscii(c) == expected; });
  }

  // Nothing of what it says is of use: bytes are read as bytes. The parser's own reading of it is its weakest spot.
  bool blankDeclaration() {
    const std::size_t end = text_.find_first_of("<>", at_ + 1);
    if (end == kEnd || text_[end] != '>' || text_[end - 1] != '?') return false;
    std::fill(text_.begin() + static_cast<std::ptrdiff_t>(at_), text_.begin() + static_cast<std::ptrdiff_t>(end) + 1,
              ' ');
    return true;
  }

  bool passEndTag() {
    at_ += 2;
    if (!isNext(open_.back())) return false;
    at_ += open_.back().size();
    open_.pop_back();
    skipWhite();
    return passOver('>');
  }

  bool passStartTag() {
    if (open_.size() == limits_.depth) return false;
    ++at_;
    const std::string_view name = takeName();
    for (std::size_t attributes = 0;; ++attributes) {
      skipWhite();
      if (passOver('/')) return passOver('>');
      if (passOver('>')) break;
      if (attributes == limits_.attributes || !passAttribute()) return false;
    }
    open_.push_back(name);
    return true;
  }

  std::string_view takeName() {
    const std::size_t begin = at_;
    while (!atEnd() && continuesName(text_[at_])) ++at_;
    return std::string_view(text_).substr(begin, at_ - begin);
  }

  bool passAttribute() {
    if (atEnd() || !surelyStartsName(text_[at_])) return false;
    takeName();
    skipWhite();
    if (!passOver('=')) return false;
    skipWhite();
    for (const char quote : {'"', '\''}) {
      if (passOver(quote)) return passTo(quote) && passOver(quote);
    }
    return passBareValue();
  }

  // The parser puts up with values that are not quoted.
  bool passBareValue() {
    for (; !atEnd() && isAscii(text_[at_]); ++at_) {
      const char c = text_[at_];
      if (isWhite(c) || c == '/' || c == '>') return true;
      if (c == '"' || c == '\'') return false;
    }
    return false;
  }

  std::string& text_;
  const XMLLimits limits_;
  std::size_t at_ = 0;
  std::vector<std::string_view> open_;  // the names of the elements that are open; their bytes stay where they are
};

}  // namespace

bool makeReadyForParser(std::string& text, const XMLLimits& limits) {
  text.resize(std::min(text.find('\0'), text.size()));
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  return Scan(text, limits).run();
}

}  // namespace detail
}  // namespace OrvikDTM
