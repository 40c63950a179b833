// Flat functions: the surfaces of the current library, their files and their preview.
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/api/FileKind.h>
#include <OrvikDTMAlgorithm/api/FlatGuard.h>
#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>

inline namespace OrvikDTM {

using detail::guarded;
using detail::handOut;
using detail::withLibrary;
using detail::withSurface;

namespace {

// The lines of one preview, freed when it is over, however it ends.
struct Lines {
  Lines() = default;
  ~Lines() {
    for (const DrawLine* line : list) delete line;
  }
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;

  std::vector<DrawLine*> list;
};

}  // namespace

DTMSurface* addDTMSurface(const char* name) {
  return withLibrary([&](DTMSurfaceLib& library) { return library.addDTMSurface(name); });
}

int deleteDTMSurface(unsigned int index) {
  return withLibrary([&](DTMSurfaceLib& library) { return library.deleteDTMSurface(index); });
}

int releaseDTMSurface(unsigned int index) {
  return withLibrary([&](DTMSurfaceLib& library) { return library.releaseDTMSurface(index); });
}

DTMSurface* getSurface(unsigned int index) {
  return withLibrary([&](const DTMSurfaceLib& library) { return library.getSurface(index); });
}

DTMSurface* loadDTMSurface(const char* path, int kind) {
  return withLibrary([&](DTMSurfaceLib& library) { return library.loadDTMSurface(path, kind); });
}

void getSurfaceByPath(const char* location, const char* type) {
  guarded([&] {
    const int kind = detail::kindOfExtension(type);
    for (const std::string& path : DTMFileOperation().getSurfaceByPath(location, type)) {
      DTMSurface* surface = loadDTMSurface(path.c_str(), kind);
      if (surface != nullptr) handOut(&detail::Callbacks::surface, surface);
    }
  });
}

int saveSurface(unsigned int index, const char* path) {
  return withLibrary([&](DTMSurfaceLib& library) { return library.saveSurface(index, path); });
}

int exportFileSJW(unsigned int index, const char* path) {
  return withLibrary([&](DTMSurfaceLib& library) { return library.exportFileSJW(index, path); });
}

int deleteSurface(const char* path) {
  return guarded([&] { return DTMFileOperation().deleteSurface(path) ? 1 : 0; });
}

int previewDTMSurface(unsigned int index, double minX, double maxX, double minY, double maxY) {
  return withSurface(index, [&](DTMSurface& surface) {
    Lines lines;
    const bool drawn = surface.drawSurface(minX, maxX, minY, maxY, lines.list);
    for (DrawLine* line : lines.list) {
      if (!handOut(&detail::Callbacks::drawLine, line)) break;
    }
    return drawn ? 1 : 0;
  });
}

}  // namespace OrvikDTM
