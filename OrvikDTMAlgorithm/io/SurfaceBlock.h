// Private. A surface as bytes (docs/ttin-format.md): name, statistics, points, TIN, into any sink that hands out room
// for small pieces.
#pragma once

#include <algorithm>
#include <cstddef>

#include <OrvikDTMAlgorithm/io/ByteOrder.h>
#include <OrvikDTMAlgorithm/io/NameField.h>
#include <OrvikDTMAlgorithm/io/TINBlock.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>

inline namespace OrvikDTM {
namespace detail {

// Where the numbers of the block's beginning, and of a point's record, are.
struct SurfaceBlock {
  static constexpr std::size_t kPointCountOffset = kNameFieldBytes;
  static constexpr std::size_t kTriangleCountOffset = kPointCountOffset + kInt32Bytes;
  static constexpr std::size_t kStatisticsOffset = kTriangleCountOffset + kInt32Bytes;
  static constexpr std::size_t kStatistics = 6;
  static constexpr std::size_t kHeadBytes = kStatisticsOffset + kStatistics * kDoubleBytes;

  static constexpr std::size_t kNorthingOffset = kNameFieldBytes;
  static constexpr std::size_t kEastingOffset = kNorthingOffset + kDoubleBytes;
  static constexpr std::size_t kElevationOffset = kEastingOffset + kDoubleBytes;
  static constexpr std::size_t kPointBytes = kElevationOffset + kDoubleBytes;
};

// A list may hold null entries; they are no points.
inline std::size_t recordsIn(const std::vector<SurfacePoint*>& points) {
  return points.size() - static_cast<std::size_t>(std::count(points.begin(), points.end(), nullptr));
}

// How many bytes a surface takes; `tin` is the surface's, and may be null.
inline std::size_t surfaceBytes(const DTMSurface& surface, const CEType* tin) {
  return SurfaceBlock::kHeadBytes + SurfaceBlock::kPointBytes * recordsIn(surface.getSurfacePoints()) +
         (tin == nullptr ? 0 : TINBlock::of(*tin).size());
}

inline void writeHead(unsigned char* head, const DTMSurface& surface, std::size_t points, const NameField& names) {
  names.write(head, surface.getSurfaceName());
  writeInt32(head + SurfaceBlock::kPointCountOffset, static_cast<std::int32_t>(points));
  writeInt32(head + SurfaceBlock::kTriangleCountOffset, surface.getTrianglesNumber());
  unsigned char* next = head + SurfaceBlock::kStatisticsOffset;
  for (const double v : {surface.getTwoDArea(), surface.getThreeDArea(), surface.getMinElev(), surface.getMaxElev(),
                         surface.getPerimeterTwoD(), surface.getPerimeterThreeD()}) {
    writeDouble(next, v);
    next += kDoubleBytes;
  }
}

inline void writePoint(unsigned char* record, const SurfacePoint& point, const NameField& names) {
  names.write(record, point.getSurfacePointName());
  writeDouble(record + SurfaceBlock::kNorthingOffset, point.getN());
  writeDouble(record + SurfaceBlock::kEastingOffset, point.getE());
  writeDouble(record + SurfaceBlock::kElevationOffset, point.getZ());
}

// `tin` is the surface's, and may be null.
template <typename Sink>
void writeSurface(const DTMSurface& surface, const CEType* tin, Sink& sink) {
  const NameField names;
  const std::vector<SurfacePoint*>& points = surface.getSurfacePoints();
  writeHead(sink.claim(SurfaceBlock::kHeadBytes), surface, recordsIn(points), names);
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i + kPrefetchAhead < points.size()) prefetch(points[i + kPrefetchAhead]);
    if (points[i] != nullptr) writePoint(sink.claim(SurfaceBlock::kPointBytes), *points[i], names);
  }
  if (tin != nullptr) writeTIN(*tin, sink);
}

}  // namespace detail
}  // namespace OrvikDTM
