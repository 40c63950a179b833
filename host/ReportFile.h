// The file that a volume report is written to: looked at before the long work, and known to be whole after it.
#pragma once

#include <string>

#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>

// Throws a Failure unless a report can be written there. Nothing is opened, made or changed.
void requireReportTarget(const std::string& path);

// Writes the text report with the twelve labels, or throws a Failure when not all of it could be written.
void writeReport(const std::string& path, const FillCutResult& result, const DTMSurface& surface, double level,
                 const std::string& labels);
