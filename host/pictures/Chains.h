// Segments joined to lines at the places that they share. A line ends where three or more segments meet, or where one
// stands alone, so lines have nothing in common but their ends, and every segment is in exactly one line.
#pragma once

#include <cstdint>
#include <vector>

namespace pictures {

// A place by any number that tells it from others.
using Place = std::uint64_t;

struct Segment {
  Place from;
  Place to;
};

// The lines through `segments`, each given once; one that closes begins and ends at the same place.
std::vector<std::vector<Place>> chained(const std::vector<Segment>& segments);

// The same in few long lines, which pass through joints and may cross and touch themselves and others.
std::vector<std::vector<Place>> trails(const std::vector<Segment>& segments);

}  // namespace pictures
