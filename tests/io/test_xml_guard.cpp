// The scan ahead of the XML parser: what it lets through the parser reads to a good end, without going deeper than the
// limit. The judge is the parser itself, on small texts.
#include <algorithm>
#include <random>
#include <string>
#include <tinyxml.h>
#include <vector>

#include <OrvikDTMAlgorithm/io/XMLGuard.h>
#include <gtest/gtest.h>

namespace {

using detail::XMLLimits;

bool isReady(std::string text, const XMLLimits& limits = {}) { return detail::makeReadyForParser(text, limits); }

std::string nested(std::size_t depth, const std::string& innermost = "") {
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) text += "<a>";
  text += innermost;
  for (std::size_t i = 0; i < depth; ++i) text += "</a>";
  return text;
}

std::size_t depthOf(const TiXmlNode& node) {
  std::size_t deepest = 0;
  for (const TiXmlNode* child = node.FirstChild(); child != nullptr; child = child->NextSibling()) {
    deepest = std::max(deepest, depthOf(*child) + (child->ToElement() == nullptr ? 0 : 1));
  }
  return deepest;
}

TEST(XMLGuard, Depth) {
  EXPECT_TRUE(isReady(nested(1)));
  EXPECT_TRUE(isReady(nested(256)));
  EXPECT_FALSE(isReady(nested(257)));
  EXPECT_TRUE(isReady(nested(255, "<b/>")));
  EXPECT_FALSE(isReady(nested(256, "<b/>")));
  EXPECT_TRUE(isReady(nested(256, "text<!-- <b><b> --><![CDATA[<b><b>]]><?p?>")));
  EXPECT_FALSE(isReady(nested(200'000)));
  EXPECT_TRUE(isReady("<r>" + nested(255) + nested(255) + "</r>"));
  EXPECT_TRUE(isReady(nested(256) + nested(256)));
}

TEST(XMLGuard, DepthCannotBeHidden) {
  const XMLLimits two{2, 8};
  const std::string three = nested(3);
  const std::string hidden[] = {
      three,
      "<a x='>'><a x=\"/>\"><a></a></a></a>",
      "<a x='</a>'><a x='</a>'><a></a></a></a>",
      "<a><!-- --><a><!-- </a> --><a></a></a></a>",
      "<a><a><![CDATA[</a></a>]]><a></a></a></a>",
      "<a><?p </a?><a><?p </a ?><a></a></a></a>",
      "<?xml version='1.0'?><!DOCTYPE a><a><a><a/></a></a>",
      "<a>></a>" + three,
      "<a><a>&#x</a></a>x41;" + three,
      "<a><a b='&#x'/></a>x41;'><a><a/></a></a></a>",
      "<a>\xF0</a>" + three,
      "<a b='\xF0'>\xF0<a><a/></a></a>",
      "<a/ ><a><a><a/></a></a>",
      "<a></ab><a><a/></a></a>",
      "<a></b></a>" + three,
      "<a></a" + three,
      "<A></a></A>" + three,
      "<a b=1/>" + three,
      "<a b=1/2/><a><a></a></a></a>",
      "<a b=/><a><a><a/></a></a></a>",
      "<?xml a='?>'?>" + three,
      "<?XML version='?><a><a><a>'?></a></a></a>",
      "<?xml href=\"a version='\"?><!-- '>" + three,
      "<!DOCTYPE a [<!ENTITY b '<a><a><a>'>]>" + three,
      "<a>" + std::string("<?xml version='?>'?>") + "<a><a/></a></a>",
  };
  for (const std::string& text : hidden) {
    std::string ready = text;
    if (!detail::makeReadyForParser(ready, two)) continue;
    TiXmlDocument document;
    document.Parse(ready.c_str(), nullptr, TIXML_ENCODING_LEGACY);
    EXPECT_LE(depthOf(document), 2u) << text;
  }
}

TEST(XMLGuard, WhatTheParserWouldNotFinish) {
  for (const char* text : {"<",
                           "<a",
                           "<a>",
                           "<a ",
                           "<a b",
                           "<a b=",
                           "<a b='",
                           "<a b='1'",
                           "<a/",
                           "<a><",
                           "<a></",
                           "<a></a",
                           "<a>text",
                           "<a><!--",
                           "<a><!-- --",
                           "<!-->",
                           "<a><![CDATA[",
                           "<![CDATA[]]",
                           "<?xml",
                           "<?xml ",
                           "<?xml version='1.0'",
                           "<?xml version='1.0'?",
                           "<?xml version='1.0'>",
                           "<?p",
                           "<!D",
                           "<a b></a>",
                           "<a =''></a>",
                           "<a b=\"1'></a>",
                           "<a></b>",
                           "<a>&#</a>",
                           "<a>&#;</a>",
                           "<a>&#x;</a>",
                           "<a>&#12</a>",
                           "<a>&#xg;</a>",
                           "<a b='&#'/>",
                           "<a><?xml version='1.0'?></a>",
                           "<a \xA0='1'/>",
                           "<a \xFF='1'/>",
                           "<a \x85"
                           "b='1'/>",
                           "<a b='1' \xA0='1'/>",
                           "<a \xC3\xB6/>",
                           "<a \xC3\xB6=",
                           "<a \xC3\xB6='",
                           "\xFF<a/>"}) {
    EXPECT_FALSE(isReady(text)) << text;
  }
}

TEST(XMLGuard, WhatTheFieldWrites) {
  for (const char* text : {"",
                           " ",
                           "<a/>",
                           "<a></a>",
                           "<a ></a >",
                           "<a b='1' c=\"2\"/>",
                           "<a b = '1'\n\tc\r\n=\r\n'2' />",
                           "<a b='x>y'/>",
                           "<a b=1 c=2/>",
                           "<?xml version=\"1.0\" encoding='ISO-8859-1' standalone=\"yes\" ?>\r\n<a/>",
                           "<?xml version='1.0'?><?xml-stylesheet type='text/xsl' href='x.xsl'?><a/>",
                           "<!DOCTYPE a SYSTEM 'a.dtd'><a/>",
                           "<!-- > < -- --><a/><!-- after -->",
                           "<x:a-b.c xmlns:x='u'></x:a-b.c>",
                           "<a>1 &lt; 2 &amp; &#65;&#x4a; &co</a>",
                           "<a>]]></a>",
                           "<\xE9l\xE9ment nom='\xE9'>\xE9</\xE9l\xE9ment>",
                           "<a \xC3\xB6='1'/>",
                           "<a \xC3\xB6 = \"\xC3\xB6\" b\xC3\xB6=2></a>",
                           "<a \xE9\xAB\x98='1' \xF0\x9F\x98\x80='2'/>",
                           "<a/>rest that nobody reads <<<",
                           "no document",
                           "\xEF\xBB\xBF<a/>",
                           "<a><b/>text<b/></a>",
                           "<a>\xEF\xBB\xBF</a>"}) {
    EXPECT_TRUE(isReady(text)) << text;
  }
}

TEST(XMLGuard, WhatIsHandedOn) {
  const struct {
    std::string text;
    std::string expected;
  } rows[] = {
      {"\xEF\xBB\xBF<a/>", "<a/>"},
      {"<?xml v='1'?><a/>", "             <a/>"},
      {std::string("<a/>\0<b>", 8), "<a/>"},
      {"<a>&#65;</a>", "<a>&#65;</a>"},
  };
  for (const auto& row : rows) {
    std::string text = row.text;
    EXPECT_TRUE(detail::makeReadyForParser(text));
    EXPECT_EQ(row.expected, text);
  }
}

TEST(XMLGuard, AttributesWithoutEnd) {
  std::string attributes;
  for (int i = 0; i < 128; ++i) attributes += " a" + std::to_string(i) + "=''";
  EXPECT_TRUE(isReady("<a" + attributes + "/>"));
  EXPECT_FALSE(isReady("<a" + attributes + " b=''/>"));
}

TEST(XMLGuard, WhatItLetsThroughComesToAGoodEnd) {
  const std::vector<std::string> pieces = {
      "<a>",   "<a>",  "<a>",    "</a>",          "</a>",      "</a>", "<b x='", "'>",  "/>",     "'/>",
      "\"",    "</b>", "<!--",   "-->",           "<![CDATA[", "]]>",  "&#x41;", "&#x", ";",      "&#6",
      "&amp;", "&",    "<?xml ", "version=",      "?>",        "<?p ", ">",      "<",   "'",      "=",
      "x",     " ",    "\xF0",   "\xEF\xBB\xBF",  "\n",        "<!D ", "[",      "/",   "<a y=1", "encoding='",
      "</",    "<ab>", "</ab>",  "<a \xC3\xB6='", "\xC3",      "\xA0"};
  std::mt19937 random(61);
  int read = 0;
  for (int i = 0; i < 400'000; ++i) {
    std::string text;
    for (std::size_t length = 1 + random() % 14; length > 0; --length) text += pieces[random() % pieces.size()];
    const XMLLimits limits{1 + random() % 4, 1 + random() % 3};
    std::string ready = text;
    if (!detail::makeReadyForParser(ready, limits)) continue;
    TiXmlDocument document;
    document.SetTabSize(0);
    document.Parse(ready.c_str(), nullptr, TIXML_ENCODING_LEGACY);
    ASSERT_LE(depthOf(document), limits.depth) << text;
    if (document.RootElement() != nullptr) ++read;
    if (!document.Error() || document.FirstChild() == nullptr) continue;
    // An attribute that an element has twice is the one thing at which the parser fails after the scan.
    ASSERT_EQ(static_cast<int>(TiXmlBase::TIXML_ERROR_PARSING_ELEMENT), document.ErrorId()) << text;
  }
  EXPECT_GT(read, 2'000);
}

// The other way round: what the parser reads to a good end is let through, but for what is refused on purpose.
TEST(XMLGuard, WellFormedTextsAreLetThrough) {
  std::mt19937 random(62);
  for (int i = 0; i < 20'000; ++i) {
    std::string text(random() % 2 == 0 ? "<?xml version='1.0' encoding=\"UTF-8\"?>\n<root>" : "<root>");
    std::vector<std::string> open{"root"};
    for (std::size_t steps = random() % 30; steps > 0; --steps) {
      const std::string name(1, static_cast<char>('p' + random() % 5));
      switch (random() % 7) {
        case 0:
          text += "<" + name + " a='<>/&gt;' b=\"'\">", open.push_back(name);
          break;
        case 1:
          text += "<" + name + "/>";
          break;
        case 2:
          text += "<!-- <" + name + "> & -->";
          break;
        case 3:
          text += "<![CDATA[</" + name + ">]]>";
          break;
        case 4:
          text += " text > &#65; ";
          break;
        case 5:
          text += "<?target data?>";
          break;
        default:
          if (open.size() > 1) text += "</" + open.back() + " >", open.pop_back();
      }
    }
    for (; !open.empty(); open.pop_back()) text += "</" + open.back() + ">";
    TiXmlDocument document;
    document.Parse(text.c_str());
    ASSERT_FALSE(document.Error()) << text;
    ASSERT_TRUE(isReady(text)) << text;
  }
}

}  // namespace
