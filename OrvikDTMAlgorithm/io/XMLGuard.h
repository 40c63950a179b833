// Private. What stands before the XML parser, which trusts its input: it recurses once per nested element, compares
// each attribute of an element with all others, and reads past the end of a text that breaks off in the wrong place.
#pragma once

#include <cstddef>
#include <string>

inline namespace OrvikDTM {
namespace detail {

// What a document may have. Files of the field stay below a tenth of either.
struct XMLLimits {
  std::size_t depth = 256;       // elements within one another, the root being the first
  std::size_t attributes = 128;  // of one element
};

// Makes `text` ready for TiXmlDocument::Parse(text, nullptr, TIXML_ENCODING_LEGACY): takes off a byte order mark and
// all from the first zero byte on (there the parser stops), and blanks out what stands in "<?xml ...?>" ahead of the
// root.
//
// True when the parser will then come to a good end and nest no deeper than the limit. To know that, the scan cuts the
// text as the parser does, not as the XML standard does, and gives up where the parser may: it refuses what is not
// closed, character references without digits and ";", and end tags that do not fit. Text that follows the root is
// left unread by both.
bool makeReadyForParser(std::string& text, const XMLLimits& limits = {});

}  // namespace detail
}  // namespace OrvikDTM
