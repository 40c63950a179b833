// Private. Corners of ".sjw" files as texts. Six triangles meet in a corner, so most corners come again, and mostly
// within a short stretch of the file: those of late are kept in a small table, so that their numbers are neither
// written nor read anew. What the table forgets costs only time.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/tin/PointHash.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>

inline namespace OrvikDTM {
namespace detail {

// Three words that stand for a corner, and where a table of 2^kBits entries keeps what belongs to them.
using CornerWords = PointWords;

template <int kBits>
std::size_t slotOf(const CornerWords& words) {
  std::uint64_t hash = 0;
  for (const std::uint64_t word : words) hash = ((hash >> 32) ^ hash ^ word) * 0x9E3779B97F4A7C15u;
  return static_cast<std::size_t>(hash >> (64 - kBits));
}

// The texts of corners that were written, by the bits of their coordinates.
class WrittenCorners {
 public:
  // What a corner's text may take; there must be so much room behind `out`.
  static constexpr std::size_t kLongest = 3 * (kLongestText + 1);

  // Writes the text of p, a line for each coordinate, and returns where it ends.
  char* write(const TPoint& p, char* out) {
    const auto words = wordsOf(p);
    Corner& corner = corners_[slotOf<kBits>(words)];
    if (corner.length != 0 && corner.words == words) {
      std::memcpy(out, corner.text, kLongestKept);  // a known length is copied faster than the true one
      return out + corner.length;
    }
    char* const end = writeAnew(p, out);
    const auto length = static_cast<std::size_t>(end - out);
    if (length <= kLongestKept) {
      corner.words = words;
      corner.length = length;
      std::memcpy(corner.text, out, length);
    }
    return end;
  }

 private:
  static char* writeAnew(const TPoint& p, char* out) {
    for (const double v : {p.getX(), p.getY(), p.getZ()}) {
      out = writeText(v, out);
      *out++ = '\n';
    }
    return out;
  }

  static constexpr int kBits = 11;
  static constexpr std::size_t kLongestKept = 64;

  struct Corner {
    CornerWords words = {};
    std::size_t length = 0;
    char text[kLongestKept] = {};
  };

  std::vector<Corner> corners_ = std::vector<Corner>(std::size_t{1} << kBits);
};

// Where texts of corners that were read stand in the file, and which corners they are: the same three lines are the
// same three numbers.
class ReadCorners {
 public:
  struct Text {
    const char* begin = nullptr;
    std::size_t length = 0;
    int position = 0;

    // Texts end with their last line break, so what begins like one is one.
    bool isStartOf(std::string_view rest) const {
      return length != 0 && length <= rest.size() && std::memcmp(begin, rest.data(), length) == 0;
    }
  };

  // Where the text of a corner is kept that is written like the beginning of `rest`.
  Text& find(std::string_view rest) {
    CornerWords words = {};  // no corner that the library writes is shorter
    std::memcpy(words.data(), rest.data(), std::min(rest.size(), sizeof words));
    return texts_[slotOf<kBits>(words)];
  }

 private:
  static constexpr int kBits = 11;

  std::vector<Text> texts_ = std::vector<Text>(std::size_t{1} << kBits);
};

}  // namespace detail
}  // namespace OrvikDTM
