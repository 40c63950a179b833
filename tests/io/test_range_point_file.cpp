// Boundary files.
#include <OrvikDTMAlgorithm/report/NumberText.h>

#include "io/SurfaceFiles.h"

namespace {

class RangePointFile : public InFolder {
 protected:
  void TearDown() override {
    clear();
    InFolder::TearDown();
  }

  void clear() {
    for (const RangePoint* vertex : vertices_) delete vertex;
    vertices_.clear();
  }

  bool read(const std::string& contents) {
    first_ = second_ = false;
    return DTMFileOperation().loadRangePointFile(write("a.waa", contents).c_str(), &first_, &second_, vertices_);
  }

  // The vertices read, as text.
  std::vector<std::string> texts() const {
    std::vector<std::string> result;
    for (const RangePoint* v : vertices_) {
      std::string text = v->name;
      for (const double value : {v->n, v->e, v->z}) text += ' ' + detail::generalText(value);
      result.push_back(text);
    }
    return result;
  }

  std::string savedText(bool first, bool second) const {
    EXPECT_TRUE(DTMFileOperation().saveRangePointFile(path("out.txt").c_str(), first, second, vertices_));
    const Block bytes = bytesOf(path("out.txt"));
    return std::string(bytes.begin(), bytes.end());
  }

  bool first_ = false;
  bool second_ = false;
  std::vector<RangePoint*> vertices_;
};

using Texts = std::vector<std::string>;

TEST_F(RangePointFile, Switches) {
  const struct {
    const char* contents;
    bool first;
    bool second;
  } rows[] = {{"1\n1\n", true, true},
              {"1\r\n0\r\n", true, false},
              {"0\n1", false, true},
              {"1 \n1\n", false, true},
              {"\n1\n", false, true},
              {"true\n01\n", false, false},
              {" 1\n1\n", false, true},
              {"1", true, false},
              {"", false, false},
              {"2\n-1\n", false, false},
              {"\xEF\xBB\xBF"
               "1\n1\n",
               true, true}};
  for (const auto& row : rows) {
    ASSERT_TRUE(read(row.contents)) << row.contents;
    EXPECT_EQ(row.first, first_) << row.contents;
    EXPECT_EQ(row.second, second_) << row.contents;
    EXPECT_TRUE(vertices_.empty());
  }
}

TEST_F(RangePointFile, Vertices) {
  const struct {
    std::string lines;
    Texts expected;
  } rows[] = {
      {"B1,100,200\n", {"B1 100 200 0"}},
      {"B1,100,200,5.5", {"B1 100 200 5.5"}},
      {"B1,100,200,\n", {"B1 100 200 0"}},
      {"B1,100,200,5.5,9,rest\r\nB2,1,2\r\n", {"B1 100 200 5.5", "B2 1 2 0"}},
      {"B1,100\n\n\r\nB2;1;2\n,,\n", {" 0 0 0"}},
      {"B1,x, 2m,0x10\n", {"B1 0 2 16"}},
      {"\xB5\xE3 1,+1e2,.5,-1\n", {"\xB5\xE3 1 100 0.5 -1"}},
      {"abcdefghijklmnopqrstuvwxyz,1,2\n", {"abcdefghijklmnopqrstuvw 1 2 0"}},
      {"", {}},
  };
  for (const auto& row : rows) {
    ASSERT_TRUE(read("1\n0\n" + row.lines));
    EXPECT_EQ(row.expected, texts()) << row.lines;
  }
}

TEST_F(RangePointFile, RecordsGivenAreReleasedFirst) {
  vertices_ = {new RangePoint{}, nullptr, new RangePoint{}};
  ASSERT_TRUE(read("1\n1\nB,1,2\n"));
  EXPECT_EQ((Texts{"B 1 2 0"}), texts());
  bool a = true;
  bool b = true;
  EXPECT_FALSE(DTMFileOperation().loadRangePointFile(path("absent.waa").c_str(), &a, &b, vertices_));
  EXPECT_TRUE(vertices_.empty()) << "emptied although the file is not there";
  EXPECT_TRUE(a && b);
}

TEST_F(RangePointFile, OtherExtensionsLeaveEverything) {
  vertices_ = {new RangePoint{"B", 1, 2, 3}};
  DTMFileOperation files;
  for (const char* name : {"a.txt", "a.waa.bak", "a.waa ", "waa"}) {
    EXPECT_FALSE(files.loadRangePointFile(write(name, std::string("1\n1\n")).c_str(), &first_, &second_, vertices_));
  }
  EXPECT_FALSE(files.loadRangePointFile(nullptr, &first_, &second_, vertices_));
  EXPECT_EQ((Texts{"B 1 2 3"}), texts());
  EXPECT_FALSE(first_);
  for (const char* name : {"a.WAA", "a.Csv"}) {
    EXPECT_TRUE(
        files.loadRangePointFile(write(name, std::string("1\n0\nC,4,5\n")).c_str(), &first_, nullptr, vertices_));
    EXPECT_EQ((Texts{"C 4 5 0"}), texts());
    EXPECT_TRUE(first_);
  }
}

TEST_F(RangePointFile, SixSignificantDigitsAreWritten) {
  vertices_ = {new RangePoint{"B1", 100.25, 200.5, 0}, new RangePoint{"", 1234567.891, 2512345.678, -0.125}, nullptr};
  EXPECT_EQ("1\n0\nB1,100.25,200.5,0\n,1.23457e+06,2.51235e+06,-0.125\n", savedText(true, false));
  clear();
  EXPECT_EQ("0\n1\n", savedText(false, true));
}

TEST_F(RangePointFile, ComesBackRounded) {
  vertices_ = {new RangePoint{"B1", 100.25, 200.5, 7}, new RangePoint{"B2", 1234567.891, 0.1234567, 1e-300}};
  const std::string text = savedText(false, true);
  ASSERT_TRUE(read(text));
  EXPECT_FALSE(first_);
  EXPECT_TRUE(second_);
  EXPECT_EQ(100.25, vertices_[0]->n);
  EXPECT_EQ(200.5, vertices_[0]->e);
  EXPECT_EQ(1234570.0, vertices_[1]->n);
  EXPECT_EQ(0.123457, vertices_[1]->e);
  EXPECT_EQ(text, savedText(false, true));
}

TEST_F(RangePointFile, WhatCannotBeWritten) {
  DTMFileOperation files;
  EXPECT_FALSE(files.saveRangePointFile(nullptr, true, true, {}));
  EXPECT_FALSE(files.saveRangePointFile(path("absent/a.waa").c_str(), true, true, {}));
  EXPECT_FALSE(files.saveRangePointFile("/dev/full", true, true, {})) << "not written whole";
}

}  // namespace
