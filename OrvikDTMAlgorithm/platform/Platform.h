// Private. The few services of the operating system that the library uses. All other files are the same on every
// platform: what differs stands behind these functions, and nobody else asks which system this is.
//
// Paths are zero-terminated texts in the system's code page and are taken as they are, blanks included. A null path
// names nothing.
#pragma once

#include <cstddef>
#include <string>

inline namespace OrvikDTM {
namespace detail {

// Between the system's code page and UTF-8. An empty input or a failed conversion gives "".
std::string codePageToUtf8(const std::string& text);
std::string utf8ToCodePage(const std::string& text);

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

// Fills `contents` with a whole file. False when it cannot be opened or read.
bool readWholeFile(const char* path, std::string& contents);

// What became of a file that was to be written: not opened, cut short (the disk is full), or all there.
enum class Written { kNothing, kPart, kWhole };

// Creates or empties a file and writes `text` to it with the platform's line breaks.
Written writeTextFile(const char* path, const std::string& text);

// Asks for large pages behind [begin, begin + bytes) before it is first used: for arrays of many megabytes, being
// handed their memory page by page costs as much as filling them. No more than advice.
void preferLargePages(void* begin, std::size_t bytes);

#if !defined(_WIN32)
// The conversion behind the two above, between code sets by the names that iconv knows them by.
std::string convertText(const std::string& text, const char* from, const char* to);

// True for the code sets whose texts are used as UTF-8 without conversion: UTF-8 itself and ASCII, under their names in
// use.
bool isUtf8Already(const std::string& codeset);
#endif

}  // namespace detail
}  // namespace OrvikDTM
