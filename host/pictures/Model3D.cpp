#include "Model3D.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_map>

#include "DepthBands.h"
#include "Svg.h"
#include "Triangles.h"

namespace pictures {

namespace {

constexpr std::size_t kMostTriangles = 60000;
constexpr std::size_t kMostPoints = 65535;  // their numbers have 16 bits
constexpr double kRaster16 = 65535.0;
constexpr std::size_t kColours = 2 * kBands + 1;

struct Face {
  std::array<std::uint32_t, 3> corners;
  std::size_t colour;
};

struct FaceMesh {
  std::vector<Point> points;
  std::vector<Face> faces;
};

std::size_t colourOf(const Band& band) {
  if (band.side == Side::Same) return 2 * kBands;
  return static_cast<std::size_t>(band.depth) + (band.side == Side::Cut ? 0 : kBands);
}

const char* colourText(std::size_t colour) {
  if (colour == 2 * kBands) return kSameColour;
  return colour < kBands ? cutColour(static_cast<int>(colour)) : fillColour(static_cast<int>(colour) - kBands);
}

struct ByPosition {
  std::size_t operator()(const std::array<double, 3>& p) const {
    const std::hash<double> hash;
    constexpr std::size_t kMix = 1000003;
    return (hash(p[0]) * kMix ^ hash(p[1])) * kMix ^ hash(p[2]);
  }
};

FaceMesh colouredGround(const Pieces& pieces) {
  FaceMesh mesh;
  std::unordered_map<std::array<double, 3>, std::uint32_t, ByPosition> numbers;
  const auto numberOf = [&](const DifferencePoint& p) {
    const auto [place, isNew] = numbers.try_emplace({p.x, p.y, p.z}, static_cast<std::uint32_t>(mesh.points.size()));
    if (isNew) mesh.points.push_back({p.x, p.y, p.z});
    return place->second;
  };
  forEachBandPart(pieces, bandStep(pieces), [&](const Band& band, Loop& part) {
    for (const auto& [a, b, c] : trianglesOf(part)) {
      mesh.faces.push_back({{numberOf(a), numberOf(b), numberOf(c)}, colourOf(band)});
    }
  });
  return mesh;
}

FaceMesh facesOf(const PlanMesh& surface) {
  FaceMesh mesh;
  mesh.points = surface.points;
  for (const auto& triangle : surface.triangles) mesh.faces.push_back({triangle, 0});
  return mesh;
}

struct Extent {
  Box box = Box::none();
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  void add(const std::vector<Point>& points) {
    for (const Point& p : points) {
      box.add(p.x, p.y);
      low = std::min(low, p.z);
      high = std::max(high, p.z);
    }
  }
};

bool fits(const FaceMesh& mesh) { return mesh.faces.size() <= kMostTriangles && mesh.points.size() <= kMostPoints; }

// All points of a square cell become the one nearest to its middle.
FaceMesh thinnedBy(const FaceMesh& mesh, const Box& box, double side) {
  struct Nearest {
    std::uint32_t point;
    double distance;
  };
  const auto columns = static_cast<std::uint64_t>(box.width() / side) + 1;
  const auto cellOf = [&](const Point& p) {
    return static_cast<std::uint64_t>((p.y - box.minY) / side) * columns +
           static_cast<std::uint64_t>((p.x - box.minX) / side);
  };
  std::unordered_map<std::uint64_t, Nearest> cells;
  for (std::uint32_t i = 0; i < mesh.points.size(); ++i) {
    const double x = (mesh.points[i].x - box.minX) / side;
    const double y = (mesh.points[i].y - box.minY) / side;
    const double distance = std::hypot(x - std::floor(x) - 0.5, y - std::floor(y) - 0.5);
    const auto [cell, isNew] = cells.try_emplace(cellOf(mesh.points[i]), Nearest{i, distance});
    if (!isNew && distance < cell->second.distance) cell->second = {i, distance};
  }
  FaceMesh thin;
  std::unordered_map<std::uint32_t, std::uint32_t> numbers;
  for (const Face& face : mesh.faces) {
    Face kept{{}, face.colour};
    for (std::size_t i = 0; i < 3; ++i) {
      const std::uint32_t point = cells.at(cellOf(mesh.points[face.corners[i]])).point;
      kept.corners[i] = point;
    }
    const auto& [a, b, c] = kept.corners;
    if (a == b || b == c || c == a) continue;
    for (std::uint32_t& corner : kept.corners) {
      const auto [place, isNew] = numbers.try_emplace(corner, static_cast<std::uint32_t>(thin.points.size()));
      if (isNew) thin.points.push_back(mesh.points[corner]);
      corner = place->second;
    }
    thin.faces.push_back(kept);
  }
  return thin;
}

FaceMesh thinned(FaceMesh mesh, const Box& box) {
  constexpr double kCells = 30000.0;  // a cell leaves two triangles or so
  constexpr double kGrowth = 1.25;
  double side = std::max(std::sqrt(box.width() * box.height() / kCells), std::max(box.width(), box.height()) / kCells);
  while (!fits(mesh)) {
    mesh = thinnedBy(mesh, box, side);
    side *= kGrowth;
  }
  return mesh;
}

void append16(std::string& bytes, std::uint32_t v) {
  constexpr std::uint32_t kByte = 0xFFU;
  bytes += static_cast<char>(v & kByte);
  bytes += static_cast<char>(v >> 8U & kByte);
}

std::string positionsText(const std::vector<Point>& points, const Extent& extent) {
  std::string bytes;
  const auto append = [&](double v, double low, double size) {
    const double share = size > 0.0 ? std::clamp((v - low) / size, 0.0, 1.0) : 0.0;
    append16(bytes, static_cast<std::uint32_t>(std::lround(share * kRaster16)));
  };
  for (const Point& p : points) {
    append(p.x, extent.box.minX, extent.box.width());
    append(p.y, extent.box.minY, extent.box.height());
    append(p.z, extent.low, extent.high - extent.low);
  }
  return base64(bytes);
}

std::string trianglesText(const FaceMesh& mesh, std::size_t colour) {
  std::string bytes;
  for (const Face& face : mesh.faces) {
    if (face.colour != colour) continue;
    for (const std::uint32_t corner : face.corners) append16(bytes, corner);
  }
  return base64(bytes);
}

// The other surface, or a rectangle in the level.
FaceMesh referenceOf(const FillCutScene& scene, const Box& ground) {
  if (!scene.reference.triangles.empty()) return facesOf(scene.reference);
  const double z = scene.level;
  return {{{ground.minX, ground.minY, z},
           {ground.maxX, ground.minY, z},
           {ground.maxX, ground.maxY, z},
           {ground.minX, ground.maxY, z}},
          {{{0, 1, 2}, 0}, {{0, 2, 3}, 0}}};
}

}  // namespace

std::string base64(const std::string& bytes) {
  constexpr const char* kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t three = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      three = three << 8U | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      const bool isFiller = i + k > bytes.size();
      text += isFiller ? '=' : kDigits[three >> (18U - 6U * k) & 0x3FU];
    }
  }
  return text;
}

