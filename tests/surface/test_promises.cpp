// Edits promise a rebuilt TIN and keep their word when somebody looks. A surface that is looked at after every edit and
// one that is looked at now and then are the same surface to every look.
#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <random>

#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/RangePoint.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/TPoint.h>
#include <gtest/gtest.h>

#include "surface/Surfaces.h"

namespace {

using Values = std::vector<double>;

// Marks Surface::MAXPOINTS, which every construction overwrites, and so tells whether there has been one.
class BuildWatch {
 public:
  BuildWatch() { Surface::MAXPOINTS = kMark; }
  bool hasBuilt() const { return Surface::MAXPOINTS != kMark; }

 private:
  static constexpr int kMark = -1;
};

class ComparisonReset {
 public:
  ComparisonReset() = default;
  ~ComparisonReset() { Surface::COMPAREUNSHIFTED = 0; }
  ComparisonReset(const ComparisonReset&) = delete;
  ComparisonReset& operator=(const ComparisonReset&) = delete;
};

// ---- looks

struct Look {
  const char* name;
  std::function<Values(DTMSurface&)> at;
};

double number(int v) { return static_cast<double>(v); }

Values statisticsOf(const DTMSurface& surface) {
  return {number(surface.getTrianglesNumber()),
          surface.getTwoDArea(),
          surface.getThreeDArea(),
          surface.getMinElev(),
          surface.getMaxElev(),
          surface.getRangeMinX(),
          surface.getRangeMaxX(),
          surface.getRangeMinY(),
          surface.getRangeMaxY(),
          surface.getPerimeterTwoD(),
          surface.getPerimeterThreeD()};
}

Values heightAt(DTMSurface& surface, double n, double e) {
  double z = -1.0;
  const int found = surface.checkSurfacePoint(n, e, &z);
  return {number(found), z};
}

Values levelVolumes(DTMSurface& surface) {
  const std::unique_ptr<FillCutResult> result(surface.getFillCut(5.0));
  if (result == nullptr) return {};
  return {result->getFillVolume(), result->getCutVolume()};
}

Values statisticsOfClone(const DTMSurface& surface) {
  const std::unique_ptr<DTMSurface> copy(surface.clone());
  Values values = statisticsOf(*copy);
  values.push_back(copy->isNeedInit() ? 1.0 : 0.0);
  copy->release();
  return values;
}

Values pointsOf(const std::vector<SurfacePoint*>& points) {
  Values values;
  for (const SurfacePoint* point : points) values.push_back(point->getZ());
  return values;
}

Values sizeOfModel(DTMSurface& surface) {
  const CEType* model = surface.getCEType();
  const TList* triangles = model == nullptr ? nullptr : model->getTList();
  return {model == nullptr ? 0.0 : 1.0, triangles == nullptr ? 0.0 : number(triangles->getListLen())};
}

const std::vector<Look>& looks() {
  static const std::vector<Look> all = {
      {"isNeedInit", [](DTMSurface& s) { return Values{s.isNeedInit() ? 1.0 : 0.0}; }},
      {"getCEType", sizeOfModel},
      {"getTrianglesNumber", [](DTMSurface& s) { return Values{number(s.getTrianglesNumber())}; }},
      {"getTwoDArea", [](DTMSurface& s) { return Values{s.getTwoDArea()}; }},
      {"getThreeDArea", [](DTMSurface& s) { return Values{s.getThreeDArea()}; }},
      {"getMinElev", [](DTMSurface& s) { return Values{s.getMinElev()}; }},
      {"getMaxElev", [](DTMSurface& s) { return Values{s.getMaxElev()}; }},
      {"getRangeMinX", [](DTMSurface& s) { return Values{s.getRangeMinX()}; }},
      {"getRangeMaxX", [](DTMSurface& s) { return Values{s.getRangeMaxX()}; }},
      {"getRangeMinY", [](DTMSurface& s) { return Values{s.getRangeMinY()}; }},
      {"getRangeMaxY", [](DTMSurface& s) { return Values{s.getRangeMaxY()}; }},
      {"getPerimeterTwoD", [](DTMSurface& s) { return Values{s.getPerimeterTwoD()}; }},
      {"getPerimeterThreeD", [](DTMSurface& s) { return Values{s.getPerimeterThreeD()}; }},
      {"checkSurfacePoint", [](DTMSurface& s) { return heightAt(s, 5.25, 4.5); }},
      {"getFillCut", levelVolumes},
      {"clone", statisticsOfClone},
      {"getSurfacePoints", [](DTMSurface& s) { return pointsOf(s.getSurfacePoints()); }},
      {"getSurfacePoints const", [](DTMSurface& s) { return pointsOf(std::as_const(s).getSurfacePoints()); }},
  };
  return all;
}

// ---- one edit, one look

TEST(Promises, AnEditBuildsNothingAndEveryLookBuilds) {
  for (const Look& look : looks()) {
    SCOPED_TRACE(look.name);
    OwnedSurface surface(risingSquare());
    surface.getCEType();
    const BuildWatch watch;
    surface.addSurfacePoint(newPoint("added", {120, 205, 30}), 4);
    surface.updateSurfacePoint(0, newPoint("replaced", {100, 190, 1}));
    EXPECT_EQ(5, surface.getPointsNumber());
    EXPECT_FALSE(watch.hasBuilt());
    look.at(surface);
    EXPECT_TRUE(watch.hasBuilt());

    const BuildWatch again;
    look.at(surface);
    EXPECT_FALSE(again.hasBuilt());
    EXPECT_EQ(30.0, surface.getMaxElev());
    EXPECT_EQ(190.0, surface.getRangeMinY());
  }
}

TEST(Promises, ManyEditsCostOneBuild) {
  constexpr int kPoints = 20000;
  std::mt19937 random(7);
  OwnedSurface surface;
  const BuildWatch watch;
  for (int i = 0; i < kPoints; ++i) {
    const auto coordinate = [&] { return static_cast<double>(random() % 1000000) / 1000.0; };
    const double e = coordinate();
    surface.addSurfacePoint(newPoint("P", {e, coordinate(), 10.0}), static_cast<unsigned long long>(i));
  }
  EXPECT_FALSE(watch.hasBuilt());
  EXPECT_EQ(1.0, heightAt(surface, 500, 500)[0]);
  EXPECT_GT(surface.getTrianglesNumber(), kPoints);
  const BuildWatch again;
  EXPECT_EQ(10.0, surface.getMaxElev());
  EXPECT_FALSE(again.hasBuilt());
}

TEST(Promises, AStatisticThatTheHostSetsStays) {
  OwnedSurface surface(risingSquare());
  surface.addSurfacePoint(newPoint("P5", {120, 205, 30}), 4);
  surface.setMaxElev(77.0);
  EXPECT_EQ(77.0, surface.getMaxElev());
  EXPECT_EQ(15.0, surface.getMinElev());
  EXPECT_FALSE(surface.isNeedInit());
}

TEST(Promises, TheModelIsThatOfThePointsBeforeTheyAreReplaced) {
  OwnedSurface surface(risingSquare());
  surface.addSurfacePoint(newPoint("P5", {120, 205, 30}), 4);
  SurfacePoint array[3];
  surface.updateDTMSurface(3, array);
  EXPECT_EQ(30.0, surface.getMaxElev());
  EXPECT_EQ(3, surface.getTrianglesNumber());
}

TEST(Promises, RecordsMayBeChangedOnceTheyAreHandedOut) {
  OwnedSurface surface(risingSquare());
  surface.addSurfacePoint(newPoint("P5", {120, 205, 30}), 4);
  surface.getSurfacePoints()[4]->setZ(99.0);
  EXPECT_EQ(30.0, surface.getMaxElev());
  EXPECT_EQ(30.0, heightAt(surface, 205, 120)[1]);
}

TEST(Promises, EditsBesideACallersArrayRebuildAtOnce) {
  auto array = std::make_unique<SurfacePoint[]>(3);
  for (int i = 0; i < 3; ++i) {
    array[i].setE(i == 1 ? 10 : 0);
    array[i].setN(i == 2 ? 10 : 0);
  }
  OwnedSurface surface;
  surface.updateDTMSurface(3, array.get());
  surface.addSurfacePoint(newPoint("P4", {10, 10, 4}), 3);
  array[0].setZ(50.0);
  EXPECT_EQ(4.0, surface.getMaxElev());

  std::unique_ptr<SurfacePoint> own(surface.getSurfacePoints()[3]);
  surface.getSurfacePoints().pop_back();
  array.reset();  // the records are gone before the surface hears of it
  surface.updateDTMSurface(0, nullptr);
  EXPECT_EQ(4.0, surface.getMaxElev());
}

TEST(Promises, WhatCountsAsARepeatIsSettledByTheEdit) {
  const ComparisonReset reset;
  const std::vector<Position> twice = {{100, 200, 1}, {110, 200, 2}, {110, 200, 3}, {110, 210, 4}, {100, 210, 5}};
  const auto trianglesWith = [&](int atEdit, int atLook) {
    OwnedSurface surface(twice);
    Surface::COMPAREUNSHIFTED = atEdit;
    surface.addSurfacePoint(newPoint("P", {105, 205, 6}), 5);
    Surface::COMPAREUNSHIFTED = atLook;
    const int triangles = surface.getTrianglesNumber();
    EXPECT_EQ(atLook, Surface::COMPAREUNSHIFTED);
    return triangles;
  };
  EXPECT_EQ(trianglesWith(0, 0), trianglesWith(0, 1));
  EXPECT_EQ(trianglesWith(1, 1), trianglesWith(1, 0));
  EXPECT_NE(trianglesWith(0, 0), trianglesWith(1, 1));
}

// ---- random edits

// A surface together with what its host has to know of its records without looking.
class Host {
 public:
  explicit Host(bool looksAfterEveryEdit) : looksAfterEveryEdit_(looksAfterEveryEdit) {
    surface.setSurfaceName("Site");
  }
  ~Host() { surface.release(); }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  int length() const { return surface.getPointsNumber(); }

