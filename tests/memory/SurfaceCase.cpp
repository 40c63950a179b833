#include "memory/SurfaceCase.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>

#include <OrvikDTMAlgorithm/surface/RecordLayout.h>

namespace memory {

namespace fs = std::filesystem;

namespace {

constexpr int kPoints = 9;

void write(const std::string& path, const std::string& contents) { std::ofstream(path, std::ios::binary) << contents; }

std::string contentsOf(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

// Every file is flushed to its disk, thousands of times here: one in memory costs nothing.
fs::path folderForFiles() {
  std::error_code ignored;
  const fs::path inMemory = "/dev/shm";
  return fs::is_directory(inMemory, ignored) ? inMemory : fs::temp_directory_path();
}

// Two triangles, with the names that LandXML gives.
constexpr const char* kLandXML =
    "<?xml version=\"1.0\"?><LandXML><Surfaces><Surface name=\"S\"><Definition surfType=\"TIN\"><Pnts>"
    "<P id=\"1\">200 100 15</P><P id=\"2\">200 110 16</P><P id=\"3\">210 110 17</P><P id=\"4\">210 100 18</P></Pnts>"
    "<Faces><F>1 2 3</F><F>1 3 4</F></Faces></Definition></Surface></Surfaces></LandXML>";

}  // namespace

const Files& Files::all() {
  static const Files files;
  return files;
}

Files::Files() : folder_(folderForFiles() / ("orvikdtm-memory-" + std::to_string(std::random_device()()))) {
  fs::create_directories(folder_ / "target");
  DTMSurface surface;
  surface.setSurfaceName("Stored");
  surface.setSurfacePoints(newGround(kPoints, 3.0));
  DTMFileOperation().saveSurfaces(path("stored.ttin").c_str(), &surface);
  surface.exportFileSJW(path("stored.sjw").c_str());
  surface.release();
  write(path("stored.xml"), kLandXML);
  write(path("points.csv"), "A,,101,201,15.1\nB,,102,202,15.2\nC,,103,207,15.3\n");
  write(path("boundary.waa"), "1\n1\nA,1,2,3\nB,4,5,6\nC,7,8,9\n");
}

Files::~Files() { fs::remove_all(folder_); }

std::vector<SurfacePoint*> newGround(int count, double lift) {
  std::vector<SurfacePoint*> points;
  for (int i = 0; i < count; ++i) {
    auto* point = new SurfacePoint;
    const double e = 0.05 * (i * 37 % 101);
    const double n = 0.05 * (i * i * 13 % 97);
    point->setSurfacePointName(std::to_string(i).insert(0, 1, 'P').c_str());
    point->setE(e);
    point->setN(n);
    point->setZ(20.0 + 0.4 * e - 0.3 * n + 0.01 * i + (e < 2.5 ? lift : -lift));
    points.push_back(point);
  }
  return points;
}

std::vector<RangePoint> boundary() { return {{"a", 1.0, 1.0, 1.0}, {"b", 1.0, 3.5, 2.0}, {"c", 3.5, 2.0, 3.0}}; }

std::vector<RangePoint*> pointersTo(std::vector<RangePoint>& vertices) {
  std::vector<RangePoint*> pointers;
  for (RangePoint& vertex : vertices) pointers.push_back(&vertex);
  return pointers;
}

void resetTargets() {
  const std::string target = Files::all().path("target/file.txt");
  for (const auto& entry : fs::directory_iterator(Files::all().path("target"))) {
    if (entry.path() != target) fs::remove_all(entry.path());
  }
  if (contentsOf(target) != "as it was") write(target, "as it was");
}

std::string textOfTargets() {
  std::string text;
  for (const auto& entry : fs::directory_iterator(Files::all().path("target"))) {
    text += entry.path().filename().string() + "=" + contentsOf(entry.path()) + "\n";
  }
  return text;
}

std::string textOf(const std::vector<SurfacePoint*>& points) {
  std::string text;
  for (const SurfacePoint* point : points) text += point->toString() + ";";
  return text;
}

std::string textOf(const CEType& tin) {
  std::ostringstream text;
  const std::vector<unsigned char> bytes = tin.getBytes();
  text << std::string(bytes.begin(), bytes.end()).size() << ":" << tin.getCASSsjw() << "|";
  for (const unsigned char byte : bytes)
    text << static_cast<char>('a' + byte / 16) << static_cast<char>('a' + byte % 16);
  CEType& looked = const_cast<CEType&>(tin);
  for (const TPoint* p : looked.getRangeList()) text << "|" << p->getX() << "," << p->getY() << "," << p->getZ();
  text << "|" << tin.getCList()->getMaxlen() << "," << tin.getEList()->getMaxlen() << ","
       << tin.getTList()->getMaxlen();
  return text.str();
}

std::string textOf(DTMSurface& surface) {
  const CEType* tin = surface.getCEType();  // first, or the statistics may be those of the one before
  std::ostringstream text;
  text.precision(17);
  text << surface.getSurfaceName() << "|" << surface.getPointsNumber() << "|" << surface.getTrianglesNumber();
  for (const double v : {surface.getTwoDArea(), surface.getThreeDArea(), surface.getMinElev(), surface.getMaxElev(),
                         surface.getRangeMinX(), surface.getRangeMaxX(), surface.getRangeMinY(), surface.getRangeMaxY(),
                         surface.getPerimeterTwoD(), surface.getPerimeterThreeD()}) {
    text << "|" << v;
  }
  text << "|" << textOf(surface.getSurfacePoints());
  if (tin != nullptr) text << textOf(*tin);
  return text.str();
}

std::string textOf(const FillCutResult& result) {
  std::ostringstream text;
  text.precision(17);
  text << RecordLayout::surfaceName(result) << "|" << RecordLayout::refSurfaceName(result);
  for (const double v : {result.getFillTwoDArea(), result.getFillThreeDArea(), result.getCutTwoDArea(),
                         result.getCutThreeDArea(), result.getFillVolume(), result.getCutVolume()}) {
    text << "|" << v;
  }
  return text.str();
}

SurfaceCase::SurfaceCase() : spare(std::make_unique<SurfacePoint>()) {
  library.addDTMSurface("Site")->setSurfacePoints(newGround(kPoints, 2.0));
  library.addDTMSurface("Design")->setSurfacePoints(newGround(kPoints, -2.0));
  spare->setSurfacePointName("Spare");
  spare->setE(2.515);
  spare->setN(2.41);
  spare->setZ(21.5);
  for (const SurfacePoint* point : site().getSurfacePoints()) array.push_back(*point);
  for (const RangePoint& vertex : boundary()) vertices.push_back(new RangePoint(vertex));
}

SurfaceCase::~SurfaceCase() {
  forget();
  for (const SurfacePoint* point : replaced) {
    const std::vector<SurfacePoint*>& present = site().getSurfacePoints();
    if (std::find(present.begin(), present.end(), point) == present.end()) delete point;
  }
  library.release();
  for (const RangePoint* vertex : vertices) delete vertex;
}

void SurfaceCase::forget() {
  text = {};
  bytes = {};
  numbers = {};
  for (const DrawLine* line : lines) delete line;
  lines = {};
  for (const TPoint* point : points) delete point;
  points = {};
  listed = {};
  names = {};
  result.reset();
  tin.reset();
  if (copy != nullptr) copy->release();
  delete copy;
  copy = nullptr;
}

std::string SurfaceCase::describe() {
  std::ostringstream seen;
  seen.precision(17);
  for (unsigned int i = 0; i < library.getSurfacesNumber(); ++i) seen << textOf(*library.getSurface(i)) << "\n";
  seen << (spare == nullptr ? "given" : spare->getSurfacePointName()) << "\n";
  for (const RangePoint* vertex : vertices) seen << vertex->name << "," << vertex->n << "," << vertex->z << ";";
  seen << "\n";
  if (writes) seen << textOfTargets();
  seen << text << "\n" << std::string(bytes.begin(), bytes.end()) << "\n";
  for (const double v : numbers) seen << v << " ";
  for (const DrawLine* line : lines) seen << line->startX << "," << line->endY << "," << line->flag << ";";
  for (const TPoint* point : points) seen << point->getX() << "," << point->getY() << "," << point->getZ() << ";";
  seen << textOf(listed) << "\n";
  for (const std::string& name : names) seen << name << ";";
  if (result != nullptr) seen << textOf(*result) << "\n";
  if (tin != nullptr) seen << textOf(*tin) << "\n";
  if (copy != nullptr) seen << textOf(*copy) << "\n";
  return seen.str();
}

}  // namespace memory
