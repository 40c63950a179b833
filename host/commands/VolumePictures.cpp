#include "VolumePictures.h"

#include "Console.h"
#include "Paths.h"
#include "UserText.h"
#include "pictures/HtmlPage.h"
#include "pictures/PictureFile.h"

namespace {

void requireTarget(const std::string& option, const std::string& path, const std::string& ending,
                   const std::string& survey) {
  if (path.empty()) return;
  if (!U::endsWith(path, ending)) {
    throw console::WrongUsage(option + " " + quoted(path) + ": the name must end in " + ending);
  }
  pictures::requirePictureTarget(resolvedPath(path), option, survey);
}

pictures::ReportFacts factsOf(const VolumeComputed& computed) {
  const bool isLevel = computed.reference == nullptr;
  const DTMSurface& ground = computed.ground;
  pictures::ReportFacts facts;
  facts.computed.surface = computed.groundName;
  facts.computed.reference = isLevel ? "level " + console::number(computed.level) + " m" : computed.referenceName;
  facts.computed.result = &computed.result;
  facts.labels = computed.labels;
  facts.reference = isLevel ? pictures::reportNumber(computed.level) : computed.referenceName;
  facts.planArea = ground.getTwoDArea();
  facts.surfaceArea = ground.getThreeDArea();
  facts.planPerimeter = ground.getPerimeterTwoD();
  facts.surfacePerimeter = ground.getPerimeterThreeD();
  return facts;
}

}  // namespace

void requirePictureTargets(const VolumePictures& files, const std::string& survey) {
  requireTarget("--map", files.map, ".svg", survey);
  requireTarget("--html", files.html, ".html", survey);
}

void drawVolume(const VolumePictures& files, const VolumeComputed& computed) {
  if (files.map.empty() && files.html.empty()) return;
  const CEType* const reference = computed.reference == nullptr ? nullptr : computed.reference->getCEType();
  const auto scene = pictures::fillCutScene(*computed.ground.getCEType(), reference, computed.level);
  const pictures::ReportFacts facts = factsOf(computed);
  if (!files.map.empty()) {
    const std::string path = resolvedPath(files.map);
    pictures::writePicture(path, pictures::fillCutMap(scene, facts.computed));
    console::row("Map", path);
  }
  if (!files.html.empty()) {
    const std::string path = resolvedPath(files.html);
    pictures::writePicture(path, pictures::htmlPage(scene, facts));
    console::row("Page", path);
  }
}
