// Different files, read and written in different threads; reports and texts.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <tinyxml.h>

#include <OrvikDTMAlgorithm/platform/Platform.h>

#include "AtOnce.h"
#include "Sites.h"

namespace {

namespace fs = std::filesystem;

using sites::surfaceOf;
using sites::SurfacePtr;

constexpr int kThreads = 6;
constexpr const char* kLabels = "A,B,C,D,E,F,G,H,I,J,K,L";

class Files : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("orvikdtm-threads-" + std::to_string(std::random_device()()));
    for (int i = 0; i < kThreads; ++i) fs::create_directories(folder_ / std::to_string(i));
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string path(int thread, const std::string& name) const {
    return (folder_ / std::to_string(thread) / name).string();
  }
  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  static std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
  }

  static SurfacePtr load(const std::string& path, int kind) {
    SurfacePtr surface(new DTMSurface);
    return DTMFileOperation().loadSurface(path.c_str(), kind, surface.get()) ? std::move(surface) : nullptr;
  }

  fs::path folder_;
};

TEST_F(Files, SavedAndLoadedSurfacesAreTheSame) {
  expectSameAtOnce(kThreads, [this](int thread) {
    Findings found;
    for (int round = 0; round < 4; ++round) {
      const SurfacePtr surface = surfaceOf(sites::scattered(10 * thread + round, 60 + 10 * thread));
      surface->setSurfaceName("Site");
      const std::string ttin = path(thread, "site.ttin"), sjw = path(thread, "site.sjw");
      found.note(DTMFileOperation().saveSurfaces(ttin.c_str(), surface.get()) ? 1 : 0);
      found.note(surface->exportFileSJW(sjw.c_str()) ? 1 : 0);
      found.note(contentsOf(ttin));
      found.note(contentsOf(sjw));
      found.note(load(ttin, 0)->toString());
      found.note(load(sjw, 1)->toBytes());
    }
    std::vector<std::string> listed = DTMFileOperation().getSurfaceByPath(path(thread, "").c_str(), ".ttin");
    for (const std::string& file : listed) found.note(file);
    return found;
  });
}

// All in one folder, where each file is written beside its target first.
TEST_F(Files, SavesIntoOneFolderAreTheSame) {
  expectSameAtOnce(kThreads, [this](int thread) {
    Findings found;
    const SurfacePtr surface = surfaceOf(sites::scattered(thread, 30));
    const std::string file = path("site" + std::to_string(thread) + ".ttin");
    for (int round = 0; round < 10; ++round) {
      found.note(DTMFileOperation().saveSurfaces(file.c_str(), surface.get()) ? 1 : 0);
      found.note(contentsOf(file));
    }
    return found;
  });
  const auto isLeft = [](const fs::directory_entry& entry) { return entry.path().filename().string()[0] == '.'; };
  EXPECT_TRUE(std::none_of(fs::directory_iterator(folder_), fs::directory_iterator(), isLeft));
}

TEST_F(Files, PointAndBoundaryFilesAreTheSame) {
  expectSameAtOnce(kThreads, [this](int thread) {
    Findings found;
    std::ofstream csv(path(thread, "points.csv"));
    for (int i = 0; i < 200; ++i) csv << i << ",code," << i * 7 % 100 << ".25," << i * 13 % 90 + thread << ",1.5e1\n";
    csv.close();
    const SurfacePtr surface(new DTMSurface);
    std::vector<SurfacePoint*> read;
    surface->loadSurfacePointsFile(path(thread, "points.csv").c_str(), read);
    found.note(surface->toString());

    std::vector<RangePoint*> boundary;
    for (int i = 0; i < 20; ++i) boundary.push_back(new RangePoint{{}, i * 1.25, i * i + thread / 3.0, 0});
    const std::string waa = path(thread, "b.waa");
    bool first = false, second = true;
    found.note(DTMFileOperation().saveRangePointFile(waa.c_str(), true, false, boundary) ? 1 : 0);
    found.note(contentsOf(waa));
    found.note(DTMFileOperation().loadRangePointFile(waa.c_str(), &first, &second, boundary) ? 1 : 0);
    for (const RangePoint* vertex : boundary) {
      found.note(vertex->e);
      delete vertex;
    }
    return found;
  });
}

