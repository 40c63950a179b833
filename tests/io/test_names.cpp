// Names in surface files on a system whose code page is not UTF-8. The machines that run the tests seldom have such a
// locale, so the test program puts its own answer in place of the C library's to the question which code set the
// process locale has.
#if !defined(_WIN32)

#include <langinfo.h>

#include "io/SurfaceFiles.h"

namespace {

char asciiName[] = "ANSI_X3.4-1968";
char gbkName[] = "GBK";
char* codesetName = asciiName;

}  // namespace

extern "C" char* nl_langinfo(nl_item) noexcept { return codesetName; }

namespace {

class GbkNames : public testing::Test {
 protected:
  void SetUp() override { codesetName = gbkName; }
  void TearDown() override { codesetName = asciiName; }

  // What the field of a surface of that name holds.
  static std::string fieldOf(const std::string& name) {
    OwnedSurface surface;
    surface.setSurfaceName(name.c_str());
    const Block block = surface.toBytes();
    return std::string(block.begin(), block.begin() + 24);
  }

  static std::string padded(std::string text) {
    text.resize(24, '\0');
    return text;
  }
};

// "ground" in GBK and in UTF-8.
const std::string kGbk = "\xB5\xD8\xC3\xE6";
const std::string kUtf8 = "\xE5\x9C\xB0\xE9\x9D\xA2";

std::string repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

TEST_F(GbkNames, AreUtf8InTheFile) {
  EXPECT_EQ(padded(kUtf8 + " 1"), fieldOf(kGbk + " 1"));
  EXPECT_EQ(padded("plain"), fieldOf("plain"));
  EXPECT_EQ(padded(" "), fieldOf(""));
  EXPECT_EQ(padded(" "), fieldOf("\xB5")) << "half a character belongs to no code page";
}

TEST_F(GbkNames, AreCutAfter24BytesInTheFileAnd23InTheRecord) {
  const std::string name = repeated(kGbk, 5);  // 20 bytes, 30 in UTF-8
  EXPECT_EQ(repeated(kUtf8, 4), fieldOf(name));
  OwnedSurface surface;
  surface.setSurfaceName(name.c_str());
  OwnedSurface read;
  ASSERT_TRUE(load(read, surface.toBytes()));
  EXPECT_EQ(repeated(kGbk, 4), read.getSurfaceName());

  // 24 bytes of which the last begin a character that was cut off.
  surface.setSurfaceName(("a" + name).c_str());
  ASSERT_TRUE(load(read, surface.toBytes()));
  EXPECT_EQ(std::string("a") + repeated(kGbk, 3) + kGbk.substr(0, 2), read.getSurfaceName());
}

// A dozen characters of two bytes do not fit into a record: the last one loses its second byte there.
TEST_F(GbkNames, CutInsideTheirLastCharacterKeepTheOthers) {
  EXPECT_EQ(repeated(kUtf8, 4), fieldOf(repeated(kGbk, 6)));
  EXPECT_EQ(padded("1234567890123456789012"), fieldOf("1234567890123456789012" + kGbk));
  EXPECT_EQ(padded("12345678901234567890"), fieldOf("12345678901234567890\xFF\xFF\xFF"));
  EXPECT_EQ(padded(" "), fieldOf("1234567890123456789\xFF\xFF\xFF\xFF")) << "more than a character can be";

  OwnedSurface surface;
  surface.setSurfacePoints({newPoint("P 1/1986 bolt " + repeated(kGbk, 3), {1, 2, 3})});
  OwnedSurface read;
  ASSERT_TRUE(load(read, surface.toBytes()));
  EXPECT_EQ("P 1/1986 bolt " + kGbk + kGbk.substr(0, 2), namesOf(read).at(0)) << "as many as the file has room for";
}

// A file may come from a system with more room in its names, or be cut inside a character.
TEST_F(GbkNames, SettleAtTheFirstReading) {
  const std::string yaInUtf8 = "\xD1\x8F";  // the last letter of Russian: two bytes here as there
  const std::string yaInGbk = "\xA7\xF1";
  const struct {
    std::string field;
    std::string name;
  } rows[] = {
      {repeated(yaInUtf8, 12), repeated(yaInGbk, 11)},
      {std::string("a") + repeated(yaInUtf8, 11) + "\xD1", std::string("a") + repeated(yaInGbk, 11)},
      {repeated(kUtf8, 3) + "abcd" + "\xE5\x9C", repeated(kGbk, 3) + "abcd"},
      {repeated(kUtf8, 3) + "abcde" + "\xE5", repeated(kGbk, 3) + "abcde"},
      {repeated(kUtf8, 3) + "\xF0\x9F\x98", repeated(kGbk, 3)},
      {kUtf8 + "b\xE5\x9C", kGbk + "b"},
      {"\xE5\x9C", ""},
      {"\x80\x80\x80\x80\x80", ""},
  };
  OwnedSurface surface;
  for (const auto& [field, name] : rows) {
    Block block = surface.toBytes();
    const std::string bytes = padded(field);
    std::copy(bytes.begin(), bytes.end(), block.begin());
    OwnedSurface read;
    ASSERT_TRUE(load(read, block));
    EXPECT_EQ(name, read.getSurfaceName());
    const Block again = read.toBytes();
    OwnedSurface readAgain;
    ASSERT_TRUE(load(readAgain, again));
    EXPECT_EQ(name.empty() ? std::string(" ") : name, readAgain.getSurfaceName());
    EXPECT_EQ(again, readAgain.toBytes());
  }
}

// What belongs to no code page is a blank in the file and stays one; what was cut in the first file is whole from then
// on.
TEST_F(GbkNames, OfAnyBytesSettleAtTheFirstReading) {
  std::mt19937 random(22);
  for (int i = 0; i < 300; ++i) {
    std::string name(1 + random() % 23, '\0');
    for (char& c : name) c = static_cast<char>(random() % 2 == 0 ? 0xB0 + random() % 0x40 : 1 + random() % 255);
    OwnedSurface surface;
    surface.setSurfacePoints({newPoint(name, {1, 2, 3})});
    OwnedSurface read;
    ASSERT_TRUE(load(read, surface.toBytes()));
    const Block block = read.toBytes();
    OwnedSurface readAgain;
    ASSERT_TRUE(load(readAgain, block));
    ASSERT_EQ(namesOf(read), namesOf(readAgain));
    ASSERT_EQ(block, readAgain.toBytes());
  }
}

TEST_F(GbkNames, OfPointsComeBack) {
  OwnedSurface surface;
  surface.setSurfacePoints({newPoint(kGbk, {1, 2, 3}), newPoint("P~1", {1, 2, 3}), newPoint("\x7F", {1, 2, 3})});
  const Block block = surface.toBytes();
  EXPECT_EQ(padded(kUtf8), std::string(block.begin() + 80, block.begin() + 104));
  OwnedSurface read;
  ASSERT_TRUE(load(read, block));
  EXPECT_EQ(namesOf(surface), namesOf(read));
  EXPECT_EQ(block, read.toBytes());
}

}  // namespace

#endif
