// A TIN to bytes and back. Numbers are kept as they are, whether they name anything or not: those who use them look.
#include <algorithm>
#include <memory>
#include <vector>

#include <OrvikDTMAlgorithm/io/ByteReader.h>
#include <OrvikDTMAlgorithm/io/ByteVector.h>
#include <OrvikDTMAlgorithm/io/TINBlock.h>
#include <OrvikDTMAlgorithm/tin/LargeArrays.h>
#include <OrvikDTMAlgorithm/tin/ListElements.h>
#include <OrvikDTMAlgorithm/tin/Publish.h>

inline namespace OrvikDTM {
namespace {

using detail::TINBlock;

// A list without elements is as good as one with fewer than none.
TINBlock countsAt(const unsigned char* block) {
  const auto count = [block](std::size_t index) {
    return std::max(detail::readInt32(block + index * detail::kInt32Bytes), 0);
  };
  return {count(0), count(1), count(2)};
}

TPoint pointAt(const unsigned char* bytes) {
  return {detail::readDouble(bytes), detail::readDouble(bytes + detail::kDoubleBytes),
          detail::readDouble(bytes + 2 * detail::kDoubleBytes)};
}

void readHull(const unsigned char* bytes, int count, ConvexList& hull) {
  hull.setMaxlen(count);
  detail::ListElements::append<TConvex>(hull, count, [&bytes](int) {
    const int edge = detail::readInt32(bytes);
    bytes += TINBlock::kHullBytes;
    return TConvex(edge);
  });
}

// The edges, and their points, two of its own for every edge.
std::shared_ptr<const void> readEdges(const unsigned char* bytes, int count, EList& edges) {
  auto points = std::make_shared<std::vector<TPoint>>();
  detail::reserveLarge(*points, 2 * static_cast<std::size_t>(count));
  edges.setMaxlen(count);
  detail::ListElements::append<TEdge>(edges, count, [&bytes, &points](int) {
    TPoint* start = &points->emplace_back(pointAt(bytes + TINBlock::kStartOffset));
    TPoint* end = &points->emplace_back(pointAt(bytes + TINBlock::kEndOffset));
    TEdge edge(start, end);
    edge.setLeftT(detail::readInt32(bytes));
    edge.setRightT(detail::readInt32(bytes + detail::kInt32Bytes));
    bytes += TINBlock::kEdgeBytes;
    return edge;
  });
  return points;
}

void readTriangles(const unsigned char* bytes, int count, TList& triangles) {
  triangles.setMaxlen(count);
  detail::ListElements::append<Triangle>(triangles, count, [&bytes](int) {
    const int three[] = {detail::readInt32(bytes), detail::readInt32(bytes + detail::kInt32Bytes),
                         detail::readInt32(bytes + 2 * detail::kInt32Bytes)};
    bytes += TINBlock::kTriangleBytes;
    return Triangle(three);
  });
}

}  // namespace

std::vector<unsigned char> CEType::getBytes() const {
  detail::ByteVector bytes(TINBlock::of(*this).size());
  detail::writeTIN(*this, bytes);
  return bytes.take();
}

CEType* CEType::tryParse(unsigned char* block) {
  return block == nullptr ? nullptr : tryParse(block, countsAt(block).size());
}

CEType* CEType::tryParse(const unsigned char* block, std::size_t length) {
  if (block == nullptr) return nullptr;
  detail::ByteReader reader(block, length);
  const unsigned char* counts = reader.take(TINBlock::kCountBytes);
  if (counts == nullptr) return nullptr;
  const TINBlock lists = countsAt(counts);
  const unsigned char* hull = reader.take(std::uint64_t{TINBlock::kHullBytes} * static_cast<unsigned>(lists.hull));
  const unsigned char* edges = reader.take(std::uint64_t{TINBlock::kEdgeBytes} * static_cast<unsigned>(lists.edges));
  const unsigned char* triangles =
      reader.take(std::uint64_t{TINBlock::kTriangleBytes} * static_cast<unsigned>(lists.triangles));
  if (hull == nullptr || edges == nullptr || triangles == nullptr) return nullptr;

  std::unique_ptr<CEType> tin(detail::emptyTIN());
  readHull(hull, lists.hull, *tin->getCList());
  tin->holdPoints(readEdges(edges, lists.edges, *tin->getEList()));
  readTriangles(triangles, lists.triangles, *tin->getTList());
  return tin.release();
}

}  // namespace OrvikDTM
