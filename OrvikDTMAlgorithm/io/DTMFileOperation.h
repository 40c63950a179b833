// Files that are not a surface's own business: surface files and folders of them, boundary files, volume reports.
// Paths are zero-terminated texts in the system's code page; a null path fails like one that cannot be opened.
#pragma once

#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

class DTMSurface;
class FillCutResult;
struct RangePoint;

class ORVIKDTM_API DTMFileOperation {
 public:
  DTMFileOperation() = default;

  // Writes `surface` to a ".ttin" file (docs/ttin-format.md). The file is written beside its target and renamed over it
  // when complete, so the target is always the old file or the new one; in a folder that allows no new file the target
  // is written in place. False for a null surface and when the file cannot be written whole: it cannot be opened, the
  // disk is full, a limit of the process is reached, or it cannot be renamed. No signal is raised by that.
  bool saveSurfaces(const char* path, DTMSurface* surface);

  // Fills `surface` from a file: type 0 is ".ttin", 1 ".sjw", 2 LandXML ".xml"; the extension must fit. Blanks
  // ahead of a ".ttin" path are not part of it; one behind it is, so the extension does not fit. False when the file is
  // not such a file or holds no points (types 1 and 2); of a ".ttin" file the surface is then as it was. A ".ttin" file
  // without points changes nothing of a surface that has some. Type 2 throws std::out_of_range as
  // DTMSurface::tryParseLandXML.
  bool loadSurface(const char* path, int type, DTMSurface* surface);

  // The files in `folder` whose names end in `extension`, in the order in which the system lists them, each as the
  // folder, a backslash and the name (which every function of this library opens on every platform). Folders are listed
  // too; pipes and devices, which might keep whoever opens them waiting, are not.
  std::vector<std::string> getSurfaceByPath(const char* folder, const char* extension);

  // Removes a file; true also when there is none.
  bool deleteSurface(const char* path);

  // Reads a boundary file (".waa" or ".csv", any case): two switches, then a vertex a line (name, northing, easting and
  // perhaps elevation). The records in `out` are released first; the new ones, made with `new`, are the caller's. False
  // for another extension and when memory runs out, with `out` untouched, and for a file that cannot be read.
  bool loadRangePointFile(const char* path, bool* first, bool* second, std::vector<RangePoint*>& out);

  // Writes one, with coordinates of six significant digits. False when it cannot be written whole.
  bool saveRangePointFile(const char* path, bool first, bool second, const std::vector<RangePoint*>& points);

  // Writes a volume report of `result` on `surface`, measured against a level or against the surface named `refName`,
  // to `path`: form 0 is a page of HTML in UTF-8, form 1 a text in the bytes that it is given. `labels` holds all
  // wording, twelve texts separated by commas: title, surface name, level or reference, volumes, cut volume, fill
  // volume, 2D area, 3D area, 2D perimeter, 3D perimeter, cut areas, fill areas; absent ones are empty. A `refName`
  // goes into the report as it is: for the page it is UTF-8 already. Infinities of the page are U+221E in UTF-8.
  // False, and the earlier file stays, for another form, when something is null and when the file cannot be written
  // whole.
  bool exportVolumeReport(const FillCutResult* result, const DTMSurface* surface, int form, double elevation,
                          const char* labels, const char* path);
  bool exportVolumeReport(const FillCutResult* result, const DTMSurface* surface, int form, const char* refName,
                          const char* labels, const char* path);

  // The two forms by themselves.
  bool exportVolumeHtmlReport(const FillCutResult* result, const DTMSurface* surface, double elevation,
                              const char* labels, const char* path);
  bool exportVolumeHtmlReport(const FillCutResult* result, const DTMSurface* surface, const char* refName,
                              const char* labels, const char* path);
  bool exportVolumeTxtReport(const FillCutResult* result, const DTMSurface* surface, double elevation,
                             const char* labels, const char* path);
  bool exportVolumeTxtReport(const FillCutResult* result, const DTMSurface* surface, const char* refName,
                             const char* labels, const char* path);

 private:
  static bool loadSurfaceFile(const char* path, DTMSurface& surface);
};

}  // namespace OrvikDTM
