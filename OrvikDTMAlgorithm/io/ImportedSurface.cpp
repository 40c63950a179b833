// What a surface makes of a TIN that was read from a triangle file: its name, its statistics and its points.
#include <charconv>
#include <memory>
#include <string_view>
#include <utility>

#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/SurfacePoint.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>

inline namespace OrvikDTM {
namespace {

// The last component of a path without its extension. Hosts join folders and names with a backslash, so "/" separates
// only where there is none.
std::string_view nameWithoutFolder(std::string_view path) {
  std::size_t separator = detail::lastBackslash(path);
  if (separator == std::string_view::npos) separator = path.rfind('/');
  if (separator != std::string_view::npos) path.remove_prefix(separator + 1);
  const std::size_t dot = path.rfind('.');
  const bool hasExtension = dot != std::string_view::npos && dot > 0;
  return hasExtension ? path.substr(0, dot) : path;
}

void setCountedName(SurfacePoint& point, int number) {
  char name[kNameSize] = {};
  std::to_chars(name, name + kNameSize, number);
  point.setSurfacePointName(name);
}

// Records that nobody else owns yet.
class NewRecords {
 public:
  NewRecords() = default;
  ~NewRecords() {
    for (const SurfacePoint* record : records_) delete record;
  }
  NewRecords(const NewRecords&) = delete;
  NewRecords& operator=(const NewRecords&) = delete;

  void reserve(std::size_t count) { records_.reserve(count); }
  void add(const SurfacePoint& point) { records_.push_back(new SurfacePoint(point)); }
  std::vector<SurfacePoint*> take() { return std::exchange(records_, {}); }
  bool areThere() const { return !records_.empty(); }

 private:
  std::vector<SurfacePoint*> records_;
};

// One record for every point of the TIN, named by its number, counted from 0.
void makeRecords(const CEType& model, const char* surfaceName, NewRecords& records) {
  const std::vector<TPoint*> points = model.getOriginalList();
  records.reserve(points.size());
  SurfacePoint record;
  record.setSurfaceName(surfaceName);
  int number = 0;
  for (const TPoint* point : points) {
    setCountedName(record, number++);
    record.setN(point->getY());
    record.setE(point->getX());
    record.setZ(point->getZ());
    records.add(record);
  }
}

}  // namespace

// The records that the surface had are not released: they may be in use elsewhere.
bool DTMSurface::adoptImport(CEType* model, const char* path) {
  std::unique_ptr<CEType> imported(model);
  if (imported == nullptr) return false;
  char name[kNameSize];
  copyName(name, nameWithoutFolder(path));
  NewRecords records;
  makeRecords(*imported, name, records);

  dropModel();
  ceType = imported.release();
  copyName(surfaceName, name);
  if (records.areThere()) {
    surfacePoints = records.take();
    pointsNumber = getPointsNumber();
    arrayBegin = nullptr;
    arrayEnd = nullptr;
  }
  refreshStatistics();
  return true;
}

}  // namespace OrvikDTM
