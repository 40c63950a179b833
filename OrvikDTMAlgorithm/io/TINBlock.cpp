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

using detail::RecordReader;
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

void readHull(RecordReader records, int count, ConvexList& hull) {
  hull.setMaxlen(count);
  detail::ListElements::append<TConvex>(hull, count, [&](int) { return TConvex(detail::readInt32(records.next())); });
}

// The edges, and their points, two of its own for every edge.
std::shared_ptr<const void> readEdges(RecordReader records, int count, EList& edges) {
  auto points = std::make_shared<std::vector<TPoint>>();
  detail::reserveLarge(*points, 2 * static_cast<std::size_t>(count));
  edges.setMaxlen(count);
  detail::ListElements::append<TEdge>(edges, count, [&](int) {
    const unsigned char* bytes = records.next();
    TPoint* start = &points->emplace_back(pointAt(bytes + TINBlock::kStartOffset));
    TPoint* end = &points->emplace_back(pointAt(bytes + TINBlock::kEndOffset));
    return TEdge(start, end, detail::readInt32(bytes), detail::readInt32(bytes + detail::kInt32Bytes));
  });
  return points;
}

void readTriangles(RecordReader records, int count, TList& triangles) {
  triangles.setMaxlen(count);
  detail::ListElements::append<Triangle>(triangles, count, [&](int) {
    const unsigned char* bytes = records.next();
    const int three[] = {detail::readInt32(bytes), detail::readInt32(bytes + detail::kInt32Bytes),
                         detail::readInt32(bytes + 2 * detail::kInt32Bytes)};
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
  return detail::readTIN(reader).release();
}

std::unique_ptr<CEType> detail::readTIN(ByteReader& reader) {
  const unsigned char* counts = reader.take(TINBlock::kCountBytes);
  if (counts == nullptr) return nullptr;
  const TINBlock lists = countsAt(counts);
  const auto hull = reader.takeRecords(lists.hull, TINBlock::kHullBytes);
  const auto edges = reader.takeRecords(lists.edges, TINBlock::kEdgeBytes);
  const auto triangles = reader.takeRecords(lists.triangles, TINBlock::kTriangleBytes);
  if (!hull || !edges || !triangles) return nullptr;

  std::unique_ptr<CEType> tin(detail::emptyTIN());
  readHull(*hull, lists.hull, *tin->getCList());
  tin->holdPoints(readEdges(*edges, lists.edges, *tin->getEList()));
  readTriangles(*triangles, lists.triangles, *tin->getTList());
  return tin;
}

}  // namespace OrvikDTM
