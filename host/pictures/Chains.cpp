#include "Chains.h"

#include <algorithm>

namespace pictures {

namespace {

// Which segments end at a place: sorted by place, so that those of one place lie side by side.
class Joints {
 public:
  explicit Joints(const std::vector<Segment>& segments) : segments_(segments), used_(segments.size(), false) {
    ends_.reserve(2 * segments.size());
    for (std::size_t i = 0; i < segments.size(); ++i) {
      ends_.push_back({segments[i].from, i});
      ends_.push_back({segments[i].to, i});
    }
    std::sort(ends_.begin(), ends_.end(), [](const End& a, const End& b) {
      return a.place != b.place ? a.place < b.place : a.segment < b.segment;
    });
  }

  bool passesOn(Place place) const {
    const auto [first, last] = endsAt(place);
    return last - first == 2;
  }

  // From `start` along `segment`, and on: through joints of many segments as well, or only while there is one way.
  std::vector<Place> follow(Place start, std::size_t segment, bool throughJoints) {
    std::vector<Place> line{start};
    while (segment < segments_.size()) {
      used_[segment] = true;
      const Segment& s = segments_[segment];
      line.push_back(s.from == line.back() ? s.to : s.from);
      segment = throughJoints || passesOn(line.back()) ? unusedAt(line.back()) : segments_.size();
    }
    return line;
  }

  bool isUsed(std::size_t segment) const { return used_[segment]; }

 private:
  struct End {
    Place place;
    std::size_t segment;
  };
  using Iterator = std::vector<End>::const_iterator;

  std::pair<Iterator, Iterator> endsAt(Place place) const {
    const auto first = std::lower_bound(ends_.begin(), ends_.end(), place,
                                        [](const End& end, Place wanted) { return end.place < wanted; });
    auto last = first;
    while (last != ends_.end() && last->place == place) ++last;
    return {first, last};
  }

  std::size_t unusedAt(Place place) const {
    const auto [first, last] = endsAt(place);
    for (auto end = first; end != last; ++end) {
      if (!used_[end->segment]) return end->segment;
    }
    return segments_.size();
  }

  const std::vector<Segment>& segments_;
  std::vector<bool> used_;
  std::vector<End> ends_;
};

}  // namespace

std::vector<std::vector<Place>> chained(const std::vector<Segment>& segments) {
  std::vector<std::vector<Place>> lines;
  Joints joints(segments);
  for (std::size_t i = 0; i < segments.size(); ++i) {  // lines with ends
    for (const Place end : {segments[i].from, segments[i].to}) {
      if (!joints.isUsed(i) && !joints.passesOn(end)) lines.push_back(joints.follow(end, i, false));
    }
  }
  for (std::size_t i = 0; i < segments.size(); ++i) {  // what is left goes round
    if (!joints.isUsed(i)) lines.push_back(joints.follow(segments[i].from, i, false));
  }
  return lines;
}

std::vector<std::vector<Place>> trails(const std::vector<Segment>& segments) {
  std::vector<std::vector<Place>> lines;
  Joints joints(segments);
  for (std::size_t i = 0; i < segments.size(); ++i) {
    if (!joints.isUsed(i)) lines.push_back(joints.follow(segments[i].from, i, true));
  }
  return lines;
}

}  // namespace pictures
