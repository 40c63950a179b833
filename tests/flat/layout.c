/* The records as a C compiler lays them out: the same numbers that surface/RecordLayout.h asserts for the classes. */
#include <stddef.h>

#include <OrvikDTMAlgorithm/api/orvikdtm.h>

#define AT(record, field, offset) _Static_assert(offsetof(record, field) == (offset), #record "." #field)

_Static_assert(sizeof(bool) == 1, "bool");

_Static_assert(sizeof(SurfacePoint) == 72, "SurfacePoint");
AT(SurfacePoint, surfaceName, 0);
AT(SurfacePoint, pointName, 24);
AT(SurfacePoint, n, 48);
AT(SurfacePoint, e, 56);
AT(SurfacePoint, z, 64);

_Static_assert(sizeof(RangePoint) == 48, "RangePoint");
AT(RangePoint, name, 0);
AT(RangePoint, n, 24);
AT(RangePoint, e, 32);
AT(RangePoint, z, 40);

_Static_assert(sizeof(FillCutResult) == 160, "FillCutResult");
AT(FillCutResult, fillPerimeterTwoD, 0);
AT(FillCutResult, fillPerimeterThreeD, 8);
AT(FillCutResult, cutPerimeterTwoD, 16);
AT(FillCutResult, cutPerimeterThreeD, 24);
AT(FillCutResult, fillTwoDArea, 32);
AT(FillCutResult, fillThreeDArea, 40);
AT(FillCutResult, cutTwoDArea, 48);
AT(FillCutResult, cutThreeDArea, 56);
AT(FillCutResult, fillVolume, 64);
AT(FillCutResult, cutVolume, 72);
AT(FillCutResult, surfaceName, 80);
AT(FillCutResult, twoDArea, 104);
AT(FillCutResult, threeDArea, 112);
AT(FillCutResult, perimeterTwoD, 120);
AT(FillCutResult, perimeterThreeD, 128);
AT(FillCutResult, refSurfaceName, 136);

_Static_assert(sizeof(DrawLine) == 40, "DrawLine");
AT(DrawLine, startX, 0);
AT(DrawLine, startY, 8);
AT(DrawLine, endX, 16);
AT(DrawLine, endY, 24);
AT(DrawLine, flag, 32);
