// Files that the system refuses to open, to write to their end or to read: every function of the classes and of the
// flat interface that takes a path answers with its failure, and leaves everything as it was.
#if !defined(_WIN32)

#include <memory>
#include <utility>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

#include "api/FlatTest.h"
#include "io/Limits.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kLabels = "A,B,C,D,E,F,G,H,I,J,K,L";
constexpr const char* kOld = "the old contents";

// What a process of the tests comes back with.
enum Outcome : int { kRefused = 0, kAnswersSuccess = 1, kChanged = 2, kNotAllowed = 3 };

// A library of two surfaces and a boundary, and the same as files.
class RefusedFiles : public FlatTest {
 protected:
  void SetUp() override {
    FlatTest::SetUp();
    library_ = newDTMSurfaceLib();
    ground_ = addSquare("Ground", 15, 16);
    design_ = addSquare("Design", 14, 18);
    for (const double side : {0.0, 5.0}) addRangePoint("B", 200 + side, 100 + side * side / 5, side);
    addRangePoint("B", 205, 100, 0);
    for (const auto& [index, name] : {std::pair{ground_, "ground.ttin"}, std::pair{design_, "design.ttin"}}) {
      ASSERT_EQ(1, saveSurface(index, path(name).c_str()));
    }
    ASSERT_EQ(1, exportFileSJW(ground_, path("ground.sjw").c_str()));
    ASSERT_EQ(1, saveRangePointFile(path("boundary.waa").c_str(), true, false));
    fill("points.csv", "P,,120,205,40\n");
    fill("ground.xml",
         "<LandXML><Definition><Pnts><P id=\"1\">0 0 1</P><P id=\"2\">0 10 2</P><P id=\"3\">10 0 3</P></Pnts>"
         "<Faces><F>1 2 3</F></Faces></Definition></LandXML>");
    fill("target", kOld);
    result_.reset(::getFillCut(path("ground.ttin").c_str(), 15.25, false));
    ASSERT_NE(nullptr, result_);
  }
  void TearDown() override {
    for (RangePoint* vertex : vertices_) delete vertex;
    for (SurfacePoint* copy : handed.pointRecords) freeSurfacePoint(copy);
    FlatTest::TearDown();
  }

  DTMSurface& ground() const { return *getSurface(ground_); }
  std::string target() const { return path("target"); }
  std::string groundFile() const { return path("ground.ttin"); }
  std::string designFile() const { return path("design.ttin"); }

  std::size_t entries() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

  // ---- writing

  struct Writer {
    const char* name;
    std::function<bool(const char* path)> write;
  };

  std::vector<Writer> writers() {
    std::vector<Writer> all = {
        {"DTMFileOperation::saveSurfaces", [this](auto* to) { return files_.saveSurfaces(to, &ground()); }},
        {"DTMSurfaceLib::saveSurface", [this](auto* to) { return library_->saveSurface(ground_, to) != 0; }},
        {"saveSurface", [this](auto* to) { return saveSurface(ground_, to) != 0; }},
        {"DTMSurface::exportFileSJW", [this](auto* to) { return ground().exportFileSJW(to); }},
        {"DTMSurfaceLib::exportFileSJW", [this](auto* to) { return library_->exportFileSJW(ground_, to) != 0; }},
        {"exportFileSJW", [this](auto* to) { return exportFileSJW(ground_, to) != 0; }},
        {"DTMFileOperation::saveRangePointFile",
         [this](auto* to) { return files_.saveRangePointFile(to, true, true, detail::flatState().rangePoints); }},
        {"saveRangePointFile", [](auto* to) { return saveRangePointFile(to, false, true) != 0; }},
        {"exportVolumeHtmlReport, level",
         [this](auto* to) { return files_.exportVolumeHtmlReport(result_.get(), &ground(), 15.25, kLabels, to); }},
        {"exportVolumeHtmlReport, surface",
         [this](auto* to) { return files_.exportVolumeHtmlReport(result_.get(), &ground(), "Design", kLabels, to); }},
        {"exportVolumeTxtReport, level",
         [this](auto* to) { return files_.exportVolumeTxtReport(result_.get(), &ground(), 15.25, kLabels, to); }},
        {"exportVolumeTxtReport, surface",
         [this](auto* to) { return files_.exportVolumeTxtReport(result_.get(), &ground(), "Design", kLabels, to); }},
    };
    for (const int kind : {0, 1}) addReports(kind, all);
    return all;
  }

