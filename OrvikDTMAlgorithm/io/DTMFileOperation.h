// Files that are not a surface's own business: volume reports (and, as they land, surface files and boundary files).
// Paths are zero-terminated texts in the system's code page; a null path fails like one that cannot be opened.
#pragma once

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

class DTMSurface;
class FillCutResult;

class ORVIKDTM_API DTMFileOperation {
 public:
  DTMFileOperation() = default;

  // Writes a volume report of `result` on `surface`, measured against a level or against the surface named `refName`,
  // to `path`: form 0 is a page of HTML in UTF-8, form 1 a text in the bytes that it is given. `labels` holds all
  // wording, twelve texts separated by commas: title, surface name, level or reference, volumes, cut volume, fill
  // volume, 2D area, 3D area, 2D perimeter, 3D perimeter, cut areas, fill areas; absent ones are empty. True once the
  // file was opened for writing (a disk that is full by then is not reported); false, with nothing written, for another
  // form or when something is null or the file cannot be opened.
  bool exportVolumeReport(const FillCutResult* result, const DTMSurface* surface, int form, double elevation,
                          const char* labels, const char* path);
  bool exportVolumeReport(const FillCutResult* result, const DTMSurface* surface, int form, const char* refName,
                          const char* labels, const char* path);
};

}  // namespace OrvikDTM
