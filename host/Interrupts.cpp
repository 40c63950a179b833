#include "Interrupts.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace interrupts {

namespace {

// Never destroyed: the watching thread lives as long as the process.
struct Folder {
  std::string path;
  std::string file;  // in it
};
std::mutex& mutex = *new std::mutex;
std::vector<Folder>& folders = *new std::vector<Folder>;

// The rest of the program goes on writing meanwhile, and may add a file to a folder that is being emptied. The file
// that is known to be there needs no descriptor to be removed.
void removeAll(const Folder& folder) {
  constexpr int kAttempts = 100;
  for (int i = 0; i < kAttempts; ++i) {
    std::remove(folder.file.c_str());
    if (rmdir(folder.path.c_str()) == 0 || errno == ENOENT) return;
    std::error_code fault;
    fs::remove_all(folder.path, fault);
  }
}

// Ends the program as the signal would have, so that a shell that waits for it learns why.
[[noreturn]] void endBy(int signal) {
  constexpr std::string_view kText = "\norvikdtm: interrupted\n";
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, kText.data(), kText.size());
  std::signal(signal, SIG_DFL);
  sigset_t only;
  sigemptyset(&only);
  sigaddset(&only, signal);
  pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
  kill(getpid(), signal);
  _exit(1);
}

void waitFor(const sigset_t& watched) {
  int signal = 0;
  if (sigwait(&watched, &signal) != 0) return;
  const std::lock_guard<std::mutex> lock(mutex);
  for (const Folder& folder : folders) removeAll(folder);
  endBy(signal);
}

// A program started with nohup, or in the background by a shell without job control, goes on ignoring these signals.
bool isIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void watch() {
  std::signal(SIGXFSZ, SIG_IGN);
  sigset_t watched;
  sigemptyset(&watched);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (!isIgnored(signal)) sigaddset(&watched, signal);
  }
  pthread_sigmask(SIG_BLOCK, &watched, nullptr);
  std::thread([watched] { waitFor(watched); }).detach();
}

std::string makeFolder(std::string pattern, const std::string& file) {
  const std::lock_guard<std::mutex> lock(mutex);
  Folder& folder = folders.emplace_back(Folder{pattern, (fs::path(pattern) / file).string()});
  if (mkdtemp(pattern.data()) == nullptr) return folders.pop_back(), "";
  folder.path.swap(pattern);
  folder.file.replace(0, folder.path.size(), folder.path);
  return folder.path;
}

void removeFolder(const std::string& folder) {
  const std::lock_guard<std::mutex> lock(mutex);
  const auto found =
      std::find_if(folders.begin(), folders.end(), [&](const Folder& one) { return one.path == folder; });
  if (found == folders.end()) return;
  removeAll(*found);
  folders.erase(found);
}

std::unique_lock<std::mutex> hold() { return std::unique_lock<std::mutex>(mutex); }

}  // namespace interrupts
