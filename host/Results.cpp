#include "Results.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iostream>
#include <string_view>

#include <OrvikDTMAlgorithm/report/U.h>

#include "Console.h"
#include "Progress.h"
#include "UserText.h"
#include "pictures/Utf8.h"

namespace {

constexpr int kLabelWidth = 22;
constexpr std::size_t kColumnWidth = 18;

std::string keyOf(const std::string& label) {
  std::string key = label;
  for (char& c : key) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c == ' ' || c == '-') c = '_';
  }
  return key;
}

void appendEscaped(std::string& out, char c) {
  constexpr unsigned char kFirstPrinted = 0x20;
  constexpr std::string_view kDigits = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  if (c == '"' || c == '\\') {
    out.append(1, '\\').append(1, c);
  } else if (byte < kFirstPrinted) {
    out.append("\\u00").append(1, kDigits[byte >> 4U]).append(1, kDigits[byte & 0xFU]);
  } else {
    out.append(1, c);
  }
}

// Names may be in any encoding, JSON is in UTF-8: a byte of no character becomes the one for what cannot be shown.
std::string jsonText(const std::string& text) {
  constexpr const char* kNoCharacter = "\\ufffd";
  std::string out = "\"";
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = pictures::characterLength(text, at);
    if (length == 0) out.append(kNoCharacter);
    if (length == 1) appendEscaped(out, text[at]);
    if (length > 1) out.append(text, at, length);
    at += std::max<std::size_t>(length, 1);
  }
  return out + "\"";
}

// The shortest text that reads back as v; JSON knows no NaN and no infinities.
std::string jsonNumber(double v) {
  if (!std::isfinite(v)) return "null";
  std::array<char, 32> text{};  // the longest double takes 24
  const auto [end, fault] = std::to_chars(text.data(), text.data() + text.size(), v == 0.0 ? 0.0 : v);
  return std::string(text.data(), end);
}

std::string rightAligned(const std::string& text) {
  return std::string(text.size() < kColumnWidth ? kColumnWidth - text.size() : 1, ' ') + text;
}

}  // namespace

Results::Cell::Cell(double value) : line_(console::number(value)), json_(jsonNumber(value)) {}

Results::Cell::Cell(const std::string& value) : line_(oneLine(value)), json_(jsonText(value)) {}

std::string Results::tableLines(const std::vector<std::string>& columns, const std::vector<Row>& rows) {
  std::string lines;
  for (const std::string& column : columns) lines += rightAligned(column);
  for (const Row& row : rows) {
    lines += '\n';
    for (const Cell& cell : row) lines += rightAligned(cell.line_);
  }
  return lines;
}

std::string Results::tableJson(const std::vector<std::string>& columns, const std::vector<Row>& rows) {
  std::string json = "[";
  for (const Row& row : rows) {
    json += json.size() == 1 ? "\n    {" : ",\n    {";
    for (std::size_t i = 0; i < columns.size(); ++i) {
      json.append(i == 0 ? "" : ", ").append(jsonText(keyOf(columns[i]))).append(": ").append(row[i].json_);
    }
    json += "}";
  }
  return json + (rows.empty() ? "]" : "\n  ]");
}

void Results::add(const std::string& label, const std::string& line, const std::string& json) {
  items_.push_back({label, line, json, false});
}

void Results::text(const std::string& label, const std::string& value) { add(label, oneLine(value), jsonText(value)); }

void Results::count(const std::string& label, long long value) {
  add(label, std::to_string(value), std::to_string(value));
}

void Results::number(const std::string& label, double value) { add(label, console::number(value), jsonNumber(value)); }

void Results::number(const std::string& label, double value, int decimals) {
  add(label, U::roundHalfUp(decimals, value), jsonNumber(value));
}

void Results::flag(const std::string& label, bool value) { add(label, value ? "yes" : "no", value ? "true" : "false"); }

void Results::range(const std::string& label, double low, double high) {
  add(label, console::number(low) + " .. " + console::number(high),
      std::string("[").append(jsonNumber(low)).append(", ").append(jsonNumber(high)).append("]"));
}

void Results::table(const std::string& label, const std::vector<std::string>& columns, const std::vector<Row>& rows) {
  items_.push_back({label, tableLines(columns, rows), tableJson(columns, rows), true});
}

void Results::printLines() const {
  for (const Item& item : items_) {
    if (item.isTable) {
      std::cout << '\n' << item.label << '\n' << item.line << '\n';
    } else {
      std::cout << U::appentStr4Length(item.label, kLabelWidth) << item.line << '\n';
    }
  }
}

void Results::printJson() const {
  std::cout << "{\n";
  for (std::size_t i = 0; i < items_.size(); ++i) {
    std::cout << "  " << jsonText(keyOf(items_[i].label)) << ": " << items_[i].json
              << (i + 1 < items_.size() ? ",\n" : "\n");
  }
  std::cout << "}\n";
}

void Results::print(bool json) const {
  progress::clear();
  if (json) {
    printJson();
  } else {
    printLines();
  }
}
