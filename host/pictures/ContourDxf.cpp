#include "ContourDxf.h"

#include "Svg.h"

namespace pictures {

namespace {

constexpr int kDecimals = 4;
constexpr int kBrown = 32;  // colours by their number in the drawing program's palette
constexpr int kLightBrown = 34;

// A DXF file is pairs of lines: a group code, which says what the value below it is, and the value.
class Dxf {
 public:
  void add(int code, const std::string& value) { text_ += std::to_string(code) + "\n" + value + "\n"; }
  void add(int code, int value) { add(code, std::to_string(value)); }
  void add(int code, double value) {
    std::string number = shortNumber(value, kDecimals);
    if (number.find('.') == std::string::npos) number += ".0";  // a real, not a whole number
    add(code, number);
  }
  void point(double x, double y, double z) {
    add(10, x);
    add(20, y);
    add(30, z);
  }
  void begin(const std::string& section) {
    add(0, std::string("SECTION"));
    add(2, section);
  }
  void end() { add(0, std::string("ENDSEC")); }
  std::string finish() {
    add(0, std::string("EOF"));
    return std::move(text_);
  }

 private:
  std::string text_;
};

void addHeader(Dxf& dxf, const PlanMesh& mesh, const std::vector<Contour>& contours) {
  const Box box = mesh.box();
  const double low = contours.empty() ? 0.0 : contours.front().level;
  const double high = contours.empty() ? 0.0 : contours.back().level;
  dxf.begin("HEADER");
  dxf.add(9, std::string("$ACADVER"));
  dxf.add(1, std::string("AC1009"));
  dxf.add(9, std::string("$EXTMIN"));
  dxf.point(mesh.origin.x + box.minX, mesh.origin.y + box.minY, low);
  dxf.add(9, std::string("$EXTMAX"));
  dxf.point(mesh.origin.x + box.maxX, mesh.origin.y + box.maxY, high);
  dxf.end();
}

void addLayer(Dxf& dxf, const std::string& name, int colour) {
  dxf.add(0, std::string("LAYER"));
  dxf.add(2, name);
  dxf.add(70, 0);
  dxf.add(62, colour);
  dxf.add(6, std::string("CONTINUOUS"));
}

void addTables(Dxf& dxf) {
  dxf.begin("TABLES");
  dxf.add(0, std::string("TABLE"));
  dxf.add(2, std::string("LTYPE"));
  dxf.add(70, 1);
  dxf.add(0, std::string("LTYPE"));
  dxf.add(2, std::string("CONTINUOUS"));
  dxf.add(70, 0);
  dxf.add(3, std::string("Solid line"));
  dxf.add(72, 65);  // alignment "A", the only one there is
  dxf.add(73, 0);
  dxf.add(40, 0.0);
  dxf.add(0, std::string("ENDTAB"));
  dxf.add(0, std::string("TABLE"));
  dxf.add(2, std::string("LAYER"));
  dxf.add(70, 2);
  addLayer(dxf, kContourLayer, kLightBrown);
  addLayer(dxf, kIndexLayer, kBrown);
  dxf.add(0, std::string("ENDTAB"));
  dxf.end();
}

void addPolyline(Dxf& dxf, const PlanMesh& mesh, const ContourLine& line, double level, const char* layer) {
  dxf.add(0, std::string("POLYLINE"));
  dxf.add(8, std::string(layer));
  dxf.add(66, 1);  // vertices follow
  dxf.point(0.0, 0.0, level);
  dxf.add(70, line.closed ? 1 : 0);
  const std::size_t count = line.points.size() - (line.closed ? 1 : 0);
  for (std::size_t i = 0; i < count; ++i) {
    dxf.add(0, std::string("VERTEX"));
    dxf.add(8, std::string(layer));
    dxf.point(mesh.origin.x + line.points[i].x, mesh.origin.y + line.points[i].y, level);
  }
  dxf.add(0, std::string("SEQEND"));
  dxf.add(8, std::string(layer));
}

}  // namespace

std::string contourDxf(const PlanMesh& mesh, const std::vector<Contour>& contours) {
  Dxf dxf;
  addHeader(dxf, mesh, contours);
  addTables(dxf);
  dxf.begin("ENTITIES");
  for (const Contour& contour : contours) {
    for (const ContourLine& line : contour.lines) {
      addPolyline(dxf, mesh, line, contour.level, contour.index ? kIndexLayer : kContourLayer);
    }
  }
  dxf.end();
  return dxf.finish();
}

}  // namespace pictures
