#include "Interrupts.h"

#include <algorithm>
#include <csignal>
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
std::mutex& mutex = *new std::mutex;
std::vector<std::string>& folders = *new std::vector<std::string>;

// The rest of the program goes on writing meanwhile, and may add a file to a folder that is being emptied.
void removeAll(const std::string& folder) {
  constexpr int kAttempts = 100;
  for (int i = 0; i < kAttempts; ++i) {
    std::error_code fault;
    fs::remove_all(folder, fault);
    if (!fs::exists(folder, fault)) return;
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
  for (const std::string& folder : folders) removeAll(folder);
  endBy(signal);
}

// A program started with nohup, or in the background by a shell without job control, goes on ignoring these signals.
bool isIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void watch() {
  sigset_t watched;
  sigemptyset(&watched);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (!isIgnored(signal)) sigaddset(&watched, signal);
  }
  pthread_sigmask(SIG_BLOCK, &watched, nullptr);
  std::thread([watched] { waitFor(watched); }).detach();
}

std::string makeFolder(std::string pattern) {
  const std::lock_guard<std::mutex> lock(mutex);
  if (mkdtemp(pattern.data()) == nullptr) return "";
  folders.push_back(pattern);
  return pattern;
}

void removeFolder(const std::string& folder) {
  const std::lock_guard<std::mutex> lock(mutex);
  removeAll(folder);
  folders.erase(std::remove(folders.begin(), folders.end(), folder), folders.end());
}

std::unique_lock<std::mutex> hold() { return std::unique_lock<std::mutex>(mutex); }

}  // namespace interrupts
