// The names of a fill/cut result.
#include <OrvikDTMAlgorithm/surface/FillCutResult.h>
#include <OrvikDTMAlgorithm/surface/Name.h>
#include <OrvikDTMAlgorithm/surface/RecordLayout.h>  // its assertions on the layout of the records

inline namespace OrvikDTM {

void FillCutResult::setSurfaceName(const char* name) { copyName(surfaceName, name); }

void FillCutResult::setRefSurfaceName(const char* name) { copyName(refSurfaceName, name); }

}  // namespace OrvikDTM
