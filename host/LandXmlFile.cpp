#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "Console.h"
#include "TextLines.h"
#include "TriangleLines.h"
#include "UserText.h"

namespace {

constexpr std::size_t kNumbersOfAPoint = 3;
constexpr std::array<NumberField, kNumbersOfAPoint> kPoint = {kNorthing, kEasting, kElevation};

// A corner of a face whose point has not been read so far.
struct Corner {
  long long point = 0;
  std::string where;
};

// What the file says between the tags of one element, on one line or several; blanks separate its words.
struct Scan {
  std::string element;  // "P" or "F" while within one
  std::string text;
  std::string where;  // of its first line, for messages
  long long id = 0;
  bool invisible = false;
  std::unordered_set<long long> ids;
  std::vector<Corner> missing;
  long long points = 0;
  long long faces = 0;
  long long shortPoints = 0;
  long long shortFaces = 0;
  bool definition = false;
};

bool isNameEnd(char c) { return c == ' ' || c == '\t' || c == '>' || c == '/' || c == '\n'; }

std::string_view nameOf(std::string_view tag) {
  return tag.substr(0, static_cast<std::size_t>(std::find_if(tag.begin(), tag.end(), isNameEnd) - tag.begin()));
}

// Takes a sign and the blanks around it off a text. Whether there was one.
bool takeSign(std::string_view& rest, std::string_view sign) {
  constexpr std::string_view kBlanks = " \t\n";
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
  const bool found = rest.starts_with(sign);
  if (found) rest.remove_prefix(sign.size());
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
  return found;
}

// The whole number that an attribute begins with, 0 without one, as the library reads it.
long long attributeOf(std::string_view tag, std::string_view name) {
  for (std::size_t at = tag.find(name); at != std::string_view::npos; at = tag.find(name, at + 1)) {
    std::string_view rest = tag.substr(at + name.size());
    if (at == 0 || !isNameEnd(tag[at - 1]) || !takeSign(rest, "=") || rest.empty()) continue;
    rest.remove_prefix(1);  // the quotation mark
    takeSign(rest, "+");
    long long value = 0;
    std::from_chars(rest.data(), rest.data() + rest.size(), value);
    return value;
  }
  return 0;
}

std::string_view takeWord(std::string_view& rest) {
  const std::size_t begin = std::min(rest.find_first_not_of(" \t\n"), rest.size());
  rest.remove_prefix(begin);
  const std::size_t end = std::min(rest.find_first_of(" \t\n"), rest.size());
  const std::string_view word = rest.substr(0, end);
  rest.remove_prefix(end);
  return word;
}

[[noreturn]] void failAt(const Scan& scan, const std::string& what, std::string_view word) {
  throw console::Failure(scan.where + what + " " + quoted(std::string(word)) +
                         " is not a number: correct it or export the file again");
}

// Elevations are numbers of any size to LandXML; what is too large is found by the checks on the surface.
void endPoint(Scan& scan) {
  std::string_view rest = scan.text;
  for (const NumberField& field : kPoint) {
    const std::string_view word = takeWord(rest);
    if (word.empty()) {
      ++scan.shortPoints;
      return;
    }
    double value = 0.0;
    if (!parseNumber(std::string(word), value)) failAt(scan, std::string("the ") + field.name, word);
  }
  scan.ids.insert(scan.id);
  ++scan.points;
}

// Points mostly stand before the faces, but need not.
void noteCorner(Scan& scan, std::string_view word) {
  long long point = 0;
  std::from_chars(word.data(), word.data() + word.size(), point);
  if (!scan.invisible && !scan.ids.contains(point)) scan.missing.push_back({point, scan.where});
}

// The library would take the first point for one that is not there, and nobody would know.
void requireCorners(const Scan& scan) {
  for (const Corner& corner : scan.missing) {
    if (scan.ids.contains(corner.point)) continue;
    throw console::Failure(corner.where + "there is no point " + std::to_string(corner.point) +
                           " for the face: correct it or export the file again");
  }
}

void endFace(Scan& scan) {
  std::string_view rest = scan.text;
  for (std::size_t i = 0; i < kNumbersOfAPoint; ++i) {
    const std::string_view word = takeWord(rest);
    if (word.empty()) {
      ++scan.shortFaces;
      return;
    }
    if (word.find_first_not_of("0123456789") != std::string_view::npos) failAt(scan, "the point number", word);
    noteCorner(scan, word);
  }
  ++scan.faces;
}

void endElement(Scan& scan) {
  if (scan.element == "P") endPoint(scan);
  if (scan.element == "F") endFace(scan);
  scan.element.clear();
  scan.text.clear();
}

void readTag(std::string_view tag, const std::string& where, Scan& scan) {
  if (tag.starts_with('/')) return endElement(scan);
  const std::string_view name = nameOf(tag);
  if (name == "Definition") scan.definition = true;
  if ((name == "P" || name == "F") && !tag.ends_with('/')) {
    scan.element = std::string(name);
    scan.text.clear();
    scan.where = where;
    scan.id = attributeOf(tag, "id");
    scan.invisible = name == "F" && attributeOf(tag, "i") == 1;
  }
}

// One line of the file; `tag` carries a tag, and `comment` a comment, that goes on from line to line.
struct Tags {
  std::string tag;
  bool inTag = false;
  bool inComment = false;
};

std::size_t passComment(std::string_view line, std::size_t from, Tags& tags) {
  const std::size_t end = line.find("-->", from);
  tags.inComment = end == std::string_view::npos;
  return tags.inComment ? line.size() : end + 3;
}

void readLine(const TextLines& lines, Tags& tags, Scan& scan) {
  const std::string_view line = lines.line();
  for (std::size_t i = 0; i < line.size();) {
    if (tags.inComment) {
      i = passComment(line, i, tags);
    } else if (tags.inTag) {
      const std::size_t end = line.find('>', i);
      tags.tag.append(line.substr(i, end - i));
      tags.inTag = end == std::string_view::npos;
      if (!tags.inTag) readTag(tags.tag, lines.where(), scan);
      i = tags.inTag ? line.size() : end + 1;
    } else if (line.substr(i).starts_with("<!--")) {
      i = passComment(line, i, tags);
    } else {
      const std::size_t open = line.find('<', i);
      if (open != i && !scan.element.empty()) scan.text.append(line.substr(i, open - i));
      if (open == i) tags.tag.clear();
      tags.inTag = open == i;
      i = open == std::string_view::npos ? line.size() : open + (open == i ? 1 : 0);
    }
  }
  if (tags.inTag) tags.tag.append(1, '\n');
  if (!scan.element.empty()) scan.text.append(1, '\n');
}

}  // namespace

void checkLandXml(const std::string& path) {
  TextLines lines(path);
  Tags tags;
  Scan scan;
  while (lines.next()) readLine(lines, tags, scan);
  const std::string start = shownPath(path) + ": ";
  if (!scan.definition || scan.points == 0 || scan.faces == 0) {
    throw console::Failure(start + "holds no LandXML surface with points and faces: export the surface as a TIN");
  }
  requireCorners(scan);
  if (scan.shortPoints + scan.shortFaces == 0) return;
  console::warn(start + console::counted(scan.shortPoints, "point") + " and " +
                console::counted(scan.shortFaces, "face") + " with fewer than three numbers skipped");
}
