// Where the characters of a text end that may hold anything: names come from files in any encoding, but XML and JSON
// are UTF-8 or nothing.
#pragma once

#include <cstddef>
#include <string>

namespace pictures {

// The length of the well-formed UTF-8 character at `at`, 0 when there is none.
std::size_t characterLength(const std::string& text, std::size_t at);

}  // namespace pictures
