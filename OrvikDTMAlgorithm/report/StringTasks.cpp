// Small string tasks: splitting, trimming, padding, code pages, the time as text.
#include <algorithm>
#include <cstdio>

#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/GbkText.h>
#include <OrvikDTMAlgorithm/report/LowerAscii.h>
#include <OrvikDTMAlgorithm/report/U.h>

inline namespace OrvikDTM {
bool U::endsWith(const std::string& s, const std::string& suffix) {
  if (s.size() < suffix.size()) return false;
  return std::equal(suffix.begin(), suffix.end(), s.end() - static_cast<std::ptrdiff_t>(suffix.size()),
                    [](char a, char b) { return detail::lowerAscii(a) == detail::lowerAscii(b); });
}

std::vector<std::string> U::split(std::string s, const std::string& sep) {
  if (sep.empty()) return {std::move(s)};
  std::vector<std::string> pieces;
  std::size_t start = 0;
  for (std::size_t cut = s.find(sep); cut != std::string::npos; cut = s.find(sep, start)) {
    pieces.push_back(s.substr(start, cut - start));
    start = cut + sep.size();
  }
  pieces.push_back(s.substr(start));
  return pieces;
}

std::string U::trim(const std::string& s) {
  const std::size_t first = s.find_first_not_of(' ');
  if (first == std::string::npos) return s;
  return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

std::string U::replace(const std::string& s, const std::string& from, const std::string& to) {
  if (from.empty()) return s;
  std::string result;
  std::size_t start = 0;
  for (std::size_t at = s.find(from); at != std::string::npos; at = s.find(from, start)) {
    result.append(s, start, at - start).append(to);
    start = at + from.size();
  }
  return result.append(s, start);
}

std::string U::appentStr4Length(std::string s, int n) {
  if (n > 0 && s.size() < static_cast<std::size_t>(n)) s.resize(static_cast<std::size_t>(n), ' ');
  return s;
}

std::string U::ansiToUTF8(const std::string& s) { return detail::codePageToUtf8(s); }

std::string U::utf8ToANSI(const std::string& s) { return detail::utf8ToCodePage(s); }

void U::println(const std::string&) {}

std::string U::currentTimeMillis() {
  const detail::LocalTime now = detail::localTime();
  char text[64];
  std::snprintf(text, sizeof text, "%4d/%02d/%02d %02d:%02d:%02d.%03d %s%1d\n", now.year, now.month, now.day, now.hour,
                now.minute, now.second, now.millisecond, detail::gbk::kWeekday, now.dayOfWeek);
  return text;
}

}  // namespace OrvikDTM
