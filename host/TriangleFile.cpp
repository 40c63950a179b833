#include <array>

#include "Console.h"
#include "Progress.h"
#include "TextLines.h"
#include "TriangleLines.h"
#include "UserText.h"

namespace {

constexpr int kLinesOfATriangle = 9;
constexpr int kLinesOfACorner = 3;
constexpr std::string_view kEndWord = "nil";
constexpr std::array<NumberField, kLinesOfACorner> kCorner = {kEasting, kNorthing, kElevation};
constexpr int kLinesBetweenShows = 200000;

}  // namespace

void checkTriangleFile(const std::string& path) {
  TextLines lines(path);
  int numbers = 0;
  bool ended = false;
  while (!ended && lines.next()) {
    if (lines.number() % kLinesBetweenShows == 0) progress::show("checking " + path, lines.done());
    ended = lines.line().empty() || lines.line() == kEndWord;
    if (ended) break;
    lines.requireNumber(lines.line(), kCorner[static_cast<std::size_t>(numbers % kLinesOfACorner)]);
    ++numbers;
  }
  if (numbers % kLinesOfATriangle != 0) {
    lines.fail("triangle " + std::to_string(numbers / kLinesOfATriangle + 1) +
               " has fewer than nine numbers: the file was cut short, or a line is missing");
  }
  if (numbers == 0) throw console::Failure(shownPath(path) + ": holds no triangles: export it again");
  if (!ended) console::warn(shownPath(path) + ": does not end with 'nil': was it cut short?");
}
