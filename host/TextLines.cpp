#include "TextLines.h"

#include <cmath>
#include <filesystem>
#include <fstream>

#include "Console.h"
#include "UserText.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw console::Failure(shownPath(path) + ": cannot be read: check its permissions");
  std::error_code ignored;
  const auto size = std::filesystem::file_size(path, ignored);
  std::string text(ignored ? 0 : size, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (file.bad()) throw console::Failure(shownPath(path) + ": reading stopped before its end: check the disk");
  text.resize(static_cast<std::size_t>(file.gcount()));
  return text;
}

// What a header would look like in place of the first line's numbers.
const char* headerAdvice(int line) { return line == 1 ? "; if line 1 is a header, remove it" : ""; }

}  // namespace

TextLines::TextLines(const std::string& path) : path_(path), text_(contentsOf(path)), rest_(text_) {
  if (text_.find('\0') != std::string::npos) {
    throw console::Failure(shownPath(path_) + ": is not plain text: save it as text in UTF-8");
  }
  if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
}

bool TextLines::next() {
  if (rest_.empty()) return false;
  const std::size_t end = rest_.find('\n');
  line_ = rest_.substr(0, end);
  rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
  while (!line_.empty() && line_.back() == '\r') line_.remove_suffix(1);
  ++number_;
  if (line_.find('\r') != std::string_view::npos) {
    fail("a carriage return alone ends no line: save the file with line feeds");
  }
  return true;
}

double TextLines::done() const {
  return text_.empty() ? 1.0 : 1.0 - static_cast<double>(rest_.size()) / static_cast<double>(text_.size());
}

std::string TextLines::where() const { return shownPath(path_) + ":" + std::to_string(number_) + ": "; }

void TextLines::fail(const std::string& text) const { throw console::Failure(where() + text); }

double TextLines::requireNumber(std::string_view field, const NumberField& expected) const {
  double value = 0.0;
  if (parsePlainNumber(field, value)) return value;
  const std::string text(field);
  const std::string what = std::string("the ") + expected.name + " " + quoted(text);
  if (!parseNumber(text, value)) {
    fail(what + " is not a number: correct the line or take it out" + headerAdvice(number_));
  }
  if (std::fabs(value) > expected.largest) {
    fail(what + " is too large: correct it, the largest is " + expected.largestText);
  }
  return value;
}

bool takeField(std::string_view& rest, std::string_view& field, bool& more) {
  if (!more) return false;
  const std::size_t comma = rest.find(',');
  field = rest.substr(0, comma);
  more = comma != std::string_view::npos;
  rest.remove_prefix(more ? comma + 1 : rest.size());
  return true;
}
