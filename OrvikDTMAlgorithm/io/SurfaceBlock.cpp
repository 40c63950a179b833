// A surface to bytes and back.
#include <cstring>
#include <memory>

#include <OrvikDTMAlgorithm/io/ByteReader.h>
#include <OrvikDTMAlgorithm/io/ByteVector.h>
#include <OrvikDTMAlgorithm/io/SurfaceBlock.h>

inline namespace OrvikDTM {
namespace {

using detail::SurfaceBlock;

// The version of the format that holds a TIN behind the points.
constexpr int kVersionWithTIN = 1;

// Records that nobody owns yet.
class NewPoints {
 public:
  explicit NewPoints(std::size_t count) { points_.reserve(count); }
  ~NewPoints() {
    for (const SurfacePoint* point : points_) delete point;
  }
  NewPoints(const NewPoints&) = delete;
  NewPoints& operator=(const NewPoints&) = delete;

  SurfacePoint& add(const SurfacePoint& point) { return *points_.emplace_back(new SurfacePoint(point)); }

  void handOverTo(std::vector<SurfacePoint*>& owner) {
    owner = std::move(points_);
    points_.clear();
  }

 private:
  std::vector<SurfacePoint*> points_;
};

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
  std::unique_ptr<CEType> tin;
  if (replacesTIN) tin = detail::readTIN(reader);

  if (!replacesTIN) keepPromise();  // something of the promised TIN stays: itself, or its extent
  std::memcpy(surfaceName, name, kNameSize);
  readStatistics(head + SurfaceBlock::kTriangleCountOffset);
  if (replacesTIN || replacesPoints)
    dropModel();  // also one that version 1 does not replace: it is that of other points
  if (replacesPoints) {
    points.handOverTo(surfacePoints);
    pointsNumber = count;
    arrayBegin = nullptr;
    arrayEnd = nullptr;
  }
  if (replacesTIN) {
    ceType = tin.release();
    refreshExtent();
  }
  return fits;
}

void DTMSurface::readStatistics(const unsigned char* bytes) {
  statistics.trianglesNumber = detail::readInt32(bytes);
  bytes += detail::kInt32Bytes;
  for (double* v : {&statistics.twoDArea, &statistics.threeDArea, &statistics.minElev, &statistics.maxElev,
                    &statistics.perimeterTwoD, &statistics.perimeterThreeD}) {
    *v = detail::readDouble(bytes);
    bytes += detail::kDoubleBytes;
  }
}

}  // namespace OrvikDTM