TEST_F(Files, ReportsAreTheSame) {
  expectSameAtOnce(kThreads, [this](int thread) {
    Findings found;
    const SurfacePtr surface = surfaceOf(sites::scattered(thread, 50));
    const std::unique_ptr<FillCutResult> result(surface->getFillCut(9.0 + thread));
    for (const int form : {0, 1}) {
      const std::string report = path(thread, "report");
      DTMFileOperation files;
      found.note(files.exportVolumeReport(result.get(), surface.get(), form, 9.0, kLabels, report.c_str()) ? 1 : 0);
      found.note(contentsOf(report));
      found.note(files.exportVolumeReport(result.get(), surface.get(), form, "Ref", kLabels, report.c_str()) ? 1 : 0);
      found.note(contentsOf(report));
    }
    return found;
  });
}

// A fan of triangles whose texts hold runs of blanks and line ends.
std::string landXML(int thread) {
  std::ostringstream text;
  text << "<LandXML>\n <Surfaces><Surface><Definition surfType=\"TIN\">\n<Pnts>";
  constexpr int kPoints = 60;
  for (int i = 1; i <= kPoints; ++i) {
    text << "<P id=\"" << i << "\">\n   " << i * i * 0.5 << "\n  " << 100 - i + thread << "\n " << i % 7 << "  </P>\n";
  }
  text << "</Pnts>\n<Faces>";
  for (int i = 2; i < kPoints; ++i) text << "<F> 1 \n " << i << "\n" << i + 1 << " </F>";
  text << "</Faces></Definition></Surface></Surfaces></LandXML>\n";
  return text.str();
}

// The parser condenses white space or not for the whole process, as the host has chosen; the import needs it condensed.
TEST_F(Files, LandXMLIsTheSameWhateverTheParserIsSetTo) {
  for (const bool isCondensed : {true, false}) {
    TiXmlBase::SetCondenseWhiteSpace(isCondensed);
    expectSameAtOnce(kThreads, [this](int thread) {
      Findings found;
      const std::string xml = path(thread, "site.xml");
      std::ofstream(xml) << landXML(thread);
      for (int round = 0; round < 8; ++round) {
        const SurfacePtr surface = load(xml, 2);
        found.note(surface == nullptr ? std::vector<unsigned char>() : surface->toBytes());
      }
      return found;
    });
    EXPECT_EQ(TiXmlBase::IsWhiteSpaceCondensed(), isCondensed);
    EXPECT_EQ(load(path(0, "site.xml"), 2)->getTrianglesNumber(), 58);
  }
  TiXmlBase::SetCondenseWhiteSpace(true);
}

TEST(Texts, ConversionsAndNumbersGiveTheSame) {
  expectSameAtOnce(kThreads, [](int thread) {
    Findings found;
    for (int i = 0; i < 200; ++i) {
      const double value = (i - 100) * 1.37e-3 * (thread + 1);
      found.note(U::toString(4, value));
      found.note(U::toString(value));
      found.note(U::roundHalfUp(3, value));
      found.note(
          U::ansiToUTF8("Fl\xc3\xa4"
                        "che " +
                        U::intToString(i)));
      found.note(U::utf8ToANSI(U::l2kNonLocalized(value)));
#if !defined(_WIN32)
      found.note(detail::convertText("\xb8\xdf\xb3\xcc", "GBK", "UTF-8"));
#endif
    }
    found.note(static_cast<int>(U::currentTimeMillis().size() > 20));
    return found;
  });
}

}  // namespace
