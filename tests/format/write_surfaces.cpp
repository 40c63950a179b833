// Writes surface files into the folder that is its argument, and beside each a text in which every number stands as the
// sixteen digits of its bits: what a reader of the file has to find.
#include <bit>
#include <cstdint>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <limits>
#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

namespace {

void write(std::ostream& out, double v) {
  out << ' ' << std::hex << std::setw(16) << std::setfill('0') << std::bit_cast<std::uint64_t>(v) << std::dec;
}

void write(std::ostream& out, const TPoint& p) {
  for (const double v : {p.getX(), p.getY(), p.getZ()}) write(out, v);
}

void describeTIN(const CEType& tin, std::ostream& out) {
  const ConvexList* hull = tin.getCList();
  for (int i = 1; i <= hull->getListLen(); ++i) out << "hull " << hull->findByNum(hull, i)->getEdgeNo() << '\n';
  const EList* edges = tin.getEList();
  for (int i = 1; i <= edges->getListLen(); ++i) {
    const TEdge& edge = *edges->findByNum(edges, i);
    out << "edge " << edge.getLeftT() << ' ' << edge.getRightT();
    write(out, *edge.getStartPoint());
    write(out, *edge.getEndPoint());
    out << '\n';
  }
  const TList* triangles = tin.getTList();
  for (int i = 1; i <= triangles->getListLen(); ++i) {
    const int* three = triangles->findByNum(triangles, i)->getEno();
    out << "face " << three[0] << ' ' << three[1] << ' ' << three[2] << '\n';
  }
}

void describe(DTMSurface& surface, std::ostream& out) {
  out << "name " << surface.getSurfaceName() << "\ntriangles " << surface.getTrianglesNumber() << "\nstatistics";
  for (const double v : {surface.getTwoDArea(), surface.getThreeDArea(), surface.getMinElev(), surface.getMaxElev(),
                         surface.getPerimeterTwoD(), surface.getPerimeterThreeD()}) {
    write(out, v);
  }
  out << '\n';
  for (const SurfacePoint* point : surface.getSurfacePoints()) {
    out << "point " << point->getSurfacePointName();
    for (const double v : {point->getN(), point->getE(), point->getZ()}) write(out, v);
    out << '\n';
  }
  if (const CEType* tin = surface.getCEType()) describeTIN(*tin, out);
}

bool save(DTMSurface& surface, const std::string& path) {
  surface.getCEType();
  std::ofstream text(path + ".txt");
  describe(surface, text);
  return DTMFileOperation().saveSurfaces((path + ".ttin").c_str(), &surface) && text.good();
}

// Points on a curved ground, no two at one position.
void addPoints(DTMSurface& surface, int count) {
  std::vector<SurfacePoint*> points;
  for (int i = 0; i < count; ++i) {
    auto* point = points.emplace_back(new SurfacePoint);
    std::string name = "P";
    point->setSurfacePointName(name.append(std::to_string(i + 1)).c_str());
    point->setE(38'512'300.125 + 7.25 * (i % 40) + 0.001 * i);
    point->setN(3'414'100.5 + 5.75 * (i / 40) - 0.002 * (i % 7));
    point->setZ(0.01 * (i * 37 % 101) - 0.25);
  }
  surface.setSurfacePoints(points);
}

bool saveAll(const std::string& folder) {
  DTMSurface surface;
  surface.setSurfaceName("empty");
  bool saved = save(surface, folder + "/empty");

  surface.setSurfaceName("site");
  addPoints(surface, 500);
  saved = save(surface, folder + "/site") && saved;

  // Numbers that only a broken file or a strange instrument has.
  surface.setSurfaceName("odd");
  surface.getSurfacePoints()[0]->setZ(-0.0);
  surface.getSurfacePoints()[1]->setZ(std::numeric_limits<double>::denorm_min());
  surface.getSurfacePoints()[2]->setZ(-std::numeric_limits<double>::infinity());
  surface.getSurfacePoints()[3]->setZ(std::bit_cast<double>(std::uint64_t{0x7FF8'0000'0000'1234}));
  EList* edges = surface.getCEType()->getEList();
  edges->findByNum(edges, 1)->setRightT(-1);
  edges->findByNum(edges, 2)->setLeftT(std::numeric_limits<int>::min());
  saved = save(surface, folder + "/odd") && saved;
  surface.release();
  return saved;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && saveAll(argv[1])) return 0;
  std::cerr << "usage: write_surfaces FOLDER\n";
  return 1;
}
