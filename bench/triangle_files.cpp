// Triangle files: writing and reading back ".sjw", and importing LandXML beside what its XML parser alone takes.
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <tinyxml.h>
#include <unistd.h>

#include <OrvikDTMAlgorithm/surface/DTMSurface.h>
#include <OrvikDTMAlgorithm/tin/TList.h>

#include "Inputs.h"
#include "Measure.h"
#include "Model.h"

namespace bench {

namespace {

// A file that goes with its owner, in the folder for temporary files.
class ScratchFile {
 public:
  explicit ScratchFile(const std::string& extension)
      : path_(std::filesystem::temp_directory_path() / ("orvikdtm-bench-" + std::to_string(getpid()) + extension)) {}
  ~ScratchFile() { std::filesystem::remove(path_); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

void expectTriangles(const CEType* read, const CEType& written) {
  if (read == nullptr || read->getTList()->getListLen() != written.getTList()->getListLen()) {
    throw std::runtime_error("the file that was read back does not hold the triangles that were written");
  }
}

void measureSJW(benchmark::State& state, const std::string& cloud) {
  const ScratchFile file(".sjw");
  Survey survey(makeCloud(cloud));
  const std::unique_ptr<CEType> tin = build(survey);
  DTMSurface surface;
  surface.setCEType(tin.get());  // the surface leaves its TIN behind when it goes
  for ([[maybe_unused]] auto iteration : state) {
    const std::unique_ptr<CEType> read = timed(state, [&] {
      surface.exportFileSJW(file.path().c_str());
      return std::unique_ptr<CEType>(CEType::initCETypeFromSJW(file.path().c_str()));
    });
    expectTriangles(read.get(), *tin);
  }
}

// ---- LandXML

// What a surveying program would write of a TIN: points by identifier, faces by their points' identifiers, and what
// such programs like to add.
class LandXMLText {
 public:
  LandXMLText(const CEType& tin, const Survey& survey) : first_(survey.points.data()) {
    text_ =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<LandXML version=\"1.2\"><Surfaces><Surface name=\"ground\">\n";
    text_ += "<Definition surfType=\"TIN\">\n<Pnts>\n";
    for (const TPoint& p : survey.points) add(p);
    text_ += "</Pnts>\n<Faces>\n";
    const int count = tin.getTList()->getListLen();
    for (int number = 1; number <= count; ++number) addFace(tin, number);
    text_ += "</Faces></Definition></Surface></Surfaces></LandXML>\n";
  }

  const std::string& text() const { return text_; }

 private:
  void add(const TPoint& p) {
    std::array<char, 160> line;
    const int length =
        std::snprintf(line.data(), line.size(),
                      "      <P id=\"%td\" featureRef=\"survey ground\" code=\"GR\">%.12f %.12f %.12f</P>\n",
                      &p - first_ + 1, p.getY(), p.getX(), p.getZ());
    text_.append(line.data(), static_cast<std::size_t>(length));
  }

  void addFace(const CEType& tin, int number) {
    std::array<char, 160> line;
    const std::array<const TPoint*, 3> p = cornersOf(tin, number);
    const int length = std::snprintf(line.data(), line.size(),
                                     "      <F i=\"0\" n=\"%d %d %d\" featureRef=\"survey\">%td %td %td</F>\n", number,
                                     number + 1, number + 2, p[0] - first_ + 1, p[1] - first_ + 1, p[2] - first_ + 1);
    text_.append(line.data(), static_cast<std::size_t>(length));
  }

  const TPoint* first_;
  std::string text_;
};

// A file of 200 k points and 400 k faces, about 50 MB.
struct LandXMLFile {
  ScratchFile file{".xml"};
  Survey survey{cloudNamed("uniform_200k_sweep")};
  std::unique_ptr<CEType> tin{build(survey)};

  LandXMLFile() { std::ofstream(file.path(), std::ios::binary) << LandXMLText(*tin, survey).text(); }
};

const LandXMLFile& landXMLFile() {
  static const LandXMLFile file;
  return file;
}

void importLandXML(benchmark::State& state) {
  const LandXMLFile& given = landXMLFile();
  for ([[maybe_unused]] auto iteration : state) {
    const std::unique_ptr<CEType> read =
        timed(state, [&] { return std::unique_ptr<CEType>(CEType::initCETypeFromLandXml(given.file.path().c_str())); });
    expectTriangles(read.get(), *given.tin);
  }
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(given.file.path()));
}

void loadWithParser(benchmark::State& state) {
  const LandXMLFile& given = landXMLFile();
  for ([[maybe_unused]] auto iteration : state) {
    TiXmlDocument document;
    const bool loaded = timed(state, [&] { return document.LoadFile(given.file.path()); });
    if (!loaded) throw std::runtime_error("the XML parser does not load the file");
  }
}

[[maybe_unused]] const bool added = [] {
  for (const char* cloud : {"uniform_100k_sweep", "uniform_100k_exact"}) {
    add(std::string("sjw/ours/") + cloud, 3, [cloud](benchmark::State& state) { measureSJW(state, cloud); });
  }
  add("landxml/ours/uniform_200k_sweep", 1, importLandXML);
  add("landxml/tinyxml/uniform_200k_sweep", 1, loadWithParser);
  return true;
}();

}  // namespace

}  // namespace bench
