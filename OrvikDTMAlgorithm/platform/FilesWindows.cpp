// Reading and writing files on Windows.
#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <io.h>
#include <string_view>
#include <sys/stat.h>
#include <windows.h>

#include <OrvikDTMAlgorithm/platform/Files.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>

inline namespace OrvikDTM {
namespace detail {
namespace {

std::string folderOf(const std::string& path) {
  const std::size_t separator = path.find_last_of("\\/:");
  return separator == std::string::npos ? "" : path.substr(0, separator + 1);
}

class Handle {
 public:
  explicit Handle(const std::string& path)
      : handle_(CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)) {}
  ~Handle() {
    if (isOpen()) CloseHandle(handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

class Search {
 public:
  Search(const std::string& pattern, WIN32_FIND_DATAA& first) : handle_(FindFirstFileA(pattern.c_str(), &first)) {}
  ~Search() {
    if (isOpen()) FindClose(handle_);
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool goOn(WIN32_FIND_DATAA& next) const { return FindNextFileA(handle_, &next) != 0; }

 private:
  HANDLE handle_;
};

}  // namespace

File openFile(const std::string& path, const char* mode) {
  std::FILE* file = nullptr;
  return fopen_s(&file, path.c_str(), mode) == 0 ? File(file) : nullptr;
}

std::size_t sizeOf(std::FILE* file) {
  const __int64 size = _filelengthi64(_fileno(file));
  return size > 0 ? static_cast<std::size_t>(size) : 0;
}

bool reserveRoom(std::FILE* /*file*/, std::size_t /*bytes*/) { return true; }

bool flushToDisk(std::FILE* file) {
  const int descriptor = _fileno(file);
  const bool isDevice = _isatty(descriptor) != 0;
  return std::fflush(file) == 0 && (isDevice || _commit(descriptor) == 0);
}

WayToWrite wayToWrite(const std::string& target) {
  if (target.empty()) return WayToWrite::kNone;
  const DWORD attributes = GetFileAttributesA(target.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return WayToWrite::kReplace;
  if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) return WayToWrite::kNone;
  const Handle opened(target);
  const bool isOnDisk = opened.isOpen() && GetFileType(opened.get()) == FILE_TYPE_DISK;
  return isOnDisk ? WayToWrite::kReplace : WayToWrite::kInPlace;
}

std::string behindLinks(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return path;
  const Handle opened(path);
  char reached[MAX_PATH * 2];
  const DWORD length = opened.isOpen() ? GetFinalPathNameByHandleA(opened.get(), reached, sizeof reached, 0) : 0;
  return length > 0 && length < sizeof reached ? std::string(reached, length) : path;
}

FileBeside createBeside(const std::string& target, const char* mode) {
  FileBeside beside;
  const std::string modeOfNewFile = std::string(mode) + "x";
  std::FILE* file = nullptr;
  errno_t failure = 0;
  do {
    beside.path = folderOf(target) + "orvikdtm-" + uniqueSuffix() + ".tmp";
    failure = fopen_s(&file, beside.path.c_str(), modeOfNewFile.c_str());
  } while (failure == EEXIST);
  beside.folderRefuses = failure == EACCES || failure == EROFS || failure == ENAMETOOLONG;
  if (failure == 0) beside.file = File(file);
  return beside;
}

// ReplaceFile keeps the permissions and attributes of the old file.
Put putInPlace(const std::string& path, const std::string& target) {
  const bool isNew = GetFileAttributesA(target.c_str()) == INVALID_FILE_ATTRIBUTES;
  const BOOL done =
      isNew ? MoveFileExA(path.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH)
            : ReplaceFileA(target.c_str(), path.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr);
  if (done != 0) return Put::kDone;
  const DWORD error = GetLastError();
  const bool isRefused =
      error == ERROR_ACCESS_DENIED || error == ERROR_NOT_SAME_DEVICE || error == ERROR_UNABLE_TO_REMOVE_REPLACED;
  return isRefused ? Put::kRefused : Put::kFailed;
}

bool hasRoomInPlaceOf(const std::string& target, std::uintmax_t bytes) {
  WIN32_FILE_ATTRIBUTE_DATA old;
  if (GetFileAttributesExA(target.c_str(), GetFileExInfoStandard, &old) == 0) return true;
  ULARGE_INTEGER free;
  const std::string folder = folderOf(target);
  if (GetDiskFreeSpaceExA(folder.empty() ? nullptr : folder.c_str(), &free, nullptr, nullptr) == 0) return true;
  const std::uintmax_t freed = (std::uintmax_t{old.nFileSizeHigh} << 32) | old.nFileSizeLow;
  return bytes <= freed || bytes - freed <= free.QuadPart;
}

// Folders hold no devices and pipes on Windows.
std::vector<std::string> namesInFolder(const char* path) {
  std::vector<std::string> names;
  WIN32_FIND_DATAA entry;
  const Search search(existingPath(path) + "\\*", entry);
  for (bool isThere = search.isOpen(); isThere; isThere = search.goOn(entry)) {
    const std::string_view name = entry.cFileName;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  return names;
}

bool withoutWriteSignals(const std::function<bool()>& work) { return work(); }

}  // namespace detail
}  // namespace OrvikDTM
