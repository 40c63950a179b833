// Surface files: a header of five bytes and the surface behind it. Files of other kinds are loaded by their own
// readers.
#include <cstdint>
#include <cstring>
#include <exception>

#include <OrvikDTMAlgorithm/io/ByteReader.h>
#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/io/SurfaceBlock.h>
#include <OrvikDTMAlgorithm/platform/FileSink.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/U.h>

inline namespace OrvikDTM {
namespace {

enum FileType : int { kSurfaceFile = 0, kTriangleFile = 1, kLandXML = 2 };

constexpr std::string_view kMagic = "DTM";
constexpr std::uint16_t kVersion = 1;
constexpr std::size_t kHeaderBytes = kMagic.size() + sizeof kVersion;

void writeHeader(unsigned char* header) {
  std::memcpy(header, kMagic.data(), kMagic.size());
  detail::writeWord(header + kMagic.size(), kVersion);
}

bool hasPoints(const DTMSurface& surface) { return surface.getPointsNumber() > 0; }

}  // namespace

bool DTMFileOperation::saveSurfaces(const char* path, DTMSurface* surface) {
  if (path == nullptr || surface == nullptr) return false;
  const CEType* tin = surface->getCEType();  // before the file is touched: this may need much memory
  const std::size_t size = kHeaderBytes + detail::surfaceBytes(*surface, tin);
  return detail::writeBinaryFile(path, size, [surface, tin](detail::FileSink& sink) {
    writeHeader(sink.claim(kHeaderBytes));
    detail::writeSurface(*surface, tin, sink);
  });
}

// The first bytes are not compared: what follows them tells whether it is a surface.
bool DTMFileOperation::loadSurfaceFile(const char* path, DTMSurface& surface) {
  try {
    detail::Bytes contents;
    if (!detail::readWholeFile(U::trim(path).c_str(), contents)) return false;
    detail::ByteReader reader(contents);
    const unsigned char* header = reader.take(kHeaderBytes);
    if (header == nullptr) return false;
    const int version = detail::readWord<std::uint16_t>(header + kMagic.size());
    return surface.parse(reader, version, DTMSurface::WithoutPoints::kChangeNothing);
  } catch (const std::exception&) {
    return false;  // out of memory
  }
}

bool DTMFileOperation::loadSurface(const char* path, int type, DTMSurface* surface) {
  if (path == nullptr || surface == nullptr) return false;
  switch (type) {
    case kSurfaceFile:
      return U::endsWith(path, ".ttin") && loadSurfaceFile(path, *surface);
    case kTriangleFile:
      return U::endsWith(path, ".sjw") && surface->tryParseSJW(path) && hasPoints(*surface);
    case kLandXML:
      return U::endsWith(path, ".xml") && surface->tryParseLandXML(path) && hasPoints(*surface);
    default:
      return false;
  }
}

}  // namespace OrvikDTM
