# The headers that are installed: these, and no others. A header that is not named here is private, so none leaks by
# being forgotten; a public one that is forgotten breaks the test that compiles every installed header by itself.
set(ORVIKDTM_PUBLIC_HEADERS
  Export.h
  FloatingPoint.h
  OrvikDTMAlgorithm.h
  io/DTMFileOperation.h
  report/U.h
  surface/DTMSurface.h
  surface/DrawLine.h
  surface/FillCutResult.h
  surface/NameSize.h
  surface/RangePoint.h
  surface/SurfacePoint.h
  tin/CEType.h
  tin/ConvexList.h
  tin/EList.h
  tin/PList.h
  tin/SLType.h
  tin/Surface.h
  tin/TConvex.h
  tin/TEdge.h
  tin/TList.h
  tin/TPoint.h
  tin/Triangle.h
  tin/Triangle3.h
  tin/verifyTIN.h)
