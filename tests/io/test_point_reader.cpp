// What the reader of point files and boundary files says about lines that it could not understand, and that it reads
// the same points as the functions that say nothing.
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <OrvikDTMAlgorithm/io/DTMFileOperation.h>
#include <OrvikDTMAlgorithm/io/PointReader.h>
#include <gtest/gtest.h>

#include "io/ScratchFolder.h"
#include "surface/Surfaces.h"

namespace {

using orvik::LineFault;
using orvik::LineField;
using Texts = std::vector<std::string>;

class PointReader : public testing::Test {
 protected:
  std::string write(const std::string& name, const std::string& contents) const {
    return folder_.write(name, contents);
  }

  orvik::PointFile points(const std::string& contents) const {
    return orvik::readPointFile(write("points.csv", contents).c_str());
  }

  orvik::BoundaryFile boundary(const std::string& contents) const {
    return orvik::readBoundaryFile(write("boundary.waa", contents).c_str());
  }

  ScratchFolder folder_;
};

Texts textsOf(const orvik::LineReport& report) {
  Texts texts;
  for (const orvik::LineNotice& notice : report.notices) texts.push_back(toText(notice));
  return texts;
}

TEST_F(PointReader, LinesThatAreUnderstoodGiveNoNotice) {
  for (const char* line :
       {"P1,,1,2,3", "P1,,1,2,3\r", "P1,,-1.5,.5,5.", "P1,, 1 ,\t2\t,+3", "P1,,1e3,2E-3,3", ",,1,2,3",
        "\xEF\xBB\xBFP1,,1,2,3", "P1,,1e-400,2,3", "P1,,9.2e12,-9.2e12,1e12", "P1,,1,2,3\r\r"}) {
    SCOPED_TRACE(line);
    const orvik::PointFile file = points(std::string(line) + "\n\n" + line);
    EXPECT_TRUE(file.isRead);
    EXPECT_EQ(file.lines, 2);
    EXPECT_EQ(file.points.size(), 2u);
    EXPECT_EQ(file.noticeCount, 0);
    EXPECT_EQ(textsOf(file), Texts{});
  }
}

TEST_F(PointReader, EveryLineThatIsNotUnderstoodIsReported) {
  const struct {
    std::string line;
    LineFault fault;
    LineField field;
    std::string text;
    double taken;
    std::string says;
  } rows[] = {
      {"abc", LineFault::TooFewFields, LineField::None, "abc", 0, "line 2: too few fields in 'abc': skipped"},
      {" ", LineFault::TooFewFields, LineField::None, " ", 0, "line 2: too few fields in ' ': skipped"},
      {"P1,,1,2", LineFault::TooFewFields, LineField::None, "P1,,1,2", 0,
       "line 2: too few fields in 'P1,,1,2': skipped"},
      {"P1,,abc,2,3", LineFault::NotANumber, LineField::Easting, "abc", 0,
       "line 2: the easting 'abc' is not a number: taken as 0"},
      {"P1,,1,20m,3", LineFault::NotANumber, LineField::Northing, "20m", 20,
       "line 2: the northing '20m' is not a number: taken as 20"},
      {"P1,,1,2,", LineFault::NotANumber, LineField::Elevation, "", 0,
       "line 2: the elevation '' is not a number: taken as 0"},
      {"P1,,1,2,0x10", LineFault::NotANumber, LineField::Elevation, "0x10", 16,
       "line 2: the elevation '0x10' is not a number: taken as 16"},
      {"P1,,1,2,-inf", LineFault::NotANumber, LineField::Elevation, "-inf", -HUGE_VAL,
       "line 2: the elevation '-inf' is not a number: taken as -inf"},
      {"P1,,1e400,2,3", LineFault::NotANumber, LineField::Easting, "1e400", HUGE_VAL,
       "line 2: the easting '1e400' is not a number: taken as inf"},
      {"P1,,+-1,2,3", LineFault::NotANumber, LineField::Easting, "+-1", 0,
       "line 2: the easting '+-1' is not a number: taken as 0"},
      {"P1,,1,9.3e12,3", LineFault::TooLarge, LineField::Northing, "9.3e12", 9.3e12,
       "line 2: the northing '9.3e12' is too large: taken as 9.3e+12"},
      {"P1,,1,2,-1.1e12", LineFault::TooLarge, LineField::Elevation, "-1.1e12", -1.1e12,
       "line 2: the elevation '-1.1e12' is too large: taken as -1.1e+12"},
      {"P\r1,,1,2,3", LineFault::CarriageReturn, LineField::None, "P\r1,,1,2,3", 0,
       "line 2: a carriage return ends no line: taken as part of its field"},
      {std::string("P\0,,1,2,3", 9), LineFault::NotText, LineField::None, std::string("P\0,,1,2,3", 9), 0,
       "line 2: a zero byte: taken as part of its field"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.line);
    const orvik::PointFile file = points("\n" + row.line + "\nP2,,1,2,3\n");
    EXPECT_EQ(file.noticeCount, 1);
    ASSERT_EQ(file.notices.size(), 1u);
    const orvik::LineNotice& notice = file.notices.front();
    EXPECT_EQ(notice.line, 2);
    EXPECT_EQ(notice.fault, row.fault);
    EXPECT_EQ(notice.field, row.field);
    EXPECT_EQ(notice.text, row.text);
    EXPECT_EQ(notice.taken, row.taken);
    EXPECT_EQ(toText(notice), row.says);
    EXPECT_EQ(file.lines, 2);
    EXPECT_EQ(file.skipped, row.fault == LineFault::TooFewFields ? 1 : 0);
  }
}

// A header with five fields is a point for the functions that say nothing.
TEST_F(PointReader, AHeaderIsReportedFieldByField) {
  const orvik::PointFile file = points("name,code,E,N,Z\nP1,,1,2,3\n");
  EXPECT_EQ(textsOf(file), (Texts{"line 1: the easting 'E' is not a number: taken as 0",
                                  "line 1: the northing 'N' is not a number: taken as 0",
                                  "line 1: the elevation 'Z' is not a number: taken as 0"}));
  ASSERT_EQ(file.points.size(), 2u);
  EXPECT_EQ(file.points[0]->toString(), ",name,0,0,0");
}

TEST_F(PointReader, MoreFieldsAreCounted) {
  const orvik::PointFile file = points("P1,,1,2,3\nP2,,1,2,3,\nP3,,1,2,3,4,5\n");
  EXPECT_EQ(file.withMore, 2);
  EXPECT_EQ(file.noticeCount, 0);
  EXPECT_EQ(boundary("0\n1\nB1,1,2\nB2,1,2,3\nB3,1,2,3,4\n").withMore, 1);
}

TEST_F(PointReader, ALongTextIsCut) {
  const orvik::PointFile file = points("P1,," + std::string(1000, 'x') + ",2,3\n");
  ASSERT_EQ(file.notices.size(), 1u);
  EXPECT_EQ(file.notices[0].text, std::string(orvik::kNoticeText, 'x'));
}

TEST_F(PointReader, AllNoticesAreCountedAndTheFirstOfEachFaultListed) {
  std::string contents;
  for (std::size_t i = 0; i < orvik::kMostNotices + 5; ++i) contents += "x\n";
  const orvik::PointFile file = points(contents + "P1,,east,2,3\n");
  EXPECT_EQ(file.skipped, static_cast<long long>(orvik::kMostNotices + 5));
  EXPECT_EQ(file.noticeCount, static_cast<long long>(orvik::kMostNotices + 6));
  ASSERT_EQ(file.notices.size(), orvik::kMostNotices + 1);
  EXPECT_EQ(toText(file.notices.back()), "line 100006: the easting 'east' is not a number: taken as 0");
}

TEST_F(PointReader, BoundaryLinesAreReported) {
  const orvik::BoundaryFile file = boundary("yes\n0\n\nB1,1,2\nB2,x,3\nB3\nB4,1,2,\nB5,1,2,3,4\r\nB6,1,9.3e12,0\n");
  EXPECT_TRUE(file.isRead);
  EXPECT_FALSE(file.first);
  EXPECT_FALSE(file.second);
  EXPECT_EQ(file.vertices.size(), 5u);
  EXPECT_EQ(file.lines, 6);
  EXPECT_EQ(file.skipped, 1);
  EXPECT_EQ(textsOf(file),
            (Texts{"line 1: 'yes' is not a switch: taken as 0", "line 5: the northing 'x' is not a number: taken as 0",
                   "line 6: too few fields in 'B3': skipped", "line 7: the elevation '' is not a number: taken as 0",
                   "line 9: the easting '9.3e12' is too large: taken as 9.3e+12"}));
}

TEST_F(PointReader, OnlyPlainSwitchesAreUnderstood) {
  for (const char* text : {"1\n0\n", "\n1\r\n", "0", ""}) EXPECT_EQ(boundary(text).noticeCount, 0) << text;
  for (const char* text : {"1 \n0\n", "0\n01\n", "1\r\r\n0\n", "+1\n0\n"})
    EXPECT_EQ(boundary(text).noticeCount, 1) << text;
}

TEST_F(PointReader, SwitchesAreReadAsTheOtherReaderReadsThem) {
  for (const char* text : {"1\n1\n", "1\r\n0\r\n", "0\n1", "1 \n1\n", "1", "", "\n\n",
                           "\xEF\xBB\xBF"
                           "1\n1\n"}) {
    SCOPED_TRACE(text);
    const std::string path = write("boundary.waa", text);
    const orvik::BoundaryFile file = orvik::readBoundaryFile(path.c_str());
    bool first = !file.first;
    bool second = !file.second;
    std::vector<RangePoint*> out;
    ASSERT_TRUE(DTMFileOperation().loadRangePointFile(path.c_str(), &first, &second, out));
    EXPECT_EQ(file.first, first);
    EXPECT_EQ(file.second, second);
  }
}

TEST_F(PointReader, WhatCannotBeReadSaysSo) {
  EXPECT_FALSE(orvik::readPointFile(nullptr).isRead);
  EXPECT_FALSE(orvik::readBoundaryFile(nullptr).isRead);
  EXPECT_FALSE(orvik::readPointFile(folder_.pathOf("absent.csv").c_str()).isRead);
  EXPECT_FALSE(orvik::readBoundaryFile(folder_.pathOf("absent.waa").c_str()).isRead);
  EXPECT_TRUE(points("").isRead);
}

// Whatever the lines are like.
TEST_F(PointReader, BothReadersReadTheSame) {
  const std::string alphabet = "0123456789.,,,,,,-+e xXnaif\r\n\n\"";
  std::uint64_t state = 17;
  const auto next = [&state] { return (state = state * 6364136223846793005u + 1442695040888963407u) >> 33u; };
  for (int round = 0; round < 200; ++round) {
    std::string contents;
    for (int i = 0; i < 300; ++i) contents += alphabet[next() % alphabet.size()];
    const orvik::PointFile file = points(contents);
    OwnedSurface surface;
    std::vector<SurfacePoint*> out;
    surface.loadSurfacePointsFile(write("points.csv", contents).c_str(), out);
    ASSERT_EQ(file.points.size(), out.size());
    for (std::size_t i = 0; i < out.size(); ++i) {
      EXPECT_EQ("Site" + file.points[i]->toString(), out[i]->toString());
    }
    EXPECT_EQ(static_cast<long long>(file.points.size()) + file.skipped, file.lines);
    const orvik::BoundaryFile vertices = boundary(contents);
    std::vector<RangePoint*> range;
    bool first = false;
    bool second = false;
    DTMFileOperation().loadRangePointFile(write("boundary.waa", contents).c_str(), &first, &second, range);
    ASSERT_EQ(vertices.vertices.size(), range.size());
    for (std::size_t i = 0; i < range.size(); ++i) {
      EXPECT_STREQ(vertices.vertices[i]->name, range[i]->name);
      for (const auto& [a, b] :
           {std::pair(vertices.vertices[i]->n, range[i]->n), std::pair(vertices.vertices[i]->e, range[i]->e),
            std::pair(vertices.vertices[i]->z, range[i]->z)}) {
        EXPECT_TRUE(a == b || (std::isnan(a) && std::isnan(b)));
      }
      delete range[i];
    }
  }
}

}  // namespace
