// Requests that are larger than the machine: std::bad_alloc, at once, and nothing has changed. Each runs in a process
// of its own whose memory is limited. The address sanitizer reserves more than any such limit leaves.
#if !defined(_WIN32) && !defined(ORVIKDTM_SANITIZED)

#include <climits>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "memory/SurfaceCase.h"

namespace memory {
namespace {

enum Ending : int { kSucceeded, kRanOut, kChanged, kOther };

// How `request` ends in a process with little memory; `isAsBefore` is asked after it has thrown.
template <typename Request, typename Check>
int endOf(Request request, Check isAsBefore) {
  constexpr rlim_t kMemory = rlim_t{1} << 31;
  const pid_t child = fork();
  if (child == 0) {
    const rlimit limit{kMemory, kMemory};
    if (setrlimit(RLIMIT_AS, &limit) != 0) _exit(kOther);
    try {
      request();
      _exit(kSucceeded);
    } catch (const std::bad_alloc&) {
      _exit(isAsBefore() ? kRanOut : kChanged);
    } catch (...) {
      _exit(kOther);
    }
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool always() { return true; }

TEST(LargeRequest, OfAGridFails) {
  SurfaceCase on;
  CEType& tin = *on.site().getCEType();
  for (const auto& [nx, ny] : {std::pair{INT_MAX, INT_MAX}, {INT_MAX, 0}, {0, INT_MAX}, {100000, 100000}}) {
    const int rows = nx;
    const int columns = ny;
    EXPECT_EQ(kRanOut, endOf([&] { tin.proxyTri(0, 0, rows, columns, 1.0); }, always)) << nx << " " << ny;
  }
}

TEST(LargeRequest, OfRoomInAListFails) {
  PList list;
  EXPECT_EQ(kRanOut, endOf([&] { list.setMaxlen(INT_MAX); }, [&] { return list.getMaxlen() == 100; }));
}

TEST(LargeRequest, OfATextFails) {
  EXPECT_EQ(kRanOut, endOf([] { U::appentStr4Length("x", INT_MAX); }, always));
  EXPECT_EQ(kRanOut, endOf([] { U::roundHalfUp(INT_MAX, 1.5); }, always));
  EXPECT_EQ(kRanOut, endOf([] { U::roundUp(INT_MAX, 1.5); }, always));
}

}  // namespace
}  // namespace memory

#endif
