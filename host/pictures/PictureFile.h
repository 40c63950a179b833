// The file that a picture is written to: looked at before the long work, and known to be whole after it.
#pragma once

#include <string>

namespace pictures {

// Throws a Failure unless a file can be written there, and WrongUsage when `path` is the survey itself. Nothing is
// opened, made or changed. `option` names the path in messages.
void requirePictureTarget(const std::string& path, const std::string& option, const std::string& survey);

// Writes `text`, or throws a Failure when not all of it could be written. A file that was there stays as it was until
// the new one is whole.
void writePicture(const std::string& path, const std::string& text);

}  // namespace pictures
