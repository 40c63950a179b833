// A folder for the files of one test, which goes with it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

class ScratchFolder {
 public:
  ScratchFolder()
      : folder_(std::filesystem::temp_directory_path() / ("orvikdtm-io-" + std::to_string(std::random_device()()))) {
    std::filesystem::create_directories(folder_);
  }
  ~ScratchFolder() { std::filesystem::remove_all(folder_); }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string pathOf(const std::string& name) const { return (folder_ / name).string(); }

  std::string write(const std::string& name, const std::string& contents) const {
    std::ofstream(pathOf(name), std::ios::binary) << contents;
    return pathOf(name);
  }

  std::string read(const std::string& name) const {
    std::ifstream file(pathOf(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

 private:
  std::filesystem::path folder_;
};
