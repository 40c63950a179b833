// What a command has found, printed either as lines for people (label, then value in a column of its own) or as one
// JSON object for programs. A label in lower case with "_" for blanks is its JSON key. Lines show lengths to the
// millimetre; JSON has every digit.
#pragma once

#include <string>
#include <vector>

class Results {
 public:
  void text(const std::string& label, const std::string& value);
  void count(const std::string& label, long long value);
  void number(const std::string& label, double value);
  void flag(const std::string& label, bool value);  // "yes" or "no"; true or false
  void range(const std::string& label, double low, double high);

  // A number with so many decimals in the line for people.
  void number(const std::string& label, double value, int decimals);

  // Rows under a heading; in JSON an array of objects.
  class Cell {
   public:
    Cell(double value);              // NOLINT(google-explicit-constructor): a row is written as its values
    Cell(const std::string& value);  // NOLINT(google-explicit-constructor)

   private:
    friend class Results;
    std::string line_;
    std::string json_;
  };
  using Row = std::vector<Cell>;
  void table(const std::string& label, const std::vector<std::string>& columns, const std::vector<Row>& rows);

  void print(bool json) const;

 private:
  struct Item {
    std::string label;
    std::string line;
    std::string json;
    bool isTable = false;
  };

  void add(const std::string& label, const std::string& line, const std::string& json);
  static std::string tableLines(const std::vector<std::string>& columns, const std::vector<Row>& rows);
  static std::string tableJson(const std::vector<std::string>& columns, const std::vector<Row>& rows);
  void printLines() const;
  void printJson() const;

  std::vector<Item> items_;
};
