#include <OrvikDTMAlgorithm/report/GbkText.h>
#include <OrvikDTMAlgorithm/report/U.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/ListDumps.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

inline namespace OrvikDTM {

namespace {

namespace gbk = detail::gbk;

std::string planText(const TPoint& p) { return U::toString(p.getX()) + " " + U::toString(p.getY()); }

// The first words of an element's line: "number k ...".
std::string ordinal(int number) { return gbk::kOrdinal + U::intToString(number); }

void appendLines(const TEdge& edge, int number, std::vector<std::string>& lines) {
  if (edge.getStartPoint() == nullptr || edge.getEndPoint() == nullptr) return;
  lines.push_back(ordinal(number) + gbk::kEdgeStart + ")" + planText(*edge.getStartPoint()) + " " + gbk::kEdgeEnd +
                  ")" + planText(*edge.getEndPoint()) + " " + gbk::kEdgeAngle + ")" + U::toString(edge.getAngleByX()));
  lines.push_back(ordinal(number) + gbk::kEdgeTriangles + U::intToString(edge.getLeftT()) + " " +
                  U::intToString(edge.getRightT()));
}

void appendLines(const Triangle& triangle, int number, std::vector<std::string>& lines) {
  const int* e = triangle.getEno();
  lines.push_back(ordinal(number) + gbk::kTriangleEdges + U::intToString(e[0]) + " " + U::intToString(e[1]) + " " +
                  U::intToString(e[2]));
}

void appendLines(const TConvex& entry, int number, std::vector<std::string>& lines) {
  lines.push_back(gbk::kHullOrdinal + U::intToString(number) + gbk::kHullEdge + U::intToString(entry.getEdgeNo()));
}

template <typename List>
std::vector<std::string> dump(const std::string& name, List& list) {
  std::vector<std::string> lines{"------" + name + " start------"};
  for (int number = 1; number <= list.getListLen(); ++number) {
    if (const auto* element = list.findByNum(&list, number)) appendLines(*element, number, lines);
  }
  lines.push_back("------" + name + " end------");
  return lines;
}

}  // namespace

namespace detail {

std::vector<std::string> dumpOf(EList& list) { return dump("EList", list); }
std::vector<std::string> dumpOf(TList& list) { return dump("TList", list); }
std::vector<std::string> dumpOf(ConvexList& list) { return dump("ConvexList", list); }

}  // namespace detail

void EList::getAllNode(EList* list) {
  if (list != nullptr) detail::dumpOf(*list);
}

void TList::getAllNode(TList* list) {
  if (list != nullptr) detail::dumpOf(*list);
}

void ConvexList::getAllNode(ConvexList* list) {
  if (list != nullptr) detail::dumpOf(*list);
}

}  // namespace OrvikDTM
