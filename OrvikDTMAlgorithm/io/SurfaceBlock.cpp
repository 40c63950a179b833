// A surface to bytes and back.
#include <memory>

#include <OrvikDTMAlgorithm/io/ByteReader.h>
#include <OrvikDTMAlgorithm/io/ByteVector.h>
#include <OrvikDTMAlgorithm/io/SurfaceBlock.h>
#include <OrvikDTMAlgorithm/tin/NewObjects.h>

inline namespace OrvikDTM {
namespace {

using detail::SurfaceBlock;

// The version of the format that holds a TIN behind the points.
constexpr int kVersionWithTIN = 1;

using NewPoints = detail::NewObjects<SurfacePoint>;

void readPoints(detail::RecordReader records, std::size_t count, const char* surfaceName,
                const detail::NameField& names, NewPoints& points) {
  SurfacePoint point;
  point.setSurfaceName(surfaceName);
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned char* record = records.next();
    char name[kNameSize];
    names.read(name, record);
    point.setSurfacePointName(name);
    point.setN(detail::readDouble(record + SurfaceBlock::kNorthingOffset));
    point.setE(detail::readDouble(record + SurfaceBlock::kEastingOffset));
    point.setZ(detail::readDouble(record + SurfaceBlock::kElevationOffset));
    points.add(point);
  }
}

}  // namespace

std::vector<unsigned char> DTMSurface::toBytes() {
  const CEType* tin = getCEType();
  detail::ByteVector bytes(detail::surfaceBytes(*this, tin));
  detail::writeSurface(*this, tin, bytes);
  return bytes.take();
}

bool DTMSurface::tryParse(const unsigned char* block, int version, int length) {
  if (block == nullptr || length <= 0) return false;
  detail::ByteReader reader(block, static_cast<std::size_t>(length));
  return parse(reader, version, WithoutPoints::kTakeHead);
}

// Everything is read before anything changes.
bool DTMSurface::parse(detail::ByteReader& reader, int version, WithoutPoints withoutPoints) {
  const unsigned char* head = reader.take(SurfaceBlock::kHeadBytes);
  if (head == nullptr) return false;
  const std::int32_t count = detail::readInt32(head + SurfaceBlock::kPointCountOffset);
  const auto records = reader.takeRecords(count, SurfaceBlock::kPointBytes);
  const bool fits = records.has_value();
  const bool replacesPoints = fits && (count > 0 || surfacePoints.empty());
  if (!replacesPoints && withoutPoints == WithoutPoints::kChangeNothing) return fits;

  const detail::NameField names;
  char name[kNameSize];
  names.read(name, head);
  NewPoints points(replacesPoints ? static_cast<std::size_t>(count) : 0);
  if (replacesPoints) readPoints(*records, static_cast<std::size_t>(count), name, names, points);
  const bool replacesTIN = fits && version == kVersionWithTIN;
  if (!replacesTIN) keepPromise();  // something of the promised TIN stays: itself, or its extent
  Statistics figures = statistics;  // the extent may stay
  readStatistics(head + SurfaceBlock::kTriangleCountOffset, figures);
  std::unique_ptr<CEType> tin;
  if (replacesTIN) {
    tin = detail::readTIN(reader);
    figures.setExtentOf(tin.get());
  }

  // Without a TIN in the block, the present one is that of other points.
  if (replacesTIN || replacesPoints) dropModel();
  copyName(surfaceName, name);
  statistics = figures;
  if (replacesPoints) {
    surfacePoints = points.take();
    pointsNumber = count;
    arrayBegin = nullptr;
    arrayEnd = nullptr;
  }
  if (replacesTIN) ceType = tin.release();
  return fits;
}

void DTMSurface::readStatistics(const unsigned char* bytes, Statistics& figures) {
  figures.trianglesNumber = detail::readInt32(bytes);
  bytes += detail::kInt32Bytes;
  for (double* v : {&figures.twoDArea, &figures.threeDArea, &figures.minElev, &figures.maxElev, &figures.perimeterTwoD,
                    &figures.perimeterThreeD}) {
    *v = detail::readDouble(bytes);
    bytes += detail::kDoubleBytes;
  }
}

}  // namespace OrvikDTM
