// LandXML files (docs/landxml.md): the points and faces of the first surface definition, read through TinyXML.
#include <array>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tinyxml.h>
#include <unordered_map>

#include <OrvikDTMAlgorithm/io/ImportedModel.h>
#include <OrvikDTMAlgorithm/io/TextLines.h>
#include <OrvikDTMAlgorithm/io/XMLGuard.h>
#include <OrvikDTMAlgorithm/platform/Platform.h>
#include <OrvikDTMAlgorithm/report/NumberText.h>
#include <OrvikDTMAlgorithm/surface/DTMSurface.h>

inline namespace OrvikDTM {
namespace {

using detail::Face;

// ---- the document

// The parser's process-wide switch, which a host that uses the parser too may have turned off: runs of white space
// become one blank while at least one of these lives, in whatever thread. The first one turns the switch on, the last
// one turns it back; where it was on already it is not touched, for the host's own threads may be reading it.
class CondensedWhiteSpace {
 public:
  CondensedWhiteSpace() {
    const std::lock_guard<std::mutex> lock(mutex);
    if (living++ != 0) return;
    isTurnedOn = !TiXmlBase::IsWhiteSpaceCondensed();
    if (isTurnedOn) TiXmlBase::SetCondenseWhiteSpace(true);
  }
  ~CondensedWhiteSpace() {
    const std::lock_guard<std::mutex> lock(mutex);
    if (--living == 0 && isTurnedOn) TiXmlBase::SetCondenseWhiteSpace(false);
  }
  CondensedWhiteSpace(const CondensedWhiteSpace&) = delete;
  CondensedWhiteSpace& operator=(const CondensedWhiteSpace&) = delete;

 private:
  inline static std::mutex mutex;
  inline static int living = 0;
  inline static bool isTurnedOn = false;
};

// Loads a document, all bytes being taken as they are: names and numbers are ASCII in every encoding that is in use, so
// a file that does not keep to the encoding that it declares loads as well. Positions within the file are not tracked.
bool load(const char* path, TiXmlDocument& document) {
  std::string text;
  if (!detail::readWholeFile(path, text) || !detail::makeReadyForParser(text)) return false;
  document.SetTabSize(0);
  const CondensedWhiteSpace condensed;
  document.Parse(text.c_str(), nullptr, TIXML_ENCODING_LEGACY);
  return !document.Error();
}

// The search for elements of a name: `start` itself, or those below it; within one that is found nothing is searched.
// Depth first, in document order; recursion is bounded by the depth of the document.
template <typename Visit>
void forEachNamed(const TiXmlElement& start, std::string_view name, Visit&& visit) {
  if (start.ValueStr() == name) {
    visit(start);
    return;
  }
  for (const TiXmlElement* child = start.FirstChildElement(); child != nullptr; child = child->NextSiblingElement()) {
    forEachNamed(*child, name, visit);
  }
}

const TiXmlElement* firstNamed(const TiXmlElement& start, std::string_view name) {
  if (start.ValueStr() == name) return &start;
  for (const TiXmlElement* child = start.FirstChildElement(); child != nullptr; child = child->NextSiblingElement()) {
    if (const TiXmlElement* found = firstNamed(*child, name)) return found;
  }
  return nullptr;
}

const TiXmlElement& partOf(const TiXmlElement& definition, std::string_view name) {
  const TiXmlElement* part = firstNamed(definition, name);
  if (part == nullptr) throw std::out_of_range("a LandXML surface definition lacks " + std::string(name));
  return *part;
}

// ---- its texts

// The integer in an attribute; 0 without it.
long long integerOf(const TiXmlElement& element, const char* attribute) {
  const char* text = element.Attribute(attribute);
  return text == nullptr ? 0 : detail::readInteger(text);
}

using Three = std::array<std::string_view, 3>;

// The first three parts, between blanks, of the text that an element begins with. False when there are fewer.
bool takeThree(const TiXmlElement& element, Three& parts) {
  const TiXmlNode* first = element.FirstChild();
  const TiXmlText* text = first == nullptr ? nullptr : first->ToText();
  return text != nullptr && detail::splitFields(std::string_view(text->ValueStr()), parts, ' ') == parts.size();
}

// ---- points and faces

class PointList {
 public:
  explicit PointList(const TiXmlElement& list) {
    forEachNamed(list, "P", [this](const TiXmlElement& element) { add(element); });
  }

  // An identifier that no point has stands for the first point. Throws std::out_of_range when there is no point at all.
  int positionOf(long long identifier) const {
    if (points_.empty()) throw std::out_of_range("a LandXML face names a point where there is none");
    const auto found = positions_.find(identifier);
    return found == positions_.end() ? 0 : found->second;
  }

  std::vector<TPoint> takePoints() { return std::move(points_); }

 private:
  void add(const TiXmlElement& element) {
    Three parts;
    if (!takeThree(element, parts)) return;
    const auto& [northing, easting, elevation] = parts;
    positions_.try_emplace(integerOf(element, "id"), static_cast<int>(points_.size()));
    points_.emplace_back(detail::readNumber(easting), detail::readNumber(northing), detail::readNumber(elevation));
  }

  std::vector<TPoint> points_;
  std::unordered_map<long long, int> positions_;  // of repeated identifiers the first
};

std::vector<Face> facesIn(const TiXmlElement& list, const PointList& points) {
  constexpr long long kInvisible = 1;
  std::vector<Face> faces;
  forEachNamed(list, "F", [&faces, &points](const TiXmlElement& element) {
    Three parts;
    if (integerOf(element, "i") == kInvisible || !takeThree(element, parts)) return;
    Face face{};
    for (std::size_t i = 0; i < parts.size(); ++i) face[i] = points.positionOf(detail::readInteger(parts[i]));
    faces.push_back(face);
  });
  return faces;
}

}  // namespace

CEType* CEType::initCETypeFromLandXml(const char* path) {
  TiXmlDocument document;
  if (!load(path, document)) return nullptr;
  const TiXmlElement* root = document.RootElement();
  const TiXmlElement* definition = root == nullptr ? nullptr : firstNamed(*root, "Definition");
  if (definition == nullptr) return nullptr;
  PointList points(partOf(*definition, "Pnts"));
  const std::vector<Face> faces = facesIn(partOf(*definition, "Faces"), points);
  if (faces.empty()) return nullptr;
  return detail::importedModel(points.takePoints(), faces).release();
}

bool DTMSurface::tryParseLandXML(const char* path) { return adoptImport(CEType::initCETypeFromLandXml(path), path); }

}  // namespace OrvikDTM
