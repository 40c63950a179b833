// Constructions of different surfaces in different threads.
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/PList.h>
#include <OrvikDTMAlgorithm/tin/TList.h>

#include "AtOnce.h"
#include "Sites.h"

namespace {

using sites::Points;
using sites::Positions;

constexpr int kThreads = 6;

class Comparison {
 public:
  explicit Comparison(int compareUnshifted) { Surface::COMPAREUNSHIFTED = compareUnshifted; }
  ~Comparison() { Surface::COMPAREUNSHIFTED = 0; }
  Comparison(const Comparison&) = delete;
  Comparison& operator=(const Comparison&) = delete;
};

// All that a construction gives: the network, the room of its lists, the points in their order and places.
void noteNetwork(const CEType& tin, const std::vector<TPoint*>& points, Findings& found) {
  found.note(tin.getBytes());
  found.note(tin.getCList()->getMaxlen());
  found.note(tin.getEList()->getMaxlen());
  found.note(tin.getTList()->getMaxlen());
  for (const TPoint* p : points) {
    for (const double value : {p->getX(), p->getY(), p->getZ()}) found.note(value);
  }
}

void noteConstruction(const Positions& positions, Findings& found) {
  Points points(positions);
  const std::unique_ptr<CEType> tin(Surface::optimizeTIN(points.pointers));
  noteNetwork(*tin, points.pointers, found);
  found.note(static_cast<int>(verifyTIN(*tin).fault));
}

// The first three points are shot again, and a position lies where another one is shifted to.
Positions withRepeats(Positions positions) {
  for (inputs::Position& p : positions) p = {p[0] - 70, p[1] - 40, p[2]};
  positions.insert(positions.end(), positions.begin(), positions.begin() + 3);
  return positions;
}

TEST(Builds, SweptAndExactConstructionsGiveTheSame) {
  expectSameAtOnce(kThreads, [](int thread) {
    Findings found;
    for (int round = 0; round < 4; ++round) {
      noteConstruction(sites::scattered(10 * thread + round, 200 + 150 * ((thread + round) % 6)), found);
      noteConstruction(sites::turnedGrid(10 * thread + round, 8 + 3 * ((thread + round) % 6)), found);
    }
    return found;
  });
}

TEST(Builds, TheComparisonOfRepeatsIsTheHosts) {
  for (const int compareUnshifted : {0, 1}) {
    const Comparison comparison(compareUnshifted);
    expectSameAtOnce(kThreads, [](int thread) {
      Findings found;
      for (int round = 0; round < 6; ++round) {
        noteConstruction(withRepeats(sites::scattered(10 * thread + round, 60 + 10 * thread)), found);
      }
      return found;
    });
    EXPECT_EQ(Surface::COMPAREUNSHIFTED, compareUnshifted);
  }
}

// So many points that the sweep is tried on a part of them first, while small networks come and go.
TEST(Builds, ALargeConstructionBesideSmallOnesGivesTheSame) {
  expectSameAtOnce(2, [](int thread) {
    Findings found;
    if (thread == 0) {
      noteConstruction(sites::scattered(thread, 150000), found);
      return found;
    }
    for (int round = 0; round < 300; ++round) noteConstruction(sites::scattered(round, 10 + round % 50), found);
    return found;
  });
}

TEST(Builds, TheStagesByThemselvesGiveTheSame) {
  expectSameAtOnce(kThreads, [](int thread) {
    Findings found;
    for (int round = 0; round < 20; ++round) {
      Points points(sites::scattered(30 * thread + round, 20 + 10 * ((thread + round) % 6)));
      std::vector<TPoint*> given = points.pointers;
      const std::unique_ptr<PList> order(Surface::initPoins(given));
      const std::unique_ptr<CEType> fan(Surface::initCET(order.get()));
      const std::unique_ptr<CEType> tin(Surface::buildTIN(order.get(), fan.get()));
      fan->setCList(nullptr);
      fan->setEList(nullptr);
      fan->setTList(nullptr);
      noteNetwork(*tin, points.pointers, found);
      found.note(order->getMaxlen());
      order->setListData({});
    }
    return found;
  });
}

TEST(Builds, NetworksOfFacesGiveTheSame) {
  expectSameAtOnce(kThreads, [](int thread) {
    Findings found;
    for (int round = 0; round < 20; ++round) {
      Points points(sites::scattered(30 * thread + round, 30));
      std::vector<std::array<int, 3>> faces;
      for (int i = 0; i + 2 < 30; ++i) faces.push_back({i, i + 1, i + 2});
      const std::unique_ptr<CEType> tin(CEType::initCETypeFromFaces(points.pointers, faces));
      noteNetwork(*tin, points.pointers, found);
      noteConstruction(sites::scattered(thread, 10 + thread), found);
    }
    return found;
  });
}

// The elements of all networks lie in blocks that the process keeps one account of.
TEST(Builds, NetworksAreTakenApartInOtherThreads) {
  std::vector<std::unique_ptr<Points>> points;
  std::vector<std::unique_ptr<CEType>> networks;
  for (int i = 0; i < kThreads; ++i) {
    points.push_back(std::make_unique<Points>(sites::scattered(i, 200)));
    networks.emplace_back(Surface::optimizeTIN(points.back()->pointers));
  }
  const std::vector<Findings> found = atOnce(kThreads, [&](int thread) {
    Findings own;
    CEType& tin = *networks[static_cast<std::size_t>(thread)];
    EList* edges = tin.getEList();
    while (edges->getListLen() > 0) own.note(edges->deleteData(edges, edges->getListLen()));
    networks[static_cast<std::size_t>(thread)].reset();
    noteConstruction(sites::scattered(thread, 150), own);
    return own;
  });
  for (int i = 0; i < kThreads; ++i) EXPECT_EQ(networks[static_cast<std::size_t>(i)], nullptr);
}

}  // namespace
