#pragma once

#include "app/survey.h"
#include "rows/row_detection.h"

#include <cstdint>
#include <string>

class ErrorLog;

/// What the windows of the Trimble/EM-38 import ask for, handed from one to the next: nothing of it takes
/// effect before the last one is accepted.
struct TrimbleOptions {
    std::string path;          ///< the sensor file
    std::string errorLogPath;  ///< where rejected lines go

    double EMCutoff = 0;     ///< smallest accepted reading (mS/m), after the two conversions
    double MinDistance = 0;  ///< a gap greater than this (metres) starts a new row
    int MinLineLength = 1;   ///< a line is read only if it is longer than this (bytes)
    int DistanceMode = 1;    ///< 1 true distance, 2 along X, 3 along Y
    bool NegateEM = false;
    bool DivideEMBy10 = false;

    bool SiteIDPresent = false;
    bool TwoEMColumns = false;
    FieldColumns SiteIDField, XField, YField, EM1Field, EM2Field;
};

struct TrimbleImportResult {
    Survey survey;            ///< a new one, with distances and rows when it has sites
    std::int64_t errors = 0;  ///< rejected lines
    RowDetection rows = RowDetection::Assigned;
    std::string logProblem;  ///< path and reason if the error log could not be written, else empty
};

/// Reads a fixed-column sensor file into a new survey, rejecting line by line what cannot be used into the
/// error log, and finds distances and rows. Throws RunTimeError, leaving the last import's error log, when
/// the file cannot be read or a distance overflows.
TrimbleImportResult importTrimbleFile(const TrimbleOptions& options);

/// The reading alone: sites and parameters, NumRows 0. Returns the number of rejected lines.
std::int64_t readTrimbleFile(const TrimbleOptions& options, Survey& survey, ErrorLog& log);
