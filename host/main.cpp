// orvikdtm: terrain models from survey points at the command line. This file runs a command and tells how it ended.
#include <exception>
#include <new>
#include <string>
#include <system_error>

#include <OrvikDTMAlgorithm/tin/Surface.h>

#include "CommandLine.h"
#include "Console.h"
#include "Interrupts.h"
#include "Progress.h"

namespace {

int run(int argc, char** argv) {
  CommandLine line;
  try {
    if (const Command* const command = line.parse(argc, argv)) command->run();
  } catch (const console::Fault&) {
    console::finish();  // a fault is told by the results
    throw;
  }
  progress::clear();
  console::finish();
  return console::kDone;
}

constexpr const char* kNotEnoughMemory = "not enough memory: close other programs, or use a part of the survey";

bool meansNoMemory(const std::error_code& code) {
  return code == std::errc::not_enough_memory || code == std::errc::resource_unavailable_try_again;
}

int report(int status, const std::string& text) {
  console::error(text);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  console::holdStreams();
  Surface::COMPAREUNSHIFTED = 1;  // a survey's repeated shots are repeats wherever the site lies
  try {
    interrupts::watch();
    return run(argc, argv);
  } catch (const console::WrongUsage& e) {
    return report(console::kWrongUsage, e.what());
  } catch (const console::Fault& e) {
    return report(console::kFault, e.what());
  } catch (const std::bad_alloc&) {
    return report(console::kFailed, kNotEnoughMemory);
  } catch (const std::system_error& e) {  // a thread finds no memory for its stack
    return report(console::kFailed, meansNoMemory(e.code()) ? kNotEnoughMemory : e.what());
  } catch (const std::exception& e) {
    return report(console::kFailed, e.what());
  }
}
