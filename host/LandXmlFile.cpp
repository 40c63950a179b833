#include <algorithm>
#include <array>
#include <string_view>

#include "Console.h"
#include "TextLines.h"
#include "TriangleLines.h"
#include "UserText.h"

namespace {

constexpr std::size_t kNumbersOfAPoint = 3;
constexpr std::array<NumberField, kNumbersOfAPoint> kPoint = {kNorthing, kEasting, kElevation};

// What the file says between the tags of one element, on one line or several; blanks separate its words.
struct Scan {
  std::string element;  // "P" or "F" while within one
  std::string text;
  std::string where;  // of its first line, for messages
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
  ++scan.points;
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
  if (scan.shortPoints + scan.shortFaces == 0) return;
  console::warn(start + console::counted(scan.shortPoints, "point") + " and " +
                console::counted(scan.shortFaces, "face") + " with fewer than three numbers skipped");
}
