// ".sjw" triangle files (docs/sjw-format.md): a coordinate a line, nine lines a triangle, "nil" at the end.
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <OrvikDTMAlgorithm/io/CornerSet.h>
#include <OrvikDTMAlgorithm/io/CornerTexts.h>
#include <OrvikDTMAlgorithm/io/ImportedModel.h>
#include <OrvikDTMAlgorithm/io/TextLines.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>

inline namespace OrvikDTM {
namespace {

using detail::Face;

constexpr std::string_view kEndWord = "nil";

// What most coordinates of a projected system take, line break included; only the first guess of a file's size.
constexpr std::size_t kUsualTriangle = std::size_t{9} * 15;

// ---- writing

// The end of the second edge that is no corner yet. The order of the questions matters where the second edge joins the
// same two positions as the first.
const TPoint& thirdCorner(const TPoint& a, const TPoint& b, const TEdge& second) {
  const TPoint& start = *second.getStartPoint();
  const TPoint& end = *second.getEndPoint();
  if (start.equals(&a)) return end;
  if (end.equals(&a)) return start;
  if (start.equals(&b)) return end;
  return start;
}

}  // namespace

std::string CEType::getCASSsjw() const {
  char triangle[3 * detail::WrittenCorners::kLongest];
  detail::WrittenCorners corners;
  std::string text;
  const int count = triangleCount();
  text.reserve(static_cast<std::size_t>(count) * kUsualTriangle + kEndWord.size());
  detail::preferLargePages(text.data(), text.capacity());
  for (int tri = 1; tri <= count; ++tri) {
    if (const TEdge* ahead = edgeOf(tri + detail::kPrefetchAhead, 1)) {
      detail::prefetchWhole(ahead->getStartPoint());
      detail::prefetchWhole(ahead->getEndPoint());
    }
    const TEdge* first = edgeOf(tri, 0);
    const TEdge* second = edgeOf(tri, 1);
    if (first == nullptr || second == nullptr) continue;
    const TPoint& a = *first->getStartPoint();
    const TPoint& b = *first->getEndPoint();
    char* end = corners.write(a, triangle);
    end = corners.write(b, end);
    end = corners.write(thirdCorner(a, b, *second), end);
    text.append(triangle, end);
  }
  return text.append(kEndWord);
}

bool DTMSurface::exportFileSJW(const char* path) {
  CEType* model = getCEType();
  if (model == nullptr) return false;
  return detail::writeTextFile(path, model->getCASSsjw());
}

// ---- reading

namespace {

// The coordinate on the next line; nothing at the end of the list, which an empty line is too. A line of digits is read
// in the one pass that finds its end.
std::optional<double> takeCoordinate(std::string_view& rest) {
  double plain = 0.0;
  const char* const textEnd = rest.data() + rest.size();
  const char* const end = detail::readPlain(rest.data(), textEnd, plain);
  if (end != nullptr && end != textEnd && *end == '\n') {
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()) + 1);
    return plain;
  }
  std::string_view line;
  if (!detail::takeLine(rest, line) || line.empty() || line == kEndWord) return std::nullopt;
  return detail::readNumber(line);
}

std::optional<TPoint> takeCorner(std::string_view& rest) {
  const std::optional<double> x = takeCoordinate(rest);
  if (!x) return std::nullopt;
  const std::optional<double> y = takeCoordinate(rest);
  if (!y) return std::nullopt;
  const std::optional<double> z = takeCoordinate(rest);
  if (!z) return std::nullopt;
  return TPoint(*x, *y, *z);
}

// The triangles of a file. Every triangle repeats its corners; those that are the same to the last bit become one
// point, which spares the topology builder five of six points and changes nothing that can be told from outside.
struct TriangleList {
  detail::ReadCorners texts;
  detail::CornerSet corners;
  std::vector<Face> faces;
};

// The position of the next corner among the corners of the list; nothing at the end of the list.
std::optional<int> takeCornerPosition(std::string_view& rest, TriangleList& triangles) {
  detail::ReadCorners::Text& seen = triangles.texts.find(rest);
  if (seen.isStartOf(rest)) {
    rest.remove_prefix(seen.length);
    return seen.position;
  }
  const char* const begin = rest.data();
  const std::optional<TPoint> corner = takeCorner(rest);
  if (!corner) return std::nullopt;
  const int position = triangles.corners.insert(*corner);
  if (rest.data()[-1] == '\n') seen = {begin, static_cast<std::size_t>(rest.data() - begin), position};
  return position;
}

bool takeTriangle(std::string_view& rest, TriangleList& triangles) {
  const std::optional<int> a = takeCornerPosition(rest, triangles);
  if (!a) return false;
  const std::optional<int> b = takeCornerPosition(rest, triangles);
  if (!b) return false;
  const std::optional<int> c = takeCornerPosition(rest, triangles);
  if (!c) return false;
  triangles.faces.push_back({*a, *b, *c});
  return true;
}

}  // namespace

CEType* CEType::initCETypeFromSJW(const char* path) {
  std::string contents;
  if (!detail::readWholeFile(path, contents)) return nullptr;
  TriangleList triangles;
  for (std::string_view rest = detail::withoutByteOrderMark(contents); takeTriangle(rest, triangles);) continue;
  if (triangles.faces.empty()) return nullptr;
  return detail::importedModel(triangles.corners.takePoints(), triangles.faces).release();
}

bool DTMSurface::tryParseSJW(const char* path) { return adoptImport(CEType::initCETypeFromSJW(path), path); }

}  // namespace OrvikDTM
