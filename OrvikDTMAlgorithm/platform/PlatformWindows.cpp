// The services of the operating system on Windows. The code page is the system's ANSI code page.
#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <climits>
#include <cstdio>
#include <memory>
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

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File openFile(const char* path, const char* mode) {
  std::FILE* file = nullptr;
  if (path == nullptr || fopen_s(&file, existingPath(path).c_str(), mode) != 0) return nullptr;
  return File(file);
}

}  // namespace

std::string codePageToUtf8(const std::string& text) { return fromWide(toWide(text, CP_ACP), CP_UTF8); }

std::string utf8ToCodePage(const std::string& text) { return fromWide(toWide(text, CP_UTF8), CP_ACP); }

LocalTime localTime() {
  SYSTEMTIME t;
  GetLocalTime(&t);
  return {t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond, t.wMilliseconds, t.wDayOfWeek};
}

std::string existingPath(const char* path) { return path; }

bool readWholeFile(const char* path, std::string& contents) {
  const File file = openFile(path, "rb");
  if (!file) return false;
  constexpr std::size_t kStep = std::size_t{1} << 20;
  std::size_t length = 0;
  do {
    contents.resize(length + kStep);
    length += std::fread(contents.data() + length, 1, kStep, file.get());
  } while (length == contents.size());
  contents.resize(length);
  return std::ferror(file.get()) == 0;
}

Written writeTextFile(const char* path, const std::string& text) {
  File file = openFile(path, "w");
  if (!file) return Written::kNothing;
  const bool taken = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size();
  const bool stored = std::fclose(file.release()) == 0;
  return taken && stored ? Written::kWhole : Written::kPart;
}

void preferLargePages(void* /*begin*/, std::size_t /*bytes*/) {}

}  // namespace detail
}  // namespace OrvikDTM
