// The parts of the HTML page that are written for the browser, from host/web/, as they were when the host was built.
#pragma once

#include <string_view>

namespace pictures::web {

extern const std::string_view style;
extern const std::string_view map;
extern const std::string_view view3d;  // empty where the host was built without npm

}  // namespace pictures::web
