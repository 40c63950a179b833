#include "Height.h"

#include <algorithm>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>

#include <CLI/CLI.hpp>

#include "Console.h"
#include "Options.h"
#include "OutputFile.h"
#include "Paths.h"
#include "PlaceFile.h"
#include "Progress.h"
#include "Results.h"
#include "SurfaceFile.h"
#include "TextLines.h"
#include "UserText.h"

namespace {

struct HeightOrder {
  std::string surface;
  std::string at;
  std::string points;
  std::string output;
  bool json = false;
};

constexpr int kDecimals = 4;  // a tenth of a millimetre, as in the reports
constexpr double kRead = 0.6;
constexpr std::size_t kPlacesBetweenShows = 50000;

void requireOneQuestion(const CLI::App& command) {
  const bool at = options::isGiven(command, "--at");
  const bool points = options::isGiven(command, "--points");
  if (at && points) throw console::WrongUsage("--at and --points exclude each other: give one");
  if (!at && !points) throw console::WrongUsage("--at or --points is required");
  if (at && options::isGiven(command, "--out")) throw console::WrongUsage("--out needs --points");
}

Place placeOf(const std::string& text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string::npos || text.find(',', comma + 1) != std::string::npos) {
    throw console::WrongUsage("--at " + quoted(text) + " is not a place: give easting,northing");
  }
  Place place;
  place.x = options::numberOf("--at", text.substr(0, comma));
  place.y = options::numberOf("--at", text.substr(comma + 1));
  return place;
}

std::optional<double> heightAt(DTMSurface& surface, const Place& place) {
  double height = 0.0;
  if (surface.checkSurfacePoint(place.y, place.x, &height) != 1) return std::nullopt;
  return height;
}

SurfacePtr read(const std::string& path) {
  const progress::Part part(0.0, kRead);
  return readSurface(path);
}

void answerOne(const HeightOrder& order) {
  const Place place = placeOf(order.at);
  const std::string path = resolvedPath(order.surface);
  const SurfacePtr surface = read(path);
  const std::optional<double> height = heightAt(*surface, place);
  if (!height) {
    throw console::Failure(shownPath(path) + ": easting " + console::number(place.x) + ", northing " +
                           console::number(place.y) + " lies outside the surface");
  }
  Results results;
  results.text("Surface", surfaceName(path));
  results.number("Easting", place.x);
  results.number("Northing", place.y);
  results.number("Height", *height, kDecimals);
  results.print(order.json);
}

// The heights at all places, nothing outside the surface.
std::vector<std::optional<double>> heightsAt(DTMSurface& surface, const std::vector<Place>& places) {
  const progress::Part part(kRead, 1.0);
  std::vector<std::optional<double>> heights;
  heights.reserve(places.size());
  for (const Place& place : places) {
    if (heights.size() % kPlacesBetweenShows == 0) {
      progress::show("looking up heights", static_cast<double>(heights.size()) / static_cast<double>(places.size()));
    }
    heights.push_back(heightAt(surface, place));
  }
  return heights;
}

// A point file, so that what was looked up can be read as a survey; the elevation stays empty outside the surface.
std::string csvOf(const std::vector<Place>& places, const std::vector<std::optional<double>>& heights) {
  std::string text;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const Place& place = places[i];
    for (const std::string* field : {&place.name, &place.code, &place.easting, &place.northing}) {
      text.append(*field).append(1, ',');
    }
    if (heights[i]) text.append(U::roundHalfUp(kDecimals, *heights[i]));
    text.append(1, '\n');
  }
  return text;
}

void printJson(const std::string& surface, const std::vector<Place>& places,
               const std::vector<std::optional<double>>& heights) {
  std::vector<Results::Row> rows;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const double height = heights[i].value_or(std::numeric_limits<double>::quiet_NaN());  // null in JSON
    rows.push_back({places[i].name, places[i].x, places[i].y, height});
  }
  Results results;
  results.text("Surface", surface);
  results.table("Points", {"Name", "Easting", "Northing", "Height"}, rows);
  results.print(true);
}

void warnOfOutside(const std::string& path, const std::vector<std::optional<double>>& heights) {
  const auto outside = std::count(heights.begin(), heights.end(), std::nullopt);
  if (outside == 0) return;
  console::warn(shownPath(path) + ": " + std::to_string(outside) + " of " +
                console::counted(static_cast<long long>(heights.size()), "point") + " outside the surface");
}

void answerMany(const HeightOrder& order, const CLI::App& command) {
  const std::string path = resolvedPath(order.surface);
  const std::string points = resolvedPath(order.points);
  std::string output;
  if (options::isGiven(command, "--out")) {
    output = options::outputPath("--out", order.output);
    for (const std::string& input : {path, points}) requireOtherFile("--out", output, input);
    requireTarget(output, "table");
  }
  const std::vector<Place> places = readPlaces(points);
  const SurfacePtr surface = read(path);
  const std::vector<std::optional<double>> heights = heightsAt(*surface, places);
  warnOfOutside(points, heights);
  if (!output.empty()) writeText(output, "table", csvOf(places, heights));
  progress::clear();
  if (order.json) {
    printJson(surfaceName(path), places, heights);
  } else if (output.empty()) {
    std::cout << csvOf(places, heights);
  }
}

}  // namespace

Command addHeight(CLI::App& app) {
  const auto order = std::make_shared<HeightOrder>();
  CLI::App* const command = app.add_subcommand("height", "Look up heights at one place or at the points of a file");
  options::addSurface(*command, "SURFACE", order->surface);
  command->add_option("--at", order->at, "One place, easting and northing")->type_name("EASTING,NORTHING");
  options::addFile(*command, "--points", order->points,
                   "Many places, a line each: easting,northing; name,easting,northing; or as in a point file");
  options::addFile(*command, "--out", order->output,
                   "Point file to write, name,code,easting,northing,height; standard output when left out");
  options::addJson(*command, order->json);
  options::addExample(*command, "height ground.csv --at 1050,2025");
  return {command, {"SURFACE"}, [order, command] {
            requireOneQuestion(*command);
            if (options::isGiven(*command, "--at")) {
              answerOne(*order);
            } else {
              answerMany(*order, *command);
            }
          }};
}