  void addReports(int kind, std::vector<Writer>& all) {
    all.insert(all.end(),
               {{"DTMFileOperation::exportVolumeReport, level",
                 [=, this](auto* to) {
                   return files_.exportVolumeReport(result_.get(), &ground(), kind, 15.25, kLabels, to);
                 }},
                {"DTMFileOperation::exportVolumeReport, surface",
                 [=, this](auto* to) {
                   return files_.exportVolumeReport(result_.get(), &ground(), kind, "Design", kLabels, to);
                 }},
                {"DTMSurfaceLib::exportVolumeReport, level",
                 [=, this](auto* to) {
                   return library_->exportVolumeReport(static_cast<int>(ground_), 15.25, kind, kLabels, to) != 0;
                 }},
                {"DTMSurfaceLib::exportVolumeReport, surface",
                 [=, this](auto* to) {
                   return library_->exportVolumeReport(static_cast<int>(ground_), design_, kind, kLabels, to) != 0;
                 }},
                {"exportVolumeReport",
                 [=, this](auto* to) {
                   return ::exportVolumeReport(groundFile().c_str(), 15.25, true, kind, kLabels, to) != 0;
                 }},
                {"exportVolumeReport2", [=, this](auto* to) {
                   return exportVolumeReport2(groundFile().c_str(), designFile().c_str(), false, kind, kLabels, to) !=
                          0;
                 }}});
  }

  // Has every writer write to `path` in a process that `hamper` has prepared: none may answer success, end the process
  // or leave anything but the old file.
  void expectRefused(const std::string& path, const std::function<bool()>& hamper, const char* how) {
    const std::size_t before = entries();
    for (const Writer& writer : writers()) {
      const int outcome = inChild([&]() -> int {
        if (!hamper()) return kNotAllowed;
        return writer.write(path.c_str()) ? kAnswersSuccess : kRefused;
      });
      EXPECT_EQ(kRefused, outcome) << writer.name << ", " << how;
      EXPECT_EQ(kOld, contentsOf("target")) << writer.name << ", " << how;
      EXPECT_EQ(before, entries()) << writer.name << ", " << how;
    }
  }

  // ---- reading

  struct Reader {
    const char* name;
    std::function<bool()> reads;
  };

  std::vector<Reader> readers() {
    std::vector<Reader> all = {
        {"DTMSurface::tryParseSJW",
         [this] { return refills([this] { return ground().tryParseSJW(path("ground.sjw").c_str()); }); }},
        {"DTMSurface::tryParseLandXML",
         [this] { return refills([this] { return ground().tryParseLandXML(path("ground.xml").c_str()); }); }},
        {"CEType::initCETypeFromSJW", [this] { return is(CEType::initCETypeFromSJW(path("ground.sjw").c_str())); }},
        {"CEType::initCETypeFromLandXml",
         [this] { return is(CEType::initCETypeFromLandXml(path("ground.xml").c_str())); }},
        {"DTMSurface::loadSurfacePointsFile",
         [this] {
           return readsPoints([](auto* from, auto& out) { getSurface(0)->loadSurfacePointsFile(from, out); });
         }},
        {"DTMSurfaceLib::loadSurfacePointsFile",
         [this] {
           return readsPoints([this](auto* from, auto& out) { library_->loadSurfacePointsFile(ground_, from, out); });
         }},
        {"loadSurfacePointsFile", [this] { return ::loadSurfacePointsFile(ground_, path("points.csv").c_str()) != 0; }},
        {"DTMFileOperation::loadRangePointFile",
         [this] { return files_.loadRangePointFile(path("boundary.waa").c_str(), &first_, &second_, vertices_); }},
        {"DTMFileOperation::getSurfaceByPath",
         [this] { return !files_.getSurfaceByPath(folder_.c_str(), ".ttin").empty(); }},
        {"getSurfaceByPath", [this] { return ::getSurfaceByPath(folder_.c_str(), ".ttin"), !handed.surfaces.empty(); }},
        {"getFillCut", [this] { return is(::getFillCut(groundFile().c_str(), 15, false)); }},
        {"getFillCut2", [this] { return is(getFillCut2(groundFile().c_str(), designFile().c_str(), false)); }},
    };
    constexpr const char* kNames[] = {"ground.ttin", "ground.sjw", "ground.xml"};
    for (int kind = 0; kind < 3; ++kind) {
      const std::string from = path(kNames[kind]);
      all.insert(
          all.end(),
          {{"DTMFileOperation::loadSurface",
            [=, this] { return refills([&] { return files_.loadSurface(from.c_str(), kind, &ground()); }); }},
           {"DTMSurfaceLib::loadDTMSurface", [=, this] { return is(library_->loadDTMSurface(from.c_str(), kind)); }},
           {"loadDTMSurface", [=] { return is(loadDTMSurface(from.c_str(), kind)); }}});
    }
    return all;
  }

  // Whether there is a result. It is released, save a surface, which is its library's.
  template <typename Result>
  static bool is(Result* result) {
    const std::unique_ptr<Result> owned(result);
    return result != nullptr;
  }
  static bool is(DTMSurface* surface) { return surface != nullptr; }

