#include "VolumePictures.h"

#include "Console.h"
#include "OutputFile.h"
#include "UserText.h"
#include "pictures/HtmlPage.h"

namespace {

void requireEnding(const std::string& option, const std::string& path, const std::string& ending) {
  if (path.empty() || U::endsWith(path, ending)) return;
  throw console::WrongUsage(option + " " + shownPath(path) + ": the name must end in " + ending);
}

pictures::ReportFacts factsOf(const VolumeMeasurement& work, const std::string& labels) {
  const bool isLevel = work.reference == nullptr;
  const DTMSurface& ground = *work.ground;
  pictures::ReportFacts facts;
  facts.computed.surface = work.groundName;
  facts.computed.reference = isLevel ? "level " + console::number(work.level) + " m" : work.referenceName;
  facts.computed.result = work.result.get();
  facts.labels = labels;
  facts.reference = isLevel ? pictures::reportNumber(work.level) : work.referenceName;
  facts.planArea = ground.getTwoDArea();
  facts.surfaceArea = ground.getThreeDArea();
  facts.planPerimeter = ground.getPerimeterTwoD();
  facts.surfacePerimeter = ground.getPerimeterThreeD();
  return facts;
}

}  // namespace

void requireEndings(const VolumePictures& files) {
  requireEnding("--map", files.map, ".svg");
  requireEnding("--html", files.page, ".html");
}

void drawVolume(const VolumePictures& files, const VolumeMeasurement& work, const std::string& labels) {
  if (files.map.empty() && files.page.empty()) return;
  const CEType* const reference = work.reference == nullptr ? nullptr : work.reference->getCEType();
  const pictures::FillCutScene scene = pictures::fillCutScene(*work.ground->getCEType(), reference, work.level);
  const pictures::ReportFacts facts = factsOf(work, labels);
  if (!files.map.empty()) writeText(files.map, "map", pictures::fillCutMap(scene, facts.computed));
  if (!files.page.empty()) writeText(files.page, "page", pictures::htmlPage(scene, facts));
}
