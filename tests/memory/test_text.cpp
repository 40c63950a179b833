// Memory that runs out in the functions of numbers and texts.
#include "memory/EveryAllocation.h"
#include "memory/SurfaceCase.h"

namespace memory {
namespace {

struct TextCase {
  std::string describe() const { return text; }
  void forget() { text = {}; }

  // Longer than what fits into a string object.
  std::string given = "some words, some more words, and a few that follow";
  std::string text;
};

using TextOperation = Operation<TextCase>;

class TextsWithoutMemory : public testing::TestWithParam<TextOperation> {};

TEST_P(TextsWithoutMemory, AreNotMade) { tryEveryAllocation(GetParam()); }

std::string nameOf(const testing::TestParamInfo<TextOperation>& info) { return info.param.name; }

template <typename Make>
TextOperation making(const char* name, Make make) {
  return {name, [make](TextCase& on) { return on.text = make(on.given), true; }};
}

using Given = const std::string&;

const TextOperation kTexts[] = {
    making("Number", [](Given) { return U::toString(123456789012.5); }),
    making("RoundedNumber", [](Given) { return U::toString(4, 123456789012.5); }),
    making("RoundUp", [](Given) { return U::roundUp(10, 123456789012.5); }),
    making("RoundHalfUp", [](Given) { return U::roundHalfUp(10, 123456789012.5); }),
    making("Split", [](Given given) { return U::split(given, ",").at(2); }),
    making("Trim", [](Given given) { return U::trim(given); }),
    making("Replace", [](Given given) { return U::replace(given, "some", "all of the"); }),
    making("Pad", [](Given given) { return U::appentStr4Length(given, 80); }),
    making("ToUtf8", [](Given given) { return U::ansiToUTF8(given); }),
    making("FromUtf8", [](Given given) { return U::utf8ToANSI(given); }),
    making("Time", [](Given) { return U::currentTimeMillis().substr(0, 4); }),
    making("Point",
           [](Given) {
             SurfacePoint point;
             point.setSurfaceName("A surface with a name");
             point.setSurfacePointName("and a point with one");
             return point.toString();
           }),
};

INSTANTIATE_TEST_SUITE_P(All, TextsWithoutMemory, testing::ValuesIn(kTexts), nameOf);

}  // namespace
}  // namespace memory
