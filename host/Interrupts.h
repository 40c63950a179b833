// Ctrl-C, and being told to end, in the middle of writing: the folders that unfinished files lie in are removed before
// the program goes.
#pragma once

#include <mutex>
#include <string>

namespace interrupts {

// Watches for interruptions from now on, in a thread of its own, so that the clearing up may do what any code may. A
// write beyond the limit on the size of files is none: it fails with an error from now on.
void watch();

// A new folder by the pattern of mkdtemp(), for a file of that name. It is removed when the program is interrupted; ""
// when none can be made, with the reason in errno.
std::string makeFolder(std::string pattern, const std::string& file);

// Removes such a folder with what is in it.
void removeFolder(const std::string& folder);

// While this is held an interruption waits: for the moment in which a finished file takes its place.
std::unique_lock<std::mutex> hold();

}  // namespace interrupts
