// The topology of a TIN that comes as a list of faces, as triangle files give it.
#include <OrvikDTMAlgorithm/tin/TList.h>

#include "Inputs.h"
#include "Measure.h"
#include "Model.h"

namespace bench {

namespace {

using Face = std::array<int, 3>;

Face faceOf(const CEType& tin, int number, const Survey& survey) {
  Face face{};
  const std::array<const TPoint*, 3> corners = cornersOf(tin, number);
  for (std::size_t i = 0; i < face.size(); ++i) face[i] = static_cast<int>(corners[i] - survey.points.data());
  return face;
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
