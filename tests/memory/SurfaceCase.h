// What the operations of the published classes are tried on: a library with two surfaces, files for them to read, one
// that they write over, and members for what they give.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

namespace memory {

// The files, written once. Each case gets a fresh folder for what it writes.
class Files {
 public:
  static const Files& all();
  ~Files();
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;

  std::string path(const std::string& name) const { return (folder_ / name).string(); }
  const std::filesystem::path& folder() const { return folder_; }

 private:
  Files();
  std::filesystem::path folder_;
};

// A few metres of ground with no two heights alike, so small that a volume is split into few pieces. Grounds of
// different lift cross each other.
std::vector<SurfacePoint*> newGround(int count, double lift);

// The folder that operations write to: one file, as it was.
void resetTargets();
std::string textOfTargets();

// A boundary within the ground, three corners.
std::vector<RangePoint> boundary();
std::vector<RangePoint*> pointersTo(std::vector<RangePoint>& vertices);

// Texts of what can be seen.
std::string textOf(const std::vector<SurfacePoint*>& points);
std::string textOf(DTMSurface& surface);
std::string textOf(const CEType& tin);
std::string textOf(const FillCutResult& result);

struct SurfaceCase {
  SurfaceCase();
  ~SurfaceCase();
  SurfaceCase(const SurfaceCase&) = delete;
  SurfaceCase& operator=(const SurfaceCase&) = delete;

  std::string describe();
  void forget();

  DTMSurface& site() { return *library.getSurface(0); }
  DTMSurface& design() { return *library.getSurface(1); }
  std::string target() const { return Files::all().path("target/file.txt"); }

  // Says that the operation writes files.
  void startWriting() {
    writes = true;
    resetTargets();
  }

  DTMSurfaceLib library;
  std::unique_ptr<SurfacePoint> spare;  // a record that the case still owns
  std::vector<SurfacePoint> array;      // a caller's own records
  std::vector<RangePoint*> vertices;
  std::vector<SurfacePoint*> replaced;  // records that a load takes from the surface without releasing them

  // What an operation gave.
  std::string text;
  std::vector<unsigned char> bytes;
  std::vector<double> numbers;
  std::vector<DrawLine*> lines;
  std::vector<TPoint*> points;
  std::vector<SurfacePoint*> listed;  // the surface's records
  std::vector<std::string> names;
  std::unique_ptr<FillCutResult> result;
  std::unique_ptr<CEType> tin;
  DTMSurface* copy = nullptr;

  bool writes = false;
};

}  // namespace memory
