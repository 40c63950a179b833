// Private to platform/. What of reading and writing files differs between systems; the rest stands in Files.cpp.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

inline namespace OrvikDTM {
namespace detail {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// The modes of std::fopen: "b" leaves line breaks as they are, without it they are the platform's.
inline constexpr const char* kReadBytes = "rb";
inline constexpr const char* kWriteBytes = "wb";
inline constexpr const char* kWriteText = "w";

// A file that must not be touched but to be used: null when it cannot be opened. The path is used as it stands.
File openFile(const std::string& path, const char* mode);

// How many bytes an ordinary file has; 0 for what has no size, such as a pipe.
std::size_t sizeOf(std::FILE* file);

// Has the system find room for so many bytes in a new file: that is cheaper than finding it write by write, and a full
// disk is known before the work begins. False when there is no such room; true also where that is unknown.
bool reserveRoom(std::FILE* file, std::size_t bytes);

// Has the system put on the disk what was written. False when it could not.
bool flushToDisk(std::FILE* file);

// How a file can be written: by a new one that takes its place, only as it is (a device, a pipe), or not at all (a
// folder, a file that may not be written).
enum class WayToWrite { kReplace, kInPlace, kNone };

WayToWrite wayToWrite(const std::string& target);

// The file that `path` leads to, over symbolic links: what a new file has to replace. It need not exist.
std::string behindLinks(const std::string& path);

// The end of a name for a new file that no other process uses.
std::string uniqueSuffix();

// A new, empty file, open for writing, in the folder of `target`, with its permissions if it exists. When there is none
// `file` is null, and `folderRefuses` tells a folder that allows no new file from a disk that is full.
struct FileBeside {
  File file;
  std::string path;
  bool folderRefuses = false;
};

FileBeside createBeside(const std::string& target, const char* mode);

// Puts the file at `path` in the place of `target`, at once. kRefused: this target is not to be replaced (it is another
// user's in a folder where only owners may remove, or is mounted by itself) while it may still be writable. Everything
// else that goes wrong is no reason to open, and by that to empty, the old file.
enum class Put { kDone, kRefused, kFailed };

Put putInPlace(const std::string& path, const std::string& target);

// Whether so many bytes find room where `target` stands now, once it is emptied, on the disk and within the limit on
// the size of files; true also where that is unknown.
bool hasRoomInPlaceOf(const std::string& target, std::uintmax_t bytes);

// Calls `work`, in which a write that the system refuses fails with an error code only. On POSIX systems it also raises
// a signal that ends the process by default: SIGXFSZ beyond the limit on the size of files, SIGPIPE for a pipe without
// a reader. They are blocked for this thread meanwhile, and taken off again; the process's own handling of signals
// is left alone.
bool withoutWriteSignals(const std::function<bool()>& work);

}  // namespace detail
}  // namespace OrvikDTM
