// The services of the operating system on Windows. The code page is the system's ANSI code page.
#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <climits>
#include <windows.h>

#include <OrvikDTMAlgorithm/platform/Platform.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

std::wstring toWide(const std::string& text, UINT codePage) {
  if (text.empty() || text.size() > INT_MAX) return L"";
  const int length = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(codePage, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(), needed);
  return wide;
}

std::string fromWide(const std::wstring& wide, UINT codePage) {
  if (wide.empty()) return "";
  const int length = static_cast<int>(wide.size());
  const int needed = WideCharToMultiByte(codePage, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(codePage, 0, wide.data(), length, text.data(), needed, nullptr, nullptr);
  return text;
}

}  // namespace

bool isCodePageUtf8() { return false; }  // even where it is, what is not valid UTF-8 does not come back as it was

std::string codePageToUtf8(const std::string& text) { return fromWide(toWide(text, CP_ACP), CP_UTF8); }

std::string utf8ToCodePage(const std::string& text) { return fromWide(toWide(text, CP_UTF8), CP_ACP); }

LocalTime localTime() {
  SYSTEMTIME t;
  GetLocalTime(&t);
  return {t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond, t.wMilliseconds, t.wDayOfWeek};
}

std::string existingPath(const char* path) { return path; }

std::size_t lastBackslash(std::string_view path) {
  std::size_t last = std::string_view::npos;
  for (std::size_t at = 0; at < path.size(); ++at) {
    if (path[at] == '\\') last = at;
    if (IsDBCSLeadByte(static_cast<BYTE>(path[at])) != 0) ++at;
  }
  return last;
}

void preferLargePages(void* /*begin*/, std::size_t /*bytes*/) {}

void* giveBackLargePages(void* begin, std::size_t bytes) { return static_cast<char*>(begin) + bytes; }

}  // namespace detail
}  // namespace OrvikDTM
