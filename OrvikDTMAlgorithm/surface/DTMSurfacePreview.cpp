// The line work of a surface's preview: edges of its TIN and of its hull, cut to a view.
#include <memory>

#include <OrvikDTMAlgorithm/surface/ClipLine.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/DrawLine.h>
#include <OrvikDTMAlgorithm/tin/CETypeElements.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>

inline namespace OrvikDTM {
namespace {

constexpr int kFewestEdges = 3;

// From this many edges on a preview shows the hull alone: more lines than a view can show.
constexpr int kTooManyEdges = 10000;

// Appends the edges that it is given to a list of lines, cut to a view.
class Preview {
 public:
  Preview(const detail::ViewRectangle& view, std::vector<DrawLine*>& lines) : view_(view), lines_(lines) {}

  void draw(const TEdge* edge, bool ofHull) {
    if (!detail::isWhole(edge)) return;
    const TPoint& start = *edge->getStartPoint();
    const TPoint& end = *edge->getEndPoint();
    detail::LineInPlan line{start.getX(), start.getY(), end.getX(), end.getY()};
    if (!detail::clipLine(view_, line)) return;
    auto drawn = std::make_unique<DrawLine>(line.startX, line.startY, line.endX, line.endY, ofHull);
    lines_.push_back(drawn.get());
    static_cast<void>(drawn.release());  // the list's owner has it now
  }

 private:
  detail::ViewRectangle view_;
  std::vector<DrawLine*>& lines_;
};

}  // namespace

bool DTMSurface::drawSurface(double minX, double maxX, double minY, double maxY, std::vector<DrawLine*>& lines) {
  const CEType* model = getCEType();
  const EList* edges = model == nullptr ? nullptr : model->getEList();
  if (edges == nullptr || edges->getListLen() < kFewestEdges) return false;

  Preview preview({minX, minY, maxX, maxY}, lines);
  if (isDrawDTM && edges->getListLen() < kTooManyEdges) {
    for (int i = 1; i <= edges->getListLen(); ++i) preview.draw(edges->findByNum(edges, i), false);
  }
  const ConvexList* hull = model->getCList();
  for (int i = 1; hull != nullptr && i <= hull->getListLen(); ++i) {
    const TConvex* entry = hull->findByNum(hull, i);
    if (entry != nullptr) preview.draw(edges->findByNum(edges, entry->getEdgeNo()), true);
  }
  return true;
}

}  // namespace OrvikDTM
