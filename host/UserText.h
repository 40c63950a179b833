// Text that came from the user (words of the command line, fields of a file, file names) made fit to be repeated in a
// message of one line, and read as numbers.
#pragma once

#include <string>
#include <string_view>

// The longest beginning of `text` of at most `bytes` bytes that ends between two UTF-8 characters.
std::string cutAtCharacter(const std::string& text, std::size_t bytes);

// `text` with "?" for every control byte: what is printed stays on its line and moves no cursor.
std::string oneLine(std::string text);

// `text` as a message repeats it: in quotation marks, on one line, a long one cut.
std::string quoted(const std::string& text);

// A path as a message repeats it. Cut later than other text, since its end says most.
std::string shownPath(const std::string& path);

// The number that is the whole of `text`, blanks and tabs around it and a plus sign before it aside; false when there
// is none, or when it is too large for a double. One that is too small for a double is 0.
bool parseNumber(const std::string& text, double& value);

// The same, quickly, for a decimal number of at most fifteen digits, twelve of them before the point, and nothing else;
// false for every other text, number or not.
bool parsePlainNumber(std::string_view text, double& value);
