// Private. The few fixed texts of the library that are not ASCII. Hosts expect them in GBK whatever the system's code
// page is, so they are kept as bytes; the meaning of each stands beside it.
#pragma once

inline namespace OrvikDTM {
namespace detail::gbk {

inline constexpr const char* kInfinity = "\xA1\xDE";         // the infinity sign
inline constexpr const char* kWeekday = "\xD0\xC7\xC6\xDA";  // "weekday"

// Words of the debug dumps of a TIN's lists, in the order in which a dump puts them around its numbers.
inline constexpr const char* kOrdinal = "\xB5\xDA";                                     // "number ..."
inline constexpr const char* kEdgeStart = "\xCC\xF5\xB1\xDF(\xC6\xF0\xB5\xE3\xA3\xBA";  // "edge (start:"
inline constexpr const char* kEdgeEnd = "(\xD6\xD5\xB5\xE3\xA3\xBA";                    // "(end:"
inline constexpr const char* kEdgeAngle = "(\xBC\xD0\xBD\xC7\xA3\xBA";                  // "(angle:"
inline constexpr const char* kEdgeTriangles =                                           // "edge's left and right
    "\xCC\xF5\xB1\xDF\xD7\xF3\xD3\xD2\xC8\xFD\xBD\xC7\xD0\xCE\xA3\xBA";                 //  triangles:"
inline constexpr const char* kTriangleEdges =                                           // "triangle's edges:"
    "\xB8\xF6\xC8\xFD\xBD\xC7\xD0\xCE\xB6\xD4\xD3\xA6\xB1\xDF\xA3\xBA";
inline constexpr const char* kHullOrdinal = "\xCD\xB9\xBF\xC7\xB5\xDA";                       // "hull number ..."
inline constexpr const char* kHullEdge = "\xCC\xF5\xB1\xDF\xB6\xD4\xD3\xA6\xB1\xE0\xBA\xC5";  // "edge's number"

}  // namespace detail::gbk
}  // namespace OrvikDTM