  void edited() const {
    if (looksAfterEveryEdit_) static_cast<void>(surface.isNeedInit());
  }

  void add(const Position& at, unsigned long long index) {
    const auto place = std::min<unsigned long long>(index, records_.size());
    records_.insert(records_.begin() + static_cast<std::ptrdiff_t>(place), newPoint("P", at));
    surface.addSurfacePoint(records_[place], index);
    edited();
  }

  void update(unsigned int index, const Position& at) {
    std::unique_ptr<SurfacePoint> point(newPoint("P", at));
    if (surface.updateSurfacePoint(index, point.get()) == 1) records_[index] = point.release();
  }

  void remove(unsigned int index, unsigned long long count) {
    if (surface.deleteSurfacePoint(index, count) == 0) return;
    const std::size_t end = std::min<std::size_t>(records_.size(), index + count);
    for (std::size_t i = std::max<std::size_t>(index, count); i < end; ++i) discard(records_[i]);
    records_.erase(records_.begin() + index, records_.begin() + static_cast<std::ptrdiff_t>(end));
  }

  void replaceAll(const std::vector<Position>& positions) {
    std::vector<SurfacePoint*> points;
    for (const Position& at : positions) points.push_back(newPoint("P", at));
    surface.setSurfacePoints(points);
    if (points.empty()) return;
    for (const SurfacePoint* old : records_) discard(old);
    records_ = points;
  }

