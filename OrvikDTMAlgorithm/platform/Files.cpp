// Files as wholes: read in one call, written so that nothing is lost, removed, listed. The same on every system; what
// differs stands behind Files.h.
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <new>
#include <random>
#include <stdexcept>

#include <OrvikDTMAlgorithm/platform/FileSink.h>
#include <OrvikDTMAlgorithm/platform/Files.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>

inline namespace OrvikDTM {
namespace detail {

namespace fs = std::filesystem;

namespace {

// Whether the latest call for `file` was cut short by a signal that the host handles, so that it is to be made again.
bool isInterrupted(std::FILE* file) {
  if (std::ferror(file) == 0 || errno != EINTR) return false;
  std::clearerr(file);
  return true;
}

}  // namespace

FileSink::FileSink() : buffer_(std::make_unique_for_overwrite<unsigned char[]>(kCapacity)) {}

void FileSink::writeTo(std::FILE* file) {
  file_ = file;
  std::setvbuf(file, nullptr, _IONBF, 0);  // the buffer here is the only one
}

void FileSink::append(std::string_view bytes) {
  writeOut();
  write(bytes.data(), bytes.size());
}

bool FileSink::finish() {
  writeOut();
  return !failed_;
}

void FileSink::writeOut() {
  write(buffer_.get(), used_);
  used_ = 0;
}

void FileSink::write(const void* bytes, std::size_t count) {
  const char* next = static_cast<const char*>(bytes);
  if (file_ == nullptr) {
    kept_.append(next, count);
    return;
  }
  while (!failed_ && count > 0) {
    errno = 0;
    const std::size_t written = std::fwrite(next, 1, count, file_);
    failed_ = written < count && !isInterrupted(file_);
    next += written;
    count -= written;
  }
}

std::string uniqueSuffix() {
  std::random_device random;
  const std::uint64_t number = (std::uint64_t{random()} << 32) | random();
  return std::to_string(number);
}

namespace {

template <typename Contents>
bool readAll(const char* path, Contents& contents) {
  const File file = path == nullptr ? nullptr : openFile(existingPath(path), kReadBytes);
  if (!file && path != nullptr && errno == ENOMEM) throw std::bad_alloc();
  if (!file) return false;
  std::setvbuf(file.get(), nullptr, _IONBF, 0);  // straight to where it stays
  // One byte more than the size tells the end of an ordinary file in one read; pipes and the like have no size and are
  // read in growing steps. Some devices and pipes have no end either: nobody waits until they have filled the memory.
  constexpr std::size_t kSmallestStep = 65536;
  constexpr std::size_t kMostBeyondSize = std::size_t{1} << 30;
  constexpr std::size_t kWorthLargePages = std::size_t{4} << 20;
  std::size_t length = 0;
  const std::size_t expected = sizeOf(file.get()) + 1;
  contents.reserve(expected);
  if (expected >= kWorthLargePages) preferLargePages(contents.data(), expected);
  contents.resize(expected);
  for (;;) {
    errno = 0;
    length += std::fread(contents.data() + length, 1, contents.size() - length, file.get());
    if (length < contents.size()) {
      if (isInterrupted(file.get())) continue;
      break;
    }
    if (length - expected >= kMostBeyondSize) return false;
    contents.resize(contents.size() + std::max(contents.size(), kSmallestStep));
  }
  contents.resize(length);
  return std::ferror(file.get()) == 0;
}

// A file that does not fit into memory is one that cannot be read.
template <typename Contents>
bool readWhole(const char* path, Contents& contents) {
  try {
    return readAll(path, contents);
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const std::length_error&) {
    return false;
  }
}

// A file that is removed unless it was put in its place.
class Unfinished {
 public:
  explicit Unfinished(std::string path) : path_(std::move(path)) {}
  ~Unfinished() { remove(); }
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;

  Put putInPlaceOf(const std::string& target) {
    const Put put = putInPlace(path_, target);
    if (put == Put::kDone) path_.clear();
    return put;
  }

  std::uintmax_t size() const {
    std::error_code failure;
    const std::uintmax_t size = fs::file_size(path_, failure);
    return failure ? 0 : size;
  }

  void remove() {
    if (!path_.empty()) std::remove(path_.c_str());
    path_.clear();
  }

 private:
  std::string path_;
};

bool fillAndClose(File file, FileSink& sink, const FillFile& fill) {
  sink.writeTo(file.get());
  fill(sink);
  const bool stored = sink.finish() && flushToDisk(file.get());
  return std::fclose(file.release()) == 0 && stored;
}

// What is to be written, and how.
struct Contents {
  const char* mode;
  std::size_t size;
  const FillFile& fill;
};

bool writeInPlace(const std::string& target, const Contents& contents) {
  FileSink sink;
  File file = openFile(target, contents.mode);
  return file && fillAndClose(std::move(file), sink, contents.fill);
}

// Opening empties the old file, so that is not done where the new contents would find no room, nor before they are all
// there: filling may run out of memory. A new file that was cut short is removed.
bool writeOver(const std::string& target, std::uintmax_t size, const Contents& contents) {
  if (!hasRoomInPlaceOf(target, size)) return false;
  FileSink memory;
  memory.keep(contents.size);
  contents.fill(memory);
  memory.finish();
  const FillFile copy = [&memory](FileSink& sink) { sink.append(memory.kept()); };
  std::error_code ignored;
  const bool isNew = !fs::exists(target, ignored);
  const bool whole = writeInPlace(target, {contents.mode, contents.size, copy});
  if (!whole && isNew) std::remove(target.c_str());
  return whole;
}

bool writeByReplacing(const std::string& target, const Contents& contents) {
  FileBeside beside = createBeside(target, contents.mode);
  if (!beside.file) return beside.folderRefuses && writeOver(target, contents.size, contents);
  Unfinished unfinished(std::move(beside.path));
  if (!reserveRoom(beside.file.get(), contents.size)) return false;
  FileSink sink;
  if (!fillAndClose(std::move(beside.file), sink, contents.fill)) return false;
  const Put put = unfinished.putInPlaceOf(target);
  if (put != Put::kRefused) return put == Put::kDone;
  const std::uintmax_t size = unfinished.size();
  unfinished.remove();  // it would take the room of what is written now
  return writeOver(target, size, contents);
}

bool writeTo(const std::string& opened, const Contents& contents) {
  switch (wayToWrite(opened)) {
    case WayToWrite::kReplace:
      return writeByReplacing(behindLinks(opened), contents);
    case WayToWrite::kInPlace:
      return writeInPlace(opened, contents);
    case WayToWrite::kNone:
      break;
  }
  return false;
}

bool write(const char* path, const Contents& contents) {
  if (path == nullptr) return false;
  const std::string opened = existingPath(path);
  return withoutWriteSignals([&] { return writeTo(opened, contents); });
}

}  // namespace

bool readWholeFile(const char* path, std::string& contents) { return readWhole(path, contents); }

bool readWholeFile(const char* path, Bytes& contents) { return readWhole(path, contents); }

bool readFittingFile(const char* path, std::string& contents) {
  try {
    return readAll(path, contents);
  } catch (const std::length_error&) {
    throw std::bad_alloc();
  }
}

bool writeBinaryFile(const char* path, std::size_t size, const FillFile& fill) {
  return write(path, {kWriteBytes, size, fill});
}

bool writeTextFile(const char* path, const std::string& text) {
  return write(path, {kWriteText, text.size(), [&text](FileSink& sink) { sink.append(text); }});
}

// Where the folder may not be searched, or the disk fails, there may be a file.
bool pathExists(const char* path) {
  if (path == nullptr) return false;
  std::error_code failure;
  const fs::file_type type = fs::symlink_status(existingPath(path), failure).type();
  if (type != fs::file_type::none) return type != fs::file_type::not_found;
  return failure != std::errc::filename_too_long && failure != std::errc::too_many_symbolic_link_levels;
}

bool removeFile(const char* path) {
  const std::string existing = existingPath(path);
  std::error_code failure;
  const fs::file_type type = fs::symlink_status(existing, failure).type();
  const bool isFile = type == fs::file_type::regular || type == fs::file_type::symlink;
  return isFile && !fs::is_directory(existing, failure) && fs::remove(existing, failure);
}

}  // namespace detail
}  // namespace OrvikDTM
