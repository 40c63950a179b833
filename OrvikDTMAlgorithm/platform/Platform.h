// Private. The few services of the operating system that the library uses. All other files are the same on every
// platform: what differs stands behind these functions, and nobody else asks which system this is.
//
// Paths are zero-terminated texts in the system's code page and are taken as they are, blanks included. A null path
// names nothing.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

inline namespace OrvikDTM {
namespace detail {

// Between the system's code page and UTF-8. An empty input or a failed conversion gives "".
std::string codePageToUtf8(const std::string& text);
std::string utf8ToCodePage(const std::string& text);

// True when both return their argument, whatever it is.
bool isCodePageUtf8();

struct LocalTime {
  int year;
  int month;  // 1 to 12
  int day;    // 1 to 31
  int hour;
  int minute;
  int second;
  int millisecond;
  int dayOfWeek;  // 0 is Sunday
};

LocalTime localTime();

// The path to use for `path`: where the separator is "/", a backslash is read as one if the path does not exist as it
// stands (hosts join folders and names with a backslash).
std::string existingPath(const char* path);

// Where the last backslash of a path is, npos without one. In some code pages (GBK, Shift JIS) characters may end with
// a byte of the same value: that is none, here and above.
std::size_t lastBackslash(std::string_view path);

// Bytes that are not set to anything before they are written: for contents of many megabytes.
template <typename T>
struct WithoutInitialising : std::allocator<T> {
  template <typename Other>
  struct rebind {
    using other = WithoutInitialising<Other>;
  };
  template <typename Other>
  void construct(Other* at) noexcept {
    ::new (static_cast<void*>(at)) Other;
  }
};
using Bytes = std::vector<unsigned char, WithoutInitialising<unsigned char>>;

// Fills `contents` with a whole file, read in one call. False when it cannot be opened or read, and for a pipe or
// device that gives more than 1 GiB.
bool readWholeFile(const char* path, std::string& contents);
bool readWholeFile(const char* path, Bytes& contents);

// The same, but std::bad_alloc tells of a file that does not fit into memory.
bool readFittingFile(const char* path, std::string& contents);

// Puts the contents of a file into its sink. It may be called twice, for a file that could not be put in its place.
class FileSink;
using FillFile = std::function<void(FileSink&)>;

// Writes a file so that nothing is lost: the new one is written beside the old one, flushed to the disk and put in its
// place when it is complete. A full disk, or the end of the process at any moment, leaves the old file as it was. Links
// are followed, and the permissions stay. What cannot be replaced (a device, a file in a folder that allows no new one)
// is written in place. `size` is how many bytes there will be. True only when every byte is in its place: false when
// the file could not be opened, written, flushed to the disk or renamed. No signal is raised by a write that is
// refused.
bool writeBinaryFile(const char* path, std::size_t size, const FillFile& fill);

// The same for a text, with the platform's line breaks.
bool writeTextFile(const char* path, const std::string& text);

// Whether there is something at `path`, be it a symbolic link to nothing; removing the file there (a folder, pipe or
// device is none; of a link the link itself); and the names of what is in the folder there, in the order in which the
// system lists them. Pipes, devices and sockets, and links to them, are not among these: who opens whatever a folder
// holds does not mean them, and might wait for ever.
bool pathExists(const char* path);
bool removeFile(const char* path);
std::vector<std::string> namesInFolder(const char* path);

// Asks for large pages behind [begin, begin + bytes) before it is first used: for arrays of many megabytes, being
// handed their memory page by page costs as much as filling them. No more than advice.
void preferLargePages(void* begin, std::size_t bytes);

// Gives the large pages that lie whole in [begin, begin + bytes) back to the system. They stay the caller's and may be
// written again, but what they held is lost. For contents of many megabytes that are used up piece by piece: the pages
// then serve whatever is allocated next, which costs much less than new ones, and the peak of memory is lower. Returns
// the first byte that may still be there: where the next range begins.
void* giveBackLargePages(void* begin, std::size_t bytes);

#if !defined(_WIN32)
// The conversion behind the two above, between code sets by the names that iconv knows them by.
std::string convertText(const std::string& text, const char* from, const char* to);

// True for the code sets whose texts are used as UTF-8 without conversion: UTF-8 itself and ASCII, under their names in
// use.
bool isUtf8Already(const std::string& codeset);
#endif

}  // namespace detail
}  // namespace OrvikDTM
