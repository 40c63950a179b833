#include "LineNotices.h"

#include <algorithm>

#include "Console.h"
#include "TextLines.h"
#include "UserText.h"

namespace {

const NumberField& numberField(orvik::LineField field) {
  if (field == orvik::LineField::Easting) return kEasting;
  return field == orvik::LineField::Northing ? kNorthing : kElevation;
}

// Empty for what is no failure. Any text stands for a switch that is off; a vertex there would be lost without a word.
std::string failureOf(const orvik::LineNotice& notice) {
  switch (notice.fault) {
    case orvik::LineFault::NotANumber:
      return notANumber(numberField(notice.field), notice.text, notice.line);
    case orvik::LineFault::TooLarge:
      return tooLarge(numberField(notice.field), notice.text);
    case orvik::LineFault::CarriageReturn:
      return kLoneReturn;
    case orvik::LineFault::NotASwitch:
      if (notice.text.find(',') == std::string::npos) return "";
      return "is " + quoted(notice.text) + ", not a switch: the first two lines of a boundary file are 0 or 1";
    case orvik::LineFault::TooFewFields:
    case orvik::LineFault::NotText:
      break;
  }
  return "";
}

}  // namespace

void requireUnderstood(const std::string& path, const orvik::LineReport& report) {
  if (!report.isRead) throw console::Failure(shownPath(path) + ": " + kUnreadable);
  const auto isNotText = [](const orvik::LineNotice& notice) { return notice.fault == orvik::LineFault::NotText; };
  if (std::any_of(report.notices.begin(), report.notices.end(), isNotText)) {
    throw console::Failure(shownPath(path) + ": " + kNoText);
  }
  for (const orvik::LineNotice& notice : report.notices) {
    const std::string failure = failureOf(notice);
    if (failure.empty()) continue;
    throw console::Failure(shownPath(path) + ":" + std::to_string(notice.line) + ": " + failure);
  }
}