  void referToArray(const std::vector<Position>& positions) {
    arrays_.emplace_back(positions.size());
    std::vector<SurfacePoint>& array = arrays_.back();
    records_.clear();
    for (std::size_t i = 0; i < positions.size(); ++i) {
      array[i].setE(positions[i].e);
      array[i].setN(positions[i].n);
      array[i].setZ(positions[i].z);
      records_.push_back(&array[i]);
    }
    surface.updateDTMSurface(static_cast<int>(array.size()), array.data());
  }

  void release() {
    surface.release();
    records_.clear();
  }

  DTMSurface surface;

 private:
  void discard(const SurfacePoint* record) const {
    for (const std::vector<SurfacePoint>& array : arrays_) {
      for (const SurfacePoint& inArray : array) {
        if (&inArray == record) return;
      }
    }
    delete record;
  }

  const bool looksAfterEveryEdit_;
  std::vector<SurfacePoint*> records_;
  std::deque<std::vector<SurfacePoint>> arrays_;
};

using Edit = std::function<void(Host&)>;

// Draws edits. Positions are few, so that some are repeated, and lie around 0, where the rule for repeats matters.
class Edits {
 public:
  explicit Edits(unsigned seed) : random_(seed) {}

  int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

  Edit next() {
    switch (below(kKinds)) {
      case 0:
        return [count = below(6), index = below(14), positions = positions(6)](Host& host) {
          for (int i = 0; i < count; ++i) host.add(positions[static_cast<std::size_t>(i)], index);
        };
      case 1:
        return [index = below(14), at = position()](Host& host) { host.update(index, at); };
      case 2:
        return [index = below(10), count = below(4)](Host& host) { host.remove(index, count); };
      case 3:
        return [positions = positions(below(9))](Host& host) { host.replaceAll(positions); };
      case 4:
        return [which = below(kStatistics), v = below(100)](Host& host) { setStatistic(host.surface, which, v); };
      case 5:
        return [](Host& host) { host.surface.setCEType(nullptr); };
      case 6:
        return [](Host& host) { host.surface.setCEType(new CEType(nullptr, nullptr, nullptr)); };
      case 7:
        return [compare = below(2)](Host&) { Surface::COMPAREUNSHIFTED = compare; };
      case 8:
        return [](Host& host) {
          RangePoint corners[3] = {{"A", 1, 1, 5}, {"B", 1, 9, 5}, {"C", 9, 5, 5}};
          host.surface.setRangeList({&corners[0], &corners[1], &corners[2]});
        };
      case 9:
        return rarely([positions = positions(below(9))](Host& host) { host.referToArray(positions); });
      default:
        return rarely([](Host& host) { host.release(); });
    }
  }