  // A surface that is filled from a file leaves its earlier records to the host.
  template <typename Read>
  bool refills(const Read& read) const {
    const std::vector<SurfacePoint*> earlier = ground().getSurfacePoints();
    const bool isDone = read();
    if (!isDone) return false;
    for (const SurfacePoint* point : earlier) delete point;
    return true;
  }

  template <typename Read>
  bool readsPoints(const Read& read) const {
    std::vector<SurfacePoint*> out = {nullptr};
    read(path("points.csv").c_str(), out);
    return out.size() != 1;
  }

  // Everything that a refused read may not change. It is told through pointers, so that the TIN is the same one too.
  std::string state() const {
    std::ostringstream text;
    for (unsigned int i = 0; i < library_->getSurfacesNumber(); ++i) {
      DTMSurface& surface = *library_->getSurface(i);
      text << surface.toString() << surface.getCEType() << surface.getRangeMinX() << surface.getRangeMaxY();
      for (const SurfacePoint* point : surface.getSurfacePoints()) text << ' ' << point;
    }
    for (const RangePoint* vertex : detail::flatState().rangePoints) text << ' ' << vertex;
    text << first_ << second_ << handed.points.size() << handed.surfaces.size() << handed.vertices.size();
    return text.str();
  }

  DTMSurfaceLib* library_ = nullptr;
  unsigned int ground_ = 0;
  unsigned int design_ = 0;
  DTMFileOperation files_;
  std::unique_ptr<FillCutResult> result_;
  std::vector<RangePoint*> vertices_;
  bool first_ = false;
  bool second_ = true;
};

TEST_F(RefusedFiles, EveryWriterWritesWhereItMay) {
  for (const Writer& writer : writers()) {
    fill("target", "");
    EXPECT_TRUE(writer.write(target().c_str())) << writer.name;
    EXPECT_NE("", contentsOf("target")) << writer.name;
  }
}

TEST_F(RefusedFiles, AFileBeyondTheLimitIsNotWritten) {
  for (const rlim_t room : {0, 10}) {
    for (const char* name : {"target", "new"}) {
      expectRefused(
          path(name), [room] { return limitsFiles(room); }, "limited");
    }
  }
  EXPECT_FALSE(fs::exists(path("new")));
}

TEST_F(RefusedFiles, WithoutADescriptorNothingIsWritten) {
  for (const char* name : {"target", "new"}) expectRefused(path(name), takesDescriptors, "no descriptor");
  EXPECT_FALSE(fs::exists(path("new")));
}

TEST_F(RefusedFiles, ADeviceThatIsFullTakesNothing) {
  expectRefused(
      "/dev/full", [] { return true; }, "full device");
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(RefusedFiles, AFileBehindALinkIsNotWrittenEither) {
  fs::create_symlink("target", folder_ / "link");
  fs::create_hard_link(folder_ / "target", folder_ / "second name");
  for (const char* name : {"link", "second name"}) {
    expectRefused(
        path(name), [] { return limitsFiles(10); }, name);
    expectRefused(path(name), takesDescriptors, name);
  }
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(kOld, contentsOf("second name"));
}

TEST_F(RefusedFiles, WithoutADescriptorNothingIsReadAndNothingChanges) {
  registerAll();
  for (const Reader& reader : readers()) {
    EXPECT_EQ(kRefused, inChild([&]() -> int {
                const std::string before = state();
                if (!takesDescriptors()) return kNotAllowed;
                if (reader.reads()) return kAnswersSuccess;
                return before == state() ? kRefused : kChanged;
              }))
        << reader.name;
  }
  for (const Reader& reader : readers()) EXPECT_TRUE(reader.reads()) << reader.name << ", with descriptors";
}

// As with every file that cannot be read.
TEST_F(RefusedFiles, WithoutADescriptorTheBoundaryIsEmpty) {
  registerAll();
  EXPECT_EQ(kRefused, inChild([&]() -> int {
              if (!takesDescriptors()) return kNotAllowed;
              bool first = false;
              bool second = true;
              if (loadRangePointFile(path("boundary.waa").c_str(), &first, &second) != 0) return kAnswersSuccess;
              const bool untouched = !first && second && handed.vertices.empty();
              return untouched && detail::flatState().rangePoints.empty() ? kRefused : kChanged;
            }));
}

TEST_F(RefusedFiles, WithoutADescriptorFilesAreRemoved) {
  EXPECT_EQ(1, inChild([this]() -> int {
              if (!takesDescriptors()) return kNotAllowed;
              return deleteSurface(target().c_str()) == 1 && deleteSurface(path("absent").c_str()) == 1 &&
                     deleteSurface(folder_.c_str()) == 0;
            }));
  EXPECT_FALSE(fs::exists(target()));
}

}  // namespace

#endif
