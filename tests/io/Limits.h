// Processes of their own for what ends or hampers one: the limits that a system puts on a process, in a child that the
// test's own process does not notice.
#pragma once

#if !defined(_WIN32)

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// What `work` returns in a process of its own, as its exit status; -1 when it does not come to its end.
inline int inChild(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// As much of every file as `room` can be written from now on in this process, as on a disk that is full by then. The
// signal that comes with more ends a process, and nothing is done about it here.
inline bool limitsFiles(rlim_t room) {
  std::signal(SIGXFSZ, SIG_DFL);
  const rlimit limit{room, room};
  return setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

// No file can be opened from now on in this process.
inline bool takesDescriptors() {
  const rlimit limit{0, 0};
  return setrlimit(RLIMIT_NOFILE, &limit) == 0;
}

#endif