 private:
  static constexpr int kKinds = 11;
  static constexpr int kStatistics = 11;
  static constexpr unsigned long long kAppend = 1000;

  Position position() { return {number(below(12) - below(2)), number(below(12) - below(2)), number(below(40))}; }

  std::vector<Position> positions(int count) {
    std::vector<Position> list;
    for (int i = 0; i < count; ++i) list.push_back(position());
    return list;
  }

  Edit rarely(Edit edit) {
    const Position at = position();
    if (below(10) == 0) return edit;
    return [at](Host& host) { host.add(at, kAppend); };
  }

  static void setStatistic(DTMSurface& surface, int which, int v) {
    switch (which) {
      case 0:
        return surface.setTwoDArea(v);
      case 1:
        return surface.setThreeDArea(v);
      case 2:
        return surface.setMinElev(v);
      case 3:
        return surface.setMaxElev(v);
      case 4:
        return surface.setRangeMinX(v);
      case 5:
        return surface.setRangeMaxX(v);
      case 6:
        return surface.setRangeMinY(v);
      case 7:
        return surface.setRangeMaxY(v);
      case 8:
        return surface.setPerimeterTwoD(v);
      case 9:
        return surface.setPerimeterThreeD(v);
      default:
        return surface.setTrianglesNumber(v);
    }
  }

  std::mt19937 random_;
};

void compareRandomEdits(unsigned seed, int looksOneIn) {
  const ComparisonReset reset;
  Edits edits(seed);
  Host eager(true);
  Host lazy(false);
  for (int step = 0; step < 60; ++step) {
    const Edit edit = edits.next();
    for (Host* host : {&eager, &lazy}) {
      edit(*host);
      host->edited();
    }
    ASSERT_EQ(eager.length(), lazy.length());
    if (edits.below(looksOneIn) != 0) continue;
    const Look& look = looks()[static_cast<std::size_t>(edits.below(static_cast<int>(looks().size())))];
    ASSERT_EQ(look.at(eager.surface), look.at(lazy.surface)) << look.name << " in step " << step;
  }
  ASSERT_EQ(statisticsOf(eager.surface), statisticsOf(lazy.surface));
}

TEST(Promises, NobodyCanTellWhenTheyAreKept) {
  for (unsigned seed = 1; seed <= 400; ++seed) {
    SCOPED_TRACE(seed);
    compareRandomEdits(seed, 1 + static_cast<int>(seed % 5));
    if (HasFatalFailure()) return;
  }
}

}  // namespace
