// Calls in different threads at once, and what one thread makes of the same: both must agree to the last bit.
#pragma once

#include <cstddef>
#include <cstring>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

// What a job has found, as bytes.
class Findings {
 public:
  void note(const void* bytes, std::size_t count) { bytes_.append(static_cast<const char*>(bytes), count); }
  void note(double value) { note(&value, sizeof value); }
  void note(int value) { note(&value, sizeof value); }
  void note(const std::string& text) {
    note(static_cast<int>(text.size()));
    note(text.data(), text.size());
  }
  void note(const std::vector<unsigned char>& bytes) { note(std::string(bytes.begin(), bytes.end())); }

  bool operator==(const Findings&) const = default;

 private:
  std::string bytes_;
};

// job(0) to job(count - 1), each in a thread of its own. The threads begin together.
template <typename Job>
std::vector<Findings> atOnce(int count, const Job& job) {
  std::vector<Findings> found(static_cast<std::size_t>(count));
  std::latch start(count);
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) {
    threads.emplace_back([&, i] {
      start.arrive_and_wait();
      found[static_cast<std::size_t>(i)] = job(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
  return found;
}

// The threads come first, so that what is made on first use is made by them.
template <typename Job>
void expectSameAtOnce(int count, const Job& job) {
  const std::vector<Findings> together = atOnce(count, job);
  for (int i = 0; i < count; ++i) EXPECT_TRUE(together[static_cast<std::size_t>(i)] == job(i)) << "job " << i;
}
