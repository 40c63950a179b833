// Number and text utilities: comparing and rounding doubles, turning numbers into text and back, small string tasks.
// Everything is static, never fails and never depends on the process locale.
#pragma once

#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/Export.h>

inline namespace OrvikDTM {

class ORVIKDTM_API U {
 public:
  U() = default;
  ~U() = default;

  // True when |a - b| is at most 1e-8.
  static bool isEqual(double a, double b);

  // 1 when v is NaN, else 0.
  static int isNaN(double v);

  // 1 when v is an infinity or one of the two largest finite doubles (the library's markers for "no value"), else 0.
  // NaN gives 0.
  static int isInf(double v);

  // Rounds to a whole number, halves away from zero: floor(x + 0.5) for x > 0, else ceil(x - 0.5).
  static double round(double x);

  // v with six decimals in fixed notation: "100.123400". NaN gives "NaN"; a value that isInf() reports gives the
  // infinity sign in GBK ("\xA1\xDE"), with "-" before it for a negative one. What prints as zero has no sign.
  static std::string toString(double v);

  // v rounded to `digits` decimals, halves away from zero, then formatted as by toString(double): (2, 1.23456) gives
  // "1.230000".
  static std::string toString(int digits, double v);

  // v + 4 / 10^(digits + 1) with `digits` decimals in fixed notation: the last digit kept goes up when what is dropped
  // is at least a tenth of its unit. (1, 1.22) gives "1.3", (1, 1.205) gives "1.2". NaN gives "NaN".
  static std::string roundUp(int digits, double v);

  // v with `digits` decimals in fixed notation, rounded half away from zero on its decimal text of 20 decimals:
  // (1, 0.25) gives "0.3". NaN gives "NaN"; infinities are written as by toString(double).
  static std::string roundHalfUp(int digits, double v);

  // v as decimal text.
  static std::string intToString(int v);

  // v as toString(double) writes it; the name promises what holds for every operation here, that the decimal point is
  // "." in every locale.
  static std::string l2kNonLocalized(double v);

  // True when s ends with suffix, without regard to ASCII case.
  static bool endsWith(const std::string& s, const std::string& suffix);

  // The pieces of s between occurrences of sep, empty pieces kept: "a,,b" gives "a", "", "b"; "" gives one empty piece.
  // An empty separator gives s whole.
  static std::vector<std::string> split(std::string s, const std::string& sep);

  // s without leading and trailing blanks (" " only). A string of nothing but blanks comes back unchanged.
  static std::string trim(const std::string& s);

  // s with every occurrence of `from`, left to right, replaced by `to`. An empty `from` gives s unchanged.
  static std::string replace(const std::string& s, const std::string& from, const std::string& to);

  // s padded on the right with blanks to n bytes; unchanged when it has n or more.
  static std::string appentStr4Length(std::string s, int n);

  // Between the system's code page and UTF-8. An empty input or a failed conversion gives "". Where the system has no
  // code page of its own (UTF-8, ASCII and C locales) both return their argument.
  static std::string ansiToUTF8(const std::string& s);
  static std::string utf8ToANSI(const std::string& s);

  // Prints nothing: a hook kept for hosts that call it.
  static void println(const std::string& s);

  // The local time as "2026/03/07 09:05:01.042 <weekday>6\n": <weekday> is that word in GBK, 0 is Sunday.
  static std::string currentTimeMillis();
};

}  // namespace OrvikDTM
