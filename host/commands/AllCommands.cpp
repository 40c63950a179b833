#include "AllCommands.h"

#include <CLI/CLI.hpp>

#include "Balance.h"
#include "Contours.h"
#include "Convert.h"
#include "Diff.h"
#include "Generate.h"
#include "Height.h"
#include "Info.h"
#include "Preview.h"
#include "Range.h"
#include "Volume.h"

std::vector<Command> addAllCommands(CLI::App& app) {
  return {addInfo(app),     addConvert(app), addHeight(app), addVolume(app), addBalance(app),
          addContours(app), addPreview(app), addRange(app),  addDiff(app),   addGenerate(app)};
}
