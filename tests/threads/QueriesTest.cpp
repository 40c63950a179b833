// Queries, edits and volumes of different surfaces in different threads.
#include <OrvikDTMAlgorithm/tin/FlatTIN.h>
#include <OrvikDTMAlgorithm/tin/Triangle3.h>

#include "AtOnce.h"
#include "Sites.h"

namespace {

using sites::Points;
using sites::Positions;
using sites::surfaceOf;
using sites::SurfacePtr;

constexpr int kThreads = 6;

void noteVolume(const FillCutResult* result, Findings& found) {
  const std::unique_ptr<const FillCutResult> owned(result);
  found.note(result == nullptr ? 0 : 1);
  if (result != nullptr) found.note(result, sizeof *result);
}

void notePieces(CEType& tin, Findings& found) {
  for (const auto& piece : tin.getTriangle3List()) {
    found.note(piece->getStatus());
    found.note(piece->getP1()->getX());
    found.note(piece->getP3()->getZ());
  }
}

void noteHeights(DTMSurface& surface, double n, double e, Findings& found) {
  for (int i = 0; i < 40; ++i) {
    double z = -1.0;
    found.note(surface.checkSurfacePoint(n + 7 * (i % 8), e + 9 * i, &z));
    found.note(z);
  }
}

// The TIN that an edit has promised is built by the first query, in another thread than that of the edit.
TEST(Queries, FirstQueriesGiveTheSame) {
  constexpr int kSurfacesOfAThread = 20;
  const auto makeSurfaces = [] {
    std::vector<SurfacePtr> surfaces;
    for (int i = 0; i < kThreads * kSurfacesOfAThread; ++i) {
      Surface::COMPAREUNSHIFTED = i / 2 % 2;
      Positions positions = sites::scattered(i / 4, 50);
      for (inputs::Position& p : positions) p = {p[0] - 60, p[1] - 60, p[2]};
      positions.insert(positions.end(), positions.begin(), positions.begin() + 5);
      surfaces.push_back(surfaceOf(positions));
    }
    Surface::COMPAREUNSHIFTED = 0;
    return surfaces;
  };
  const auto query = [](const std::vector<SurfacePtr>& surfaces, int thread) {
    Findings found;
    for (int i = 0; i < kSurfacesOfAThread; ++i) {
      DTMSurface& surface = *surfaces[static_cast<std::size_t>(i * kThreads + thread)];
      noteHeights(surface, -50, -50, found);
      found.note(surface.getTrianglesNumber());
      found.note(surface.getTwoDArea());
    }
    return found;
  };
  const std::vector<SurfacePtr> surfaces = makeSurfaces();
  const std::vector<Findings> together = atOnce(kThreads, [&](int thread) { return query(surfaces, thread); });
  EXPECT_EQ(Surface::COMPAREUNSHIFTED, 0);
  const std::vector<SurfacePtr> others = makeSurfaces();
  for (int i = 0; i < kThreads; ++i) {
    EXPECT_TRUE(together[static_cast<std::size_t>(i)] == query(others, i)) << "thread " << i;
  }
}

TEST(Queries, LocationAndHeightsGiveTheSame) {
  expectSameAtOnce(kThreads, [](int thread) {
    Findings found;
    Points points(thread % 2 == 0 ? sites::scattered(thread, 400) : sites::turnedGrid(thread, 20));
    const std::unique_ptr<CEType> tin(Surface::optimizeTIN(points.pointers));
    inputs::Random random(static_cast<std::uint64_t>(thread));
    const std::vector<double> extent = tin->getRangeXY();
    for (int i = 0; i < 300; ++i) {
      double x = extent[3] + (extent[2] - extent[3]) * (1.2 * random.unit() - 0.1);
      double y = extent[1] + (extent[0] - extent[1]) * (1.2 * random.unit() - 0.1);
      tin->toVertexPosition(&x, &y);
      found.note(tin->locateTri(x, y));
      found.note(tin->locateTri(x, y, 1));
      found.note(tin->locateTri1(x, y));
      found.note(tin->getHeight(x, y));
    }
    for (const auto& row : tin->proxyTri(extent[3], extent[1], 10, 10, 9)) {
      for (const double height : row) found.note(height);
    }
    found.note(static_cast<int>(tin->getOriginalList().size()));
    found.note(toText(verifyTIN(*tin, points.pointers)));
    return found;
  });
}

std::vector<RangePoint> boundaryAround(double e, double n, double half) {
  return {{{}, n - half, e - half, 0}, {{}, n - half, e + half, 0}, {{}, n + half, e + half, 0}, {{}, n, e - half, 0}};
}

void limit(DTMSurface& surface, std::vector<RangePoint> boundary) {
  std::vector<RangePoint*> pointers;
  for (RangePoint& vertex : boundary) pointers.push_back(&vertex);
  surface.setRangeList(pointers);
}

TEST(Queries, VolumesGiveTheSame) {
  expectSameAtOnce(3, [](int thread) {
    Findings found;
    const SurfacePtr ground = surfaceOf(sites::scattered(2 * thread, 12));
    const SurfacePtr design = surfaceOf(sites::scattered(2 * thread + 1, 10));
    for (const bool isLimited : {false, true}) {
      if (isLimited) limit(*ground, boundaryAround(150, 150, 80 + thread));
      CEType* tin = ground->getCEType();
      noteVolume(ground->getFillCut(9.5), found);
      notePieces(*tin, found);
      noteVolume(ground->getFillCut(design->getCEType()), found);
      notePieces(*tin, found);
      double coverage = 0.0;
      noteVolume(tin->getFillCutExact(10.5, &coverage), found);
      found.note(coverage);
      noteVolume(tin->getFillCutExact(design->getCEType(), &coverage), found);
      found.note(coverage);
    }
    return found;
  });
}

// The level is a surface over the boundary, for which the comparison of repeats is the other one where the boundary
// would lose a corner.
TEST(Queries, LevelsWithinBoundariesAcrossTheAxesGiveTheSame) {
  const auto job = [](int thread) {
    Findings found;
    for (int round = 0; round < 10; ++round) {
      Positions positions = sites::scattered(20 * thread + round, 20);
      for (inputs::Position& p : positions) p = {p[0] - 10, p[1] - 10, p[2]};
      const SurfacePtr ground = surfaceOf(positions);
      std::vector<RangePoint> boundary;
      for (const auto& [n, e] : {std::pair{-10, -10}, {-10, 10}, {0, 0}, {10, 10}, {10, -10}}) {
        boundary.push_back({{}, static_cast<double>(n), static_cast<double>(e), 0});
      }
      limit(*ground, boundary);
      noteVolume(ground->getFillCut(9.5), found);
      positions.insert(positions.end(), positions.begin(), positions.begin() + 3);
      found.note(surfaceOf(positions)->getCEType()->getBytes());
    }
    return found;
  };
  expectSameAtOnce(kThreads, job);
  EXPECT_EQ(Surface::COMPAREUNSHIFTED, 0);
}

// Slivers around a corner: the way from one to another leads through all between them.
Positions fan(int slivers) {
  Positions positions = {{0, 0, 0}};
  for (int i = 0; i <= slivers; ++i) {
    const double angle = 1.5 * i / slivers;
    positions.push_back({300 * std::cos(angle), 300 * std::sin(angle), 0.1 * (i % 100)});
  }
  return positions;
}

// A network and the comparisons in which it took part ask one copy of it, and may go on different threads.
TEST(Queries, OneCopyOfANetworkAnswersAllThreads) {
  for (const Positions& positions : {fan(2000), sites::scattered(1, 500), sites::turnedGrid(1, 20)}) {
    const SurfacePtr surface = surfaceOf(positions);
    const CEType& tin = *surface->getCEType();
    const std::vector<double> extent = tin.getRangeXY();
    const auto ask = [&extent](const detail::FlatTIN& copy, int thread) {
      Findings found;
      inputs::Random random(static_cast<std::uint64_t>(thread));
      int last = 1;
      for (int i = 0; i < 60; ++i) {
        const double x = extent[3] + (extent[2] - extent[3]) * random.unit();
        const double y = extent[1] + (extent[0] - extent[1]) * random.unit();
        found.note(copy.locate(x, y, last));
        found.note(copy.locate(x, y, 1 + i, last));
        found.note(copy.scan(x, y, last));
        copy.visitBoxes(x, y, x, y, [&found](int tri) { found.note(tri); });
      }
      return found;
    };
    const std::shared_ptr<const detail::FlatTIN> asked = detail::FlatTIN::of(tin);
    const std::vector<Findings> together = atOnce(kThreads, [&](int thread) { return ask(*asked, thread); });
    const std::shared_ptr<const detail::FlatTIN> fresh = detail::FlatTIN::of(tin);
    for (int i = 0; i < kThreads; ++i) {
      EXPECT_TRUE(together[static_cast<std::size_t>(i)] == ask(*fresh, i)) << "thread " << i;
    }
  }
}

// The pieces of a comparison are made on demand, while the other network may be asked.
TEST(Queries, TheOtherNetworkIsAskedWhileThePiecesAreMade) {
  const SurfacePtr ground = surfaceOf({{200, 150, 1}, {204, 150, 2}, {200, 154, 3}, {204.1, 154.15, 4}});
  const SurfacePtr design = surfaceOf(fan(100));
  const auto measure = [&] {
    Findings found;
    noteVolume(ground->getFillCut(design->getCEType()), found);
    return found;
  };
  const auto ask = [&](int thread) {
    Findings found;
    if (thread == 0) {
      notePieces(*ground->getCEType(), found);
      return found;
    }
    CEType& tin = *design->getCEType();
    for (int i = 0; i < 60; ++i) {
      const double x = 4.0 * (i * 37 % 60);
      found.note(tin.getHeight(x, 240 - x));
      found.note(tin.locateTri1(x, 240 - x));
    }
    return found;
  };
  const Findings before = measure();
  const std::vector<Findings> together = atOnce(2, ask);
  EXPECT_TRUE(before == measure());
  EXPECT_TRUE(together[0] == ask(0));
  EXPECT_TRUE(together[1] == ask(1));
}

TEST(Queries, LibrariesOfSurfacesGiveTheSame) {
  expectSameAtOnce(kThreads, [](int thread) {
    Findings found;
    DTMSurfaceLib library;
    for (int i = 0; i < 3; ++i) {
      const auto index = static_cast<unsigned int>(i);
      sites::fill(*library.addDTMSurface("Site"), sites::scattered(10 * thread + i, 12));
      library.deleteSurfacePoint(index, 0);
      double z = 0.0;
      found.note(library.checkSurfacePoint(index, 150, 150, &z));
      found.note(z);
      std::vector<DrawLine*> lines;
      library.previewDTMSurface(index, 50, 200, 50, 200, lines);
      for (const DrawLine* line : lines) {
        found.note(line->getStartX());
        found.note(line->getEndY());
        delete line;
      }
    }
    noteVolume(library.getFillCut(0u, 1u), found);
    noteVolume(library.getFillCut(2u, 9.0), found);
    library.release();
    return found;
  });
}

}  // namespace
