// Private. The three lists of a TIN as bytes (docs/ttin-format.md): how many they are, writing them into any sink that
// hands out room for small pieces, and reading them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>

#include <OrvikDTMAlgorithm/io/ByteOrder.h>
#include <OrvikDTMAlgorithm/io/ByteReader.h>
#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/ListElements.h>
#include <OrvikDTMAlgorithm/tin/Prefetch.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>

inline namespace OrvikDTM {
namespace detail {

// The lengths of the three lists, which open the block, and where in a record its numbers are.
struct TINBlock {
  int hull = 0;
  int edges = 0;
  int triangles = 0;

  static constexpr std::size_t kCountBytes = 3 * kInt32Bytes;
  static constexpr std::size_t kHullBytes = kInt32Bytes;
  static constexpr std::size_t kStartOffset = 2 * kInt32Bytes;
  static constexpr std::size_t kPointBytes = 3 * kDoubleBytes;
  static constexpr std::size_t kEndOffset = kStartOffset + kPointBytes;
  static constexpr std::size_t kEdgeBytes = kEndOffset + kPointBytes;
  static constexpr std::size_t kTriangleBytes = 3 * kInt32Bytes;

  static TINBlock of(const CEType& tin) {
    const auto lengthOf = [](const SLType* list) { return list == nullptr ? 0 : list->getListLen(); };
    return {lengthOf(tin.getCList()), lengthOf(tin.getEList()), lengthOf(tin.getTList())};
  }

  std::size_t size() const {
    return kCountBytes + kHullBytes * static_cast<std::size_t>(hull) + kEdgeBytes * static_cast<std::size_t>(edges) +
           kTriangleBytes * static_cast<std::size_t>(triangles);
  }
};

// A point that is missing has no coordinates: it keeps its place as three NaN, which no figure counts.
inline void writePoint(unsigned char* to, const TPoint* point) {
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  writeDouble(to, point == nullptr ? kNone : point->getX());
  writeDouble(to + kDoubleBytes, point == nullptr ? kNone : point->getY());
  writeDouble(to + 2 * kDoubleBytes, point == nullptr ? kNone : point->getZ());
}

inline void writeEdge(unsigned char* to, const TEdge* edge) {
  writeInt32(to, edge == nullptr ? 0 : edge->getLeftT());
  writeInt32(to + kInt32Bytes, edge == nullptr ? 0 : edge->getRightT());
  writePoint(to + TINBlock::kStartOffset, edge == nullptr ? nullptr : edge->getStartPoint());
  writePoint(to + TINBlock::kEndOffset, edge == nullptr ? nullptr : edge->getEndPoint());
}

inline void writeEntry(unsigned char* to, const TConvex* entry) {
  writeInt32(to, entry == nullptr ? 0 : entry->getEdgeNo());
}

inline void writeTriangle(unsigned char* to, const Triangle* triangle) {
  for (int i = 0; i < 3; ++i, to += kInt32Bytes) writeInt32(to, triangle == nullptr ? 0 : triangle->getEno()[i]);
}

inline void prefetchPoints(const TEdge* edge) {
  if (edge == nullptr) return;
  prefetchWhole(edge->getStartPoint());
  prefetchWhole(edge->getEndPoint());
}

// Calls write(record, element, ahead) for every element of a list; `ahead` is an element that will soon be written, or
// null. Elements that are missing keep their place: everything else counts on its number.
template <typename Element, std::size_t kRecordBytes, typename Sink, typename Write>
void writeRecords(const SLType* list, Sink& sink, Write write) {
  constexpr std::size_t kRecordsAtOnce = Sink::kLargestPiece / kRecordBytes;
  ListElements::read<Element>(list, [&sink, &write](const auto& elements) {
    for (std::size_t i = 0; i < elements.size();) {
      const std::size_t end = std::min(i + kRecordsAtOnce, elements.size());
      unsigned char* record = sink.claim((end - i) * kRecordBytes);
      for (; i < end; ++i, record += kRecordBytes) {
        const std::size_t ahead = std::min(i + kPrefetchAhead, elements.size() - 1);
        write(record, elements[i], elements[ahead]);
      }
    }
  });
}

template <typename Sink>
void writeTIN(const CEType& tin, Sink& sink) {
  const TINBlock block = TINBlock::of(tin);
  for (const int count : {block.hull, block.edges, block.triangles}) writeInt32(sink.claim(kInt32Bytes), count);
  writeRecords<TConvex, TINBlock::kHullBytes>(
      tin.getCList(), sink,
      [](unsigned char* record, const TConvex* entry, const TConvex* /*ahead*/) { writeEntry(record, entry); });
  writeRecords<TEdge, TINBlock::kEdgeBytes>(tin.getEList(), sink,
                                            [](unsigned char* record, const TEdge* edge, const TEdge* ahead) {
                                              prefetchPoints(ahead);
                                              writeEdge(record, edge);
                                            });
  writeRecords<Triangle, TINBlock::kTriangleBytes>(
      tin.getTList(), sink, [](unsigned char* record, const Triangle* triangle, const Triangle* /*ahead*/) {
        writeTriangle(record, triangle);
      });
}

// Reads a TIN up to its end; null when the bytes do not go so far.
std::unique_ptr<CEType> readTIN(ByteReader& reader);

}  // namespace detail
}  // namespace OrvikDTM