std::string modelOf(const FillCutScene& scene) {
  constexpr int kDecimals = 6;
  FaceMesh ground = colouredGround(scene.pieces);
  Extent extent;
  extent.add(ground.points);
  if (ground.points.empty()) extent.add(scene.ground.points);
  FaceMesh reference = referenceOf(scene, extent.box);
  extent.add(reference.points);
  ground = thinned(std::move(ground), extent.box);
  reference = thinned(std::move(reference), extent.box);

  std::string text = "{\"extent\":[";
  text += joined({shortNumber(extent.box.width(), kDecimals), ",", shortNumber(extent.box.height(), kDecimals), ",",
                  shortNumber(extent.high - extent.low, kDecimals), "],\"ground\":{\"positions\":\"",
                  positionsText(ground.points, extent), "\",\"faces\":["});
  bool first = true;
  for (std::size_t colour = 0; colour < kColours; ++colour) {
    const std::string triangles = trianglesText(ground, colour);
    if (triangles.empty()) continue;
    text += joined({first ? "" : ",", "{\"colour\":\"", colourText(colour), "\",\"triangles\":\"", triangles, "\"}"});
    first = false;
  }
  text += joined({"]},\"reference\":{\"positions\":\"", positionsText(reference.points, extent), "\",\"triangles\":\"",
                  trianglesText(reference, 0), "\"}}"});
  return text;
}

}  // namespace pictures
