// A TIN as bytes and back: compared as bytes, whatever the numbers are.
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>

#include <OrvikDTMAlgorithm/tin/CEType.h>
#include <OrvikDTMAlgorithm/tin/ConvexList.h>
#include <OrvikDTMAlgorithm/tin/EList.h>
#include <OrvikDTMAlgorithm/tin/Surface.h>
#include <OrvikDTMAlgorithm/tin/TConvex.h>
#include <OrvikDTMAlgorithm/tin/TEdge.h>
#include <OrvikDTMAlgorithm/tin/TList.h>
#include <OrvikDTMAlgorithm/tin/Triangle.h>
#include <gtest/gtest.h>

namespace {

using Block = std::vector<unsigned char>;
using TIN = std::unique_ptr<CEType>;

constexpr std::size_t kCounts = 12;

TIN emptyTIN() { return std::make_unique<CEType>(new ConvexList, new EList, new TList); }

TIN parsed(const Block& block) { return TIN(CEType::tryParse(block.data(), block.size())); }

// The unsized form, on a copy that ends where the block ends: sanitizers see what lies behind it.
TIN parsedOnTrust(const Block& block) {
  Block copy(block);
  copy.shrink_to_fit();
  return TIN(CEType::tryParse(copy.data()));
}

std::size_t sizeFor(std::size_t hull, std::size_t edges, std::size_t triangles) {
  return kCounts + 4 * hull + 56 * edges + 12 * triangles;
}

void append(Block& block, std::uint64_t bits, int bytes) {
  for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) block.push_back(static_cast<unsigned char>(bits >> shift));
}

