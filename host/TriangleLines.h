// The look through a ".sjw" triangle file, or through the points and faces of a LandXML file, before the library reads
// it. Both throw a Failure that names the file, the line and the field, or warn of what the library leaves out.
#pragma once

#include <string>

void checkTriangleFile(const std::string& path);
void checkLandXml(const std::string& path);
