// A host in C++: from survey files to a volume report, through the classes.
//
//   site SITE GROUND OUT
//
// SITE is the folder of the sample site, GROUND a surface of its ground (LandXML), OUT an existing folder for what is
// written.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

namespace {

constexpr int kTtin = 0;
constexpr int kLandXml = 2;

constexpr unsigned int kDesign = 0;  // the first surface of the library

void require(bool done, const std::string& what) {
  if (!done) throw std::runtime_error(what);
}

std::string text(double v) {  // four decimals
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.4f", v);
  return buffer;
}

// A library that takes its surfaces with it, points and TINs included.
struct Library : DTMSurfaceLib {
  Library() = default;
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() { release(); }

  // Where the surface stands that came in last.
  unsigned int last() const { return static_cast<unsigned int>(getSurfacesNumber()) - 1; }
};

void build(Library& library, const std::string& site) {
  library.addDTMSurface("design");
  std::vector<SurfacePoint*> read;  // the surface's own records
  library.loadSurfacePointsFile(kDesign, (site + "/design.csv").c_str(), read);
  require(!read.empty(), "reading design.csv");
  std::cout << "Built     the design of " << read.size() << " points\n";
}

// Raises the first point, looks at the height there, and puts the point back as the last one.
void edit(Library& library) {
  DTMSurface& design = *library.getSurface(kDesign);
  const std::unique_ptr<SurfacePoint> surveyed(design.getSurfacePoints()[0]->clone());
  std::unique_ptr<SurfacePoint> raised(surveyed->clone());
  raised->setZ(raised->getZ() + 0.5);
  require(design.updateSurfacePoint(0, raised.get()) == 1, "replacing a point");
  raised.release();  // the surface's from here on
  double z = 0.0;
  require(design.checkSurfacePoint(surveyed->getN(), surveyed->getE(), &z) == 1, "asking for a height");
  require(design.deleteSurfacePoint(0, 1) == 1, "deleting a point");
  design.addSurfacePoint(surveyed->clone(), std::numeric_limits<unsigned long long>::max());
  std::cout << "Edited    point " << surveyed->getSurfacePointName() << ": raised to " << text(z)
            << ", deleted, added as surveyed at " << text(surveyed->getZ()) << '\n';
}

void writeSvg(const std::vector<DrawLine*>& lines, std::ostream& svg) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  double west = kFar, east = -kFar, south = kFar, north = -kFar;
  for (const DrawLine* l : lines) {
    west = std::min({west, l->startX, l->endX});
    east = std::max({east, l->startX, l->endX});
    south = std::min({south, l->startY, l->endY});
    north = std::max({north, l->startY, l->endY});
  }
  svg.setf(std::ios::fixed);
  svg.precision(3);
  svg << R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 )" << east - west << ' ' << north - south << "\">\n";
  for (const DrawLine* l : lines) {
    svg << "<line x1=\"" << l->startX - west << "\" y1=\"" << north - l->startY << "\" x2=\"" << l->endX - west
        << "\" y2=\"" << north - l->endY << "\" stroke=\"" << (l->flag == 1 ? "#c00" : "#888")
        << "\" stroke-width=\"0.2\"/>\n";
  }
  svg << "</svg>\n";
}

void preview(Library& library, const std::string& out) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  std::vector<DrawLine*> lines;  // ours
  const bool drawn = library.previewDTMSurface(kDesign, -kFar, kFar, -kFar, kFar, lines);
  std::ofstream svg(out + "/design.svg");
  writeSvg(lines, svg);
  for (const DrawLine* line : lines) delete line;
  require(drawn && svg.good(), "drawing the design");
  std::cout << "Drew      " << lines.size() << " lines to design.svg\n";
}

// Loads every such file of the folder that can be read, and returns the index of the one that it has saved.
unsigned int saveAndList(Library& library, const std::string& out) {
  require(library.saveSurface(kDesign, (out + "/design.ttin").c_str()) == 1, "saving the design");
  const unsigned int before = library.last();
  unsigned int saved = kDesign;
  for (const std::string& file : DTMFileOperation().getSurfaceByPath(out.c_str(), ".ttin")) {
    const bool loaded = library.loadDTMSurface(file.c_str(), kTtin) != nullptr;
    if (loaded && file.substr(file.find_last_of("/\\") + 1) == "design.ttin") saved = library.last();
  }
  require(saved != kDesign, "loading the saved design");
  std::cout << "Saved     design.ttin; the folder holds " << library.last() - before << " such file(s)\n";
  return saved;
}

// Loads the ground, gives it its boundary and returns its index.
unsigned int bound(Library& library, const std::string& site, const std::string& ground) {
  bool first = false, second = false;
  std::vector<RangePoint*> boundary;  // ours
  require(DTMFileOperation().loadRangePointFile((site + "/boundary.waa").c_str(), &first, &second, boundary),
          "reading boundary.waa");
  require(library.loadDTMSurface(ground.c_str(), kLandXml) != nullptr, "loading the ground");
  const unsigned int index = library.last();
  library.setRangeList(index, boundary);  // copies what it needs
  std::cout << "Bounded   by " << boundary.size() << " vertices, switches " << first << " and " << second << '\n';
  for (const RangePoint* vertex : boundary) delete vertex;
  return index;
}

void measure(Library& library, unsigned int ground, unsigned int design) {
  const std::unique_ptr<FillCutResult> result(library.getFillCut(ground, design));
  require(result != nullptr, "measuring the volume");
  std::cout << "Measured  " << library.getSurface(ground)->getSurfaceName() << " against "
            << library.getSurface(design)->getSurfaceName() << '\n'
            << "Cut       " << text(result->getCutVolume()) << " over " << text(result->getCutTwoDArea()) << ", "
            << text(result->getCutThreeDArea()) << " along the surface\n"
            << "Fill      " << text(result->getFillVolume()) << " over " << text(result->getFillTwoDArea()) << ", "
            << text(result->getFillThreeDArea()) << " along the surface\n";
}

void report(Library& library, unsigned int ground, unsigned int design, const std::string& out) {
  constexpr const char* kLabels =
      "Volume report,Ground,Design,Volumes,Cut volume,Fill volume,Plan area,Surface area,Plan perimeter,"
      "Surface perimeter,Cut areas,Fill areas";
  const auto write = [&](int kind, const std::string& file) {
    require(library.exportVolumeReport(ground, design, kind, kLabels, (out + "/" + file).c_str()) == 1, file);
  };
  write(0, "volume.html");
  write(1, "volume.txt");
  std::cout << "Reported  in volume.html and volume.txt\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: site SITE GROUND OUT\n";
    return 2;
  }
  const std::string site = argv[1], ground = argv[2], out = argv[3];
  try {
    Library library;
    build(library, site);
    edit(library);
    preview(library, out);
    const unsigned int savedDesign = saveAndList(library, out);
    const unsigned int boundedGround = bound(library, site, ground);
    measure(library, boundedGround, savedDesign);
    report(library, boundedGround, savedDesign, out);
  } catch (const std::exception& fault) {
    std::cerr << "site: this failed: " << fault.what() << '\n';
    return 1;
  }
  return 0;
}
