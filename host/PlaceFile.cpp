#include "PlaceFile.h"

#include <array>
#include <string_view>

#include "Console.h"
#include "Paths.h"
#include "Progress.h"
#include "TextLines.h"
#include "UserText.h"

namespace {

constexpr std::size_t kFieldsOfAPoint = 5;
constexpr std::size_t kFieldsOfAPlace = 2;
constexpr int kLinesBetweenShows = 50000;

// The fields of a line, at most those of a point; what follows them is ignored.
struct Fields {
  std::array<std::string_view, kFieldsOfAPoint> text;
  std::size_t count = 0;

  explicit Fields(std::string_view rest) {
    bool more = true;
    while (count < kFieldsOfAPoint && takeField(rest, text[count], more)) ++count;
  }

  // The place stands behind name and code, as far as there are any.
  std::size_t beforePlace() const { return count == kFieldsOfAPoint ? 2 : count - kFieldsOfAPlace; }
};

std::string trimmed(std::string_view field) {
  const std::size_t first = field.find_first_not_of(" \t");
  if (first == std::string_view::npos) return "";
  return std::string(field.substr(first, field.find_last_not_of(" \t") - first + 1));
}

Place placeOf(const TextLines& lines, const Fields& fields) {
  const std::size_t at = fields.beforePlace();
  Place place;
  if (at > 0) place.name = fields.text[0];
  if (at > 1) place.code = fields.text[1];
  place.x = lines.requireNumber(fields.text[at], kEasting);
  place.y = lines.requireNumber(fields.text[at + 1], kNorthing);
  place.easting = trimmed(fields.text[at]);
  place.northing = trimmed(fields.text[at + 1]);
  return place;
}

}  // namespace

std::vector<Place> readPlaces(const std::string& path) {
  requireRegularFile(path);
  TextLines lines(path);
  std::vector<Place> places;
  int skipped = 0;
  while (lines.next()) {
    if (lines.number() % kLinesBetweenShows == 0) progress::show("reading " + path, lines.done());
    if (lines.line().empty()) continue;
    const Fields fields(lines.line());
    if (fields.count < kFieldsOfAPlace) {
      ++skipped;
    } else {
      places.push_back(placeOf(lines, fields));
    }
  }
  if (places.empty())
    throw console::Failure(shownPath(path) + ": holds no points: write its lines as easting,northing");
  if (skipped > 0) {
    console::warn(shownPath(path) + ": " + console::counted(skipped, "line") +
                  " skipped: a point needs easting,northing");
  }
  return places;
}
