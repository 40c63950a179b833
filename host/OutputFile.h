// A file that the program writes. Its place is looked at before the long work; it is made in a folder of its own and
// takes its place when it is whole, so an interruption or a full disk leaves the old file, or none.
#pragma once

#include <string>

// Throws a Failure, about the `what` that is to be written ("report"), unless a file can be written at the resolved
// path. Nothing is opened, made or changed.
void requireTarget(const std::string& path, const std::string& what);

// Throws WrongUsage when writing to `path`, which `option` named, would overwrite the file at `input`.
void requireOtherFile(const std::string& option, const std::string& path, const std::string& input);

// Throws WrongUsage when both options named the same file, where what is written first would be lost. An empty path is
// none.
void requireTwoFiles(const std::string& option, const std::string& path, const std::string& otherOption,
                     const std::string& otherPath);

class OutputFile {
 public:
  OutputFile(const std::string& path, const std::string& what);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Where to write it meanwhile: a file of the same name.
  const std::string& draft() const { return draft_; }

  // Puts the draft in its place.
  void finish();

  // Throws the Failure for a draft that could not be opened, or not be written to its end.
  [[noreturn]] void refuse() const;

 private:
  [[noreturn]] void refuseCut() const;
  [[noreturn]] void refuseFor(int error) const;
  void copy() const;
  void move() const;

  std::string path_;
  std::string what_;
  std::string target_;  // path_ with symbolic links followed
  std::string folder_;
  std::string draft_;
  bool beside_ = false;  // the draft can be renamed to its target
};

// Writes a text as such a file.
void writeText(const std::string& path, const std::string& what, const std::string& text);
