#include "HtmlPage.h"

#include <string_view>

#include "Model3D.h"
#include "Svg.h"
#include "WebParts.h"

namespace pictures {

namespace {

// The labels by their places in the report's list.
enum Label : std::size_t {
  kTitle,
  kSurface,
  kReference,
  kVolumes,
  kCutVolume,
  kFillVolume,
  kPlanArea,
  kSurfaceArea,
  kPlanPerimeter,
  kSurfacePerimeter,
  kCutAreas,
  kFillAreas,
  kLabels
};

using Row = std::pair<std::string, std::string>;

std::string table(const std::string& caption, const std::vector<Row>& rows) {
  std::string text = joined({"<table><caption>", escaped(caption), "</caption>\n"});
  for (const auto& [label, value] : rows) {
    text += joined({"<tr><th>", escaped(label), "</th><td>", escaped(value), "</td></tr>\n"});
  }
  return text + "</table>\n";
}

std::string figures(const ReportFacts& facts, const std::vector<std::string>& label) {
  const FillCutResult& result = *facts.computed.result;
  const auto row = [&](Label which, double value) { return Row(label[which], reportNumber(value)); };
  return table(label[kVolumes], {row(kCutVolume, result.getCutVolume()), row(kFillVolume, result.getFillVolume())}) +
         table(label[kCutAreas],
               {row(kPlanArea, result.getCutTwoDArea()), row(kSurfaceArea, result.getCutThreeDArea())}) +
         table(label[kFillAreas],
               {row(kPlanArea, result.getFillTwoDArea()), row(kSurfaceArea, result.getFillThreeDArea())}) +
         table(label[kSurface],
               {row(kPlanArea, facts.planArea), row(kSurfaceArea, facts.surfaceArea),
                row(kPlanPerimeter, facts.planPerimeter), row(kSurfacePerimeter, facts.surfacePerimeter)});
}

std::string terrainSection(const FillCutScene& scene) {
  if (web::view3d.empty()) {
    return "<section id=\"view\"><h2>3-D view</h2>\n"
           "<p>This page has no 3-D view: the program that made it was built without it.</p></section>\n";
  }
  return joined(
      {"<section id=\"view\"><div class=\"bar\"><h2>3-D view</h2>"
       "<label>Heights <input id=\"heights\" type=\"range\" min=\"1\" max=\"10\" step=\"0.5\" value=\"2\"></label>"
       "<output id=\"times\"></output></div>\n"
       "<div id=\"terrain\"></div>\n"
       "<p class=\"hint\">Drag to turn, wheel to come closer, drag with the right button to move. The grey sheet "
       "is what the ground is compared with.</p></section>\n"
       "<script type=\"application/json\" id=\"model\">",
       modelOf(scene), "</script>\n"});
}

std::string script(std::string_view code) { return joined({"<script>", code, "</script>\n"}); }

}  // namespace

std::string reportNumber(double v) {
  constexpr std::size_t kMoreDecimals = 2;  // than the four: the text has six, the last two of them zeros
  constexpr int kDecimals = 4;
  const std::string text = U::toString(kDecimals, v);
  return text.size() > kMoreDecimals ? text.substr(0, text.size() - kMoreDecimals) : text;
}

std::string htmlPage(const FillCutScene& scene, const ReportFacts& facts) {
  std::vector<std::string> label = U::split(facts.labels, ",");
  label.resize(kLabels);
  return joined(
      {"<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
       "<meta name=\"viewport\" content=\"width=device-width\">\n<title>",
       escaped(label[kTitle] + ": " + facts.computed.surface),
       "</title>\n<style>\n",
       web::style,
       "</style>\n</head>\n<body>\n<header><h1>",
       escaped(label[kTitle]),
       "</h1>\n<p>",
       escaped(label[kSurface]),
       ": <b id=\"surface\">",
       escaped(facts.computed.surface),
       "</b>, ",
       escaped(label[kReference]),
       ": <b id=\"reference\">",
       escaped(facts.reference),
       "</b></p></header>\n<main>\n<section id=\"figures\">\n",
       figures(facts, label),
       "</section>\n<section id=\"map\"><div class=\"bar\"><h2>Map</h2>"
       "<button id=\"closer\">+</button><button id=\"farther\">&minus;</button>"
       "<button id=\"whole\">Whole map</button></div>\n",
       fillCutMap(scene, facts.computed),
       "<p class=\"hint\">Drag to move, wheel to come closer.</p></section>\n",
       terrainSection(scene),
       "</main>\n",
       script(web::map),
       web::view3d.empty() ? std::string() : script(web::view3d),
       "</body>\n</html>\n"});
}

}  // namespace pictures