// A block of any numbers: what an import or a broken disk may leave.
Block wildBlock(std::mt19937_64& random, int hull, int edges, int triangles) {
  const auto number = [&random] {
    constexpr std::int32_t kInteresting[] = {
        0, 1, -1, 2, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    const std::uint64_t r = random();
    return static_cast<std::uint32_t>(r % 2 == 0 ? kInteresting[r / 2 % std::size(kInteresting)]
                                                 : static_cast<std::int32_t>(r >> 32));
  };
  Block block;
  for (const int count : {hull, edges, triangles}) append(block, static_cast<std::uint32_t>(count), 4);
  for (int i = 0; i < hull; ++i) append(block, number(), 4);
  for (int i = 0; i < edges; ++i) {
    append(block, number(), 4);
    append(block, number(), 4);
    for (int k = 0; k < 6; ++k) append(block, random(), 8);  // NaN with payloads, denormals and all
  }
  for (int i = 0; i < 3 * triangles; ++i) append(block, number(), 4);
  return block;
}

TEST(TINBlock, AnEmptyModelIsTwelveZeroBytes) {
  const Block zeros(kCounts, 0);
  EXPECT_EQ(zeros, emptyTIN()->getBytes());
  EXPECT_EQ(zeros, CEType(nullptr, nullptr, nullptr).getBytes());
  for (const TIN& tin : {parsed(zeros), parsedOnTrust(zeros)}) {
    ASSERT_NE(nullptr, tin);
    ASSERT_NE(nullptr, tin->getCList());
    EXPECT_EQ(0, tin->getCList()->getListLen());
    EXPECT_EQ(0, tin->getEList()->getListLen());
    EXPECT_EQ(0, tin->getTList()->getListLen());
    EXPECT_EQ(0, tin->getEList()->getMaxlen());
  }
}

TEST(TINBlock, EveryByteOfASmallModel) {
  const TIN tin = emptyTIN();
  TPoint start(1.0, -0.0, std::numeric_limits<double>::infinity());
  TPoint end(-2.0, 0.5, 0.0);
  tin->getCList()->add(tin->getCList(), new TConvex(1));
  auto* edge = new TEdge(&start, &end);
  edge->setLeftT(258);
  edge->setRightT(-1);
  tin->getEList()->add(tin->getEList(), edge);
  const int three[] = {1, 2, -3};
  tin->getTList()->add(tin->getTList(), new Triangle(three));
  const Block expected = {0,    0,    0, 1, 0,    0,    0,    1,    0,    0,    0,    1,      // counts
                          0,    0,    0, 1,                                                   // hull
                          0,    0,    1, 2, 0xFF, 0xFF, 0xFF, 0xFF,                           // triangles
                          0x3F, 0xF0, 0, 0, 0,    0,    0,    0,                              // 1.0
                          0x80, 0,    0, 0, 0,    0,    0,    0,                              // -0.0
                          0x7F, 0xF0, 0, 0, 0,    0,    0,    0,                              // infinity
                          0xC0, 0,    0, 0, 0,    0,    0,    0,                              // -2.0
                          0x3F, 0xE0, 0, 0, 0,    0,    0,    0,                              // 0.5
                          0,    0,    0, 0, 0,    0,    0,    0,                              // 0.0
                          0,    0,    0, 1, 0,    0,    0,    2,    0xFF, 0xFF, 0xFF, 0xFD};  // edges
  EXPECT_EQ(expected, tin->getBytes());
  EXPECT_EQ(expected, tin->getBytes()) << "writing changes nothing";

  const TIN read = parsed(expected);
  ASSERT_NE(nullptr, read);
  EXPECT_EQ(1, read->getCList()->findByNum(read->getCList(), 1)->getEdgeNo());
  const TEdge* readEdge = read->getEList()->findByNum(read->getEList(), 1);
  EXPECT_EQ(258, readEdge->getLeftT());
  EXPECT_EQ(-1, readEdge->getRightT());
  EXPECT_TRUE(std::signbit(readEdge->getStartPoint()->getY()));
  EXPECT_EQ(-2.0, readEdge->getEndPoint()->getX());
  EXPECT_EQ(-3, read->getTList()->findByNum(read->getTList(), 1)->getEno()[2]);
}

TEST(TINBlock, BuiltModelsComeBackByteForByte) {
  std::mt19937_64 random(3);
  for (int count : {3, 4, 10, 200, 3000}) {
    std::vector<TPoint> points;
    for (int i = 0; i < count; ++i) {
      const auto millimetres = [&random] { return static_cast<double>(random() % 1'000'000) / 1000.0; };
      points.emplace_back(500'000 + millimetres(), 3'000'000 + millimetres(), millimetres());
    }
    std::vector<TPoint*> pointers;
    for (TPoint& p : points) pointers.push_back(&p);
    const TIN built(Surface::optimizeTIN(pointers));
    ASSERT_NE(nullptr, built);
    const Block block = built->getBytes();
    const auto lengthOf = [](const SLType* list) { return static_cast<std::size_t>(list->getListLen()); };
    EXPECT_EQ(sizeFor(lengthOf(built->getCList()), lengthOf(built->getEList()), lengthOf(built->getTList())),
              block.size());
    const TIN read = parsed(block);
    ASSERT_NE(nullptr, read);
    EXPECT_EQ(block, read->getBytes());
    EXPECT_EQ(block, parsedOnTrust(block)->getBytes());
    EXPECT_EQ(built->getArea2D(), read->getArea2D());
    EXPECT_EQ(built->getRangeXY(), read->getRangeXY());
    EXPECT_EQ(lengthOf(built->getEList()), static_cast<std::size_t>(read->getEList()->getMaxlen()));
  }
}

TEST(TINBlock, AnyNumbersComeBackByteForByte) {
  std::mt19937_64 random(4);
  for (int i = 0; i < 300; ++i) {
    const auto upTo = [&random](unsigned most) { return static_cast<int>(random() % (most + 1)); };
    const Block block = wildBlock(random, upTo(9), upTo(200), upTo(9));
    const TIN read = parsed(block);
    ASSERT_NE(nullptr, read);
    ASSERT_EQ(block, read->getBytes());
    ASSERT_EQ(block, parsedOnTrust(block)->getBytes());
  }
}

TEST(TINBlock, EveryEdgeHasPointsOfItsOwn) {
  Block block;
  for (const int count : {0, 2, 0}) append(block, static_cast<unsigned>(count), 4);
  block.resize(sizeFor(0, 2, 0), 0);
  const TIN read = parsed(block);
  ASSERT_NE(nullptr, read);
  const EList* edges = read->getEList();
  edges->findByNum(edges, 1)->getEndPoint()->setX(7.0);
  EXPECT_EQ(0.0, edges->findByNum(edges, 1)->getStartPoint()->getX());
  EXPECT_EQ(0.0, edges->findByNum(edges, 2)->getStartPoint()->getX());
}

TEST(TINBlock, ABlockThatIsTooShortGivesNothing) {
  std::mt19937_64 random(5);
  const Block block = wildBlock(random, 3, 4, 2);
  for (std::size_t length = 0; length < block.size(); ++length) {
    const Block cut(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(length));
    ASSERT_EQ(nullptr, parsed(cut)) << length;
  }
  Block longer = block;
  longer.insert(longer.end(), 100, 0xAA);
  const TIN read = parsed(longer);
  ASSERT_NE(nullptr, read);
  EXPECT_EQ(block, read->getBytes());
  EXPECT_EQ(nullptr, CEType::tryParse(nullptr));
  EXPECT_EQ(nullptr, CEType::tryParse(nullptr, 100));
}

// Nothing is made room for before it is known to be there.
TEST(TINBlock, CountsThatDoNotFitGiveNothing) {
  constexpr int kMost = std::numeric_limits<int>::max();
  const int rows[][3] = {{kMost, 0, 0},      {0, kMost, 0},     {0, 0, kMost}, {kMost, kMost, kMost},
                         {76'695'845, 0, 0}, {0, 0, 1'000'000}, {22, 0, 0},    {0, 2, 0},
                         {1, 1, 3}};
  for (const auto& row : rows) {
    Block block;
    for (const int count : row) append(block, static_cast<unsigned>(count), 4);
    block.resize(kCounts + 85, 0);
    EXPECT_EQ(nullptr, parsed(block)) << row[0] << ' ' << row[1] << ' ' << row[2];
  }
}

TEST(TINBlock, NegativeCountsAreNone) {
  Block block;
  for (const int count : {-1, std::numeric_limits<int>::min(), -56}) append(block, static_cast<unsigned>(count), 4);
  for (const TIN& tin : {parsed(block), parsedOnTrust(block)}) {
    ASSERT_NE(nullptr, tin);
    EXPECT_EQ(Block(kCounts, 0), tin->getBytes());
  }
}

TEST(TINBlock, MissingElementsKeepTheirPlace) {
  const TIN tin = emptyTIN();
  TPoint p(1, 2, 3);
  tin->getCList()->add(tin->getCList(), nullptr);
  tin->getEList()->add(tin->getEList(), nullptr);
  tin->getEList()->add(tin->getEList(), new TEdge(&p, nullptr));
  tin->getTList()->add(tin->getTList(), nullptr);
  const TIN read = parsed(tin->getBytes());
  ASSERT_NE(nullptr, read);
  EXPECT_EQ(0, read->getCList()->findByNum(read->getCList(), 1)->getEdgeNo());
  EXPECT_TRUE(std::isnan(read->getEList()->findByNum(read->getEList(), 1)->getStartPoint()->getX()));
  EXPECT_EQ(3.0, read->getEList()->findByNum(read->getEList(), 2)->getStartPoint()->getZ());
  EXPECT_TRUE(std::isnan(read->getEList()->findByNum(read->getEList(), 2)->getEndPoint()->getZ()));
  EXPECT_EQ(0, read->getTList()->findByNum(read->getTList(), 1)->getEno()[0]);
  EXPECT_EQ(tin->getBytes(), read->getBytes());
}

}  // namespace
