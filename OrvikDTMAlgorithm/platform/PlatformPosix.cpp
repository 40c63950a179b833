// The services of the operating system on POSIX systems. The code page is the code set of the process locale.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <cwchar>
#include <fcntl.h>
#include <iconv.h>
#include <langinfo.h>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

#include <OrvikDTMAlgorithm/platform/Platform.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

constexpr const char* kUtf8 = "UTF-8";

// One iconv conversion, closed when it goes.
class Converter {
 public:
  Converter(const char* from, const char* to) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (isOpen()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool isOpen() const { return handle_ != kFailed; }

  // Converts from *in on and appends to `out`; with a null `in` appends what ends the text. False on text that does not
  // belong to the code set.
  bool append(char** in, std::size_t* inLeft, std::string& out) {
    for (;;) {
      std::array<char, 512> buffer;
      char* next = buffer.data();
      std::size_t room = buffer.size();
      const bool complete = iconv(handle_, in, inLeft, &next, &room) != static_cast<std::size_t>(-1);
      const bool full = !complete && errno == E2BIG;
      out.append(buffer.data(), next);
      if (!full) return complete;
    }
  }

 private:
  inline static const iconv_t kFailed = reinterpret_cast<iconv_t>(-1);  // what iconv_open documents
  iconv_t handle_;
};

std::string codePage() { return nl_langinfo(CODESET); }

// Calls visit(position) for every backslash, character by character; a byte that belongs to none counts as one.
template <typename Visit>
void forEachBackslash(std::string_view text, Visit&& visit) {
  std::mbstate_t state{};
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] == '\\') visit(at);
    const std::size_t length = std::mbrlen(text.data() + at, text.size() - at, &state);
    const bool isCharacter = length != 0 && length <= text.size() - at;
    if (!isCharacter) state = {};
    at += isCharacter ? length : 1;
  }
}

// Tells the system something about the large pages that lie whole in [begin, begin + bytes), and returns the end of the
// last of them; `begin` when there is none.
[[maybe_unused]] void* adviseOnLargePages(void* begin, std::size_t bytes, int advice) {
  constexpr std::uintptr_t kLargePage = std::uintptr_t{1} << 21;
  const auto address = reinterpret_cast<std::uintptr_t>(begin);
  const std::uintptr_t first = (address + kLargePage - 1) & ~(kLargePage - 1);
  const std::uintptr_t last = (address + bytes) & ~(kLargePage - 1);
  if (first >= last) return begin;
  madvise(reinterpret_cast<void*>(first), last - first, advice);
  return reinterpret_cast<void*>(last);
}

}  // namespace

std::string convertText(const std::string& text, const char* from, const char* to) {
  Converter converter(from, to);
  if (!converter.isOpen() && errno == ENOMEM) throw std::bad_alloc();  // or a name would be lost
  if (!converter.isOpen()) return "";
  std::string source = text;  // iconv wants to be able to write to its input
  std::string converted;
  char* in = source.data();
  std::size_t left = source.size();
  const bool complete = converter.append(&in, &left, converted) && converter.append(nullptr, nullptr, converted);
  return complete ? converted : "";
}

bool isUtf8Already(const std::string& codeset) {
  constexpr std::array<const char*, 7> kNames = {"UTF-8", "utf8", "ANSI_X3.4-1968", "US-ASCII", "ASCII", "646", ""};
  return std::find(kNames.begin(), kNames.end(), codeset) != kNames.end();
}

bool isCodePageUtf8() { return isUtf8Already(codePage()); }

std::string codePageToUtf8(const std::string& text) {
  const std::string codeset = codePage();
  return isUtf8Already(codeset) ? text : convertText(text, codeset.c_str(), kUtf8);
}

std::string utf8ToCodePage(const std::string& text) {
  const std::string codeset = codePage();
  return isUtf8Already(codeset) ? text : convertText(text, kUtf8, codeset.c_str());
}

LocalTime localTime() {
  const auto now = std::chrono::system_clock::now();
  const auto wholeSeconds = std::chrono::floor<std::chrono::seconds>(now);
  const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(now - wholeSeconds);
  const std::time_t seconds = std::chrono::system_clock::to_time_t(wholeSeconds);
  std::tm t{};
  localtime_r(&seconds, &t);
  constexpr int kFirstYear = 1900;
  return {t.tm_year + kFirstYear,
          t.tm_mon + 1,
          t.tm_mday,
          t.tm_hour,
          t.tm_min,
          t.tm_sec,
          static_cast<int>(milliseconds.count()),
          t.tm_wday};
}

std::string existingPath(const char* path) {
  std::string result = path;
  if (faccessat(AT_FDCWD, path, F_OK, AT_SYMLINK_NOFOLLOW) == 0) return result;
  forEachBackslash(path, [&result](std::size_t at) { result[at] = '/'; });
  return result;
}

std::size_t lastBackslash(std::string_view path) {
  std::size_t last = std::string_view::npos;
  forEachBackslash(path, [&last](std::size_t at) { last = at; });
  return last;
}

void preferLargePages(void* begin, std::size_t bytes) {
#if defined(MADV_HUGEPAGE)
  adviseOnLargePages(begin, bytes, MADV_HUGEPAGE);
#else
  static_cast<void>(begin);
  static_cast<void>(bytes);
#endif
}

void* giveBackLargePages(void* begin, std::size_t bytes) {
#if defined(MADV_DONTNEED)
  return adviseOnLargePages(begin, bytes, MADV_DONTNEED);
#else
  return static_cast<char*>(begin) + bytes;
#endif
}

}  // namespace detail
}  // namespace OrvikDTM
