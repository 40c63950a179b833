#include "TextLines.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "Console.h"
#include "UserText.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// What a header would look like in place of the first line's numbers.
const char* headerAdvice(long long line) { return line == 1 ? "; if line 1 is a header, remove it" : ""; }

std::string described(const NumberField& expected, const std::string& field) {
  return std::string("the ") + expected.name + " " + quoted(field);
}

}  // namespace

std::string notANumber(const NumberField& expected, const std::string& field, long long line) {
  return described(expected, field) + " is not a number: correct the line or take it out" + headerAdvice(line);
}

std::string tooLarge(const NumberField& expected, const std::string& field) {
  return described(expected, field) + " is too large: correct it, the largest is " + expected.largestText;
}

TextLines::TextLines(const std::string& path) : path_(path), file_(path, std::ios::binary) {
  if (!file_) throw console::Failure(shownPath(path_) + ": " + kUnreadable);
  std::error_code ignored;
  size_ = static_cast<double>(std::filesystem::file_size(path, ignored));
  readMore();
  if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
}

void TextLines::requireText(std::string_view read) const {
  if (read.find('\0') == std::string_view::npos) return;
  throw console::Failure(shownPath(path_) + ": " + kNoText);
}

// Brings the next part of the file behind what is left of the buffer. False when there is none.
bool TextLines::readMore() {
  constexpr std::size_t kLeastPart = std::size_t{1} << 18U;
  std::string left(rest_);
  const std::size_t kept = left.size();
  const std::size_t part = std::max(kLeastPart, kept);  // doubling, so that a line of any length is read in its time
  left.resize(kept + part);
  file_.read(left.data() + kept, static_cast<std::streamsize>(part));
  const auto read = static_cast<std::size_t>(file_.gcount());
  if (file_.bad()) throw console::Failure(shownPath(path_) + ": reading stopped before its end: check the disk");
  left.resize(kept + read);
  buffer_.swap(left);
  rest_ = buffer_;
  requireText(rest_.substr(kept));
  returns_ = rest_.find('\r') != std::string_view::npos;
  read_ += static_cast<double>(read);
  return read > 0;
}

bool TextLines::next() {
  std::size_t end = rest_.find('\n');
  while (end == std::string_view::npos && readMore()) end = rest_.find('\n');
  if (rest_.empty()) return false;
  line_ = rest_.substr(0, end);
  rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
  ++number_;
  if (returns_) dropReturns();
  return true;
}

void TextLines::dropReturns() {
  while (!line_.empty() && line_.back() == '\r') line_.remove_suffix(1);
  if (line_.find('\r') == std::string_view::npos) return;
  fail(kLoneReturn);
}

double TextLines::done() const { return size_ > 0.0 ? (read_ - static_cast<double>(rest_.size())) / size_ : 1.0; }

std::string TextLines::where() const { return shownPath(path_) + ":" + std::to_string(number_) + ": "; }

void TextLines::fail(const std::string& text) const { throw console::Failure(where() + text); }

double TextLines::requireNumber(std::string_view field, const NumberField& expected) const {
  double value = 0.0;
  if (parsePlainNumber(field, value)) return value;
  const std::string text(field);
  if (!parseNumber(text, value)) fail(notANumber(expected, text, number_));
  if (std::fabs(value) > expected.largest) fail(tooLarge(expected, text));
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
