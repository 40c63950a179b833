// The topology of a TIN that comes as a list of faces, as triangle files give it.
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

#include "Inputs.h"
#include "Measure.h"
#include "Model.h"

namespace bench {

namespace {

using Face = std::array<int, 3>;

int indexOf(const TPoint* p, const Survey& survey) { return static_cast<int>(p - survey.points.data()); }

Face faceOf(const CEType& tin, int number, const Survey& survey) {
  EList* edges = tin.getEList();
  const int* three = tin.getTList()->findByNum(tin.getTList(), number)->getEno();
  const TEdge* first = edges->findByNum(edges, three[0]);
  const TEdge* second = edges->findByNum(edges, three[1]);
  const TPoint* a = first->getStartPoint();
  const TPoint* b = first->getEndPoint();
  const bool startIsThird = second->getStartPoint() != a && second->getStartPoint() != b;
  const TPoint* c = startIsThird ? second->getStartPoint() : second->getEndPoint();
  return {indexOf(a, survey), indexOf(b, survey), indexOf(c, survey)};
}

// The faces of a TIN over half a million points, and its points as vertices.
struct Faces {
  Survey survey{cloudNamed("uniform_500k")};
  std::vector<TPoint*> vertices{survey.pointers};
  std::vector<Face> faces;

  Faces() {
    const std::unique_ptr<CEType> tin = build(survey);
    const int count = tin->getTList()->getListLen();
    faces.reserve(static_cast<std::size_t>(count));
    for (int number = 1; number <= count; ++number) faces.push_back(faceOf(*tin, number, survey));
  }
};

void measureTopology(benchmark::State& state) {
  static const Faces given;
  for ([[maybe_unused]] auto iteration : state) {
    const std::unique_ptr<CEType> tin =
        timed(state, [] { return std::unique_ptr<CEType>(CEType::initCETypeFromFaces(given.vertices, given.faces)); });
    state.counters["faces"] = tin->getTList()->getListLen();
  }
}

[[maybe_unused]] const bool added = [] {
  add("topology/ours/uniform_500k", 1, measureTopology);
  return true;
}();

}  // namespace

}  // namespace bench
