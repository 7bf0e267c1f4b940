// Converts OpenAir airspace text (AC, AN, AL, AH, DP, V X=, V D=, DA, DB, DC) into the airspace
// file's line layout, so that current airspace data can be flown with.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace aerix {

struct OpenAirProblem {
    int line = 0;
    std::string message;
};

struct OpenAirConversion {
    std::string text;  // airspace file lines, CR LF ended
    int outlines = 0;
    int lines = 0;
    std::vector<OpenAirProblem> problems;  // skipped input lines
};

OpenAirConversion ConvertOpenAir(std::string_view input);

// Reads "52:30:15 N 001:20:00 W", "52:30.25N 1:20W" or decimal degrees with hemisphere letters into
// CentiMinutes; false when the text is not a coordinate pair.
bool ParseOpenAirCoordinate(std::string_view text, double* latitude, double* longitude);

}  // namespace aerix
