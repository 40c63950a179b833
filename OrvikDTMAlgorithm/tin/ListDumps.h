// Text dumps of a TIN's lists, in GBK, for a debug log. Private: the public hooks build them and throw them away.
#pragma once

#include <string>
#include <vector>

inline namespace OrvikDTM {

class ConvexList;
class EList;
class TList;

namespace detail {

// A line for each element between a first and a last one; an edge takes a second line for its triangles.
std::vector<std::string> dumpOf(EList& list);
std::vector<std::string> dumpOf(TList& list);
std::vector<std::string> dumpOf(ConvexList& list);

}  // namespace detail
}  // namespace OrvikDTM
