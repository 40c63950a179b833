// What makes a name visible outside the library, and the namespace that all public names live in.
//
// Public names stand inside `inline namespace OrvikDTM`: a host writes `TPoint`, the linker sees `OrvikDTM::TPoint`,
// and a host with a `TPoint` of its own cannot collide with ours at link time.
#pragma once

#include <OrvikDTMAlgorithm/FloatingPoint.h>

#if defined(ORVIKDTM_STATIC)
#define ORVIKDTM_API
#elif defined(_WIN32)
#if defined(ORVIKDTM_BUILDING)
#define ORVIKDTM_API __declspec(dllexport)
#else
#define ORVIKDTM_API __declspec(dllimport)
#endif
#else
#define ORVIKDTM_API __attribute__((visibility("default")))
#endif
