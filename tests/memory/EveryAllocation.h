// Tries an operation with each of its allocations failing in turn: the first, the second, and so on until the operation
// does not reach the one that would fail.
#pragma once

#include <functional>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include "memory/FailingAllocator.h"

namespace memory {

// An operation on a `Case`: what it works on, made anew for every attempt, with members that keep what the operation
// gives. `describe()` is the text of everything that can be seen of it; `forget()` releases the results of an attempt.
//
// `call` returns whether the operation succeeded. A failed one has changed nothing, and succeeds when it is called
// again.
template <typename Case>
struct Operation {
  const char* name;
  std::function<bool(Case&)> call;
  std::function<void(Case&)> prepare = [](Case&) {};  // with all the memory that it wants
};

template <typename Case>
void prepare(const Operation<Case>& operation, Case& on) {
  operation.prepare(on);
  on.forget();
}

// What an operation starts from and leads to.
struct Expected {
  std::string before;
  std::string after;
};

template <typename Case>
Expected expectedOf(const Operation<Case>& operation) {
  Expected expected;
  {
    Case untouched;
    prepare(operation, untouched);
    expected.before = untouched.describe();
  }
  Case done;
  prepare(operation, done);
  EXPECT_TRUE(operation.call(done)) << operation.name;
  expected.after = done.describe();
  return expected;
}

// Compares two descriptions and shows where they part.
inline void expectSame(const std::string& expected, const std::string& seen, const char* when) {
  if (expected == seen) return;
  std::size_t at = 0;
  while (at < expected.size() && at < seen.size() && expected[at] == seen[at]) ++at;
  constexpr std::size_t kAround = 60;
  const std::size_t from = at < kAround ? 0 : at - kAround;
  ADD_FAILURE() << when << ": expected ..." << expected.substr(from, 2 * kAround) << "\n   but there is ..."
                << seen.substr(from, 2 * kAround);
}

// One attempt and what follows it. False once no allocation failed. A failed case is looked at before the next call, or
// it is not, since looking builds what is built when it is first needed.
template <typename Case>
bool attempt(const Operation<Case>& operation, long allowed, Failure failure, bool looksBetween,
             const Expected& expected) {
  SCOPED_TRACE(testing::Message() << operation.name << ": allocation " << allowed + 1 << " fails"
                                  << (failure == Failure::kOnce ? "" : " and all after it")
                                  << (looksBetween ? ", looked at" : ""));
  Case on;
  prepare(operation, on);
  bool hasSucceeded = false;
  limit(allowed, failure);
  try {
    hasSucceeded = operation.call(on);
  } catch (const std::bad_alloc&) {
  }
  const bool hasFailed = unlimit();
  if (!hasSucceeded) {
    EXPECT_TRUE(hasFailed);
    if (looksBetween) {
      on.forget();
      expectSame(expected.before, on.describe(), "after the failure");
    }
    on.forget();
    EXPECT_TRUE(operation.call(on));
  }
  expectSame(expected.after, on.describe(), hasSucceeded ? "after success" : "after the next call");
  return hasFailed;
}

template <typename Case>
void tryEveryAllocation(const Operation<Case>& operation) {
  const Expected expected = expectedOf(operation);
  constexpr long kTooMany = 20000;
  attempt(operation, kTooMany, Failure::kOnce, false, expected);  // what is made once for all is made now
  struct Way {
    Failure failure;
    bool looksBetween;
  };
  for (const auto& [failure, looksBetween] : {Way{Failure::kOnce, true}, Way{Failure::kAlways, false}}) {
    long allowed = 0;
    for (bool goesOn = true; goesOn && allowed < kTooMany; ++allowed) {
      const long inUse = blocksInUse();
      goesOn = attempt(operation, allowed, failure, looksBetween, expected);
      EXPECT_EQ(inUse, blocksInUse()) << operation.name << ": blocks are lost, allocation " << allowed + 1;
      if (testing::Test::HasFailure()) return;
    }
    EXPECT_GT(allowed, 1) << operation.name << " allocates nothing";
    EXPECT_LT(allowed, kTooMany) << operation.name;
  }
}

}  // namespace memory
