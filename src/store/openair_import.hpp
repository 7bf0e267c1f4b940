// Converts OpenAir airspace text (AC, AN, AL, AH, DP, V X=, V D=, DA, DB, DC) into the airspace
// file's line layout, so that current airspace data can be flown with.
#pragma once

#include <filesystem>
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

struct OpenAirImport {
    bool ok = false;
    std::string error;  // why nothing was written
    OpenAirConversion conversion;
    std::filesystem::path backup;  // the replaced airspace file's numbered copy, if there was one
};

// Converts the OpenAir file `source` into the airspace file `target`. The new file replaces the
// old one in one step, and the old one is kept as <target>.1, .2, ... A file without any outline
// (not OpenAir at all, or nothing but broken lines) is refused and target stays as it was.
OpenAirImport ImportOpenAir(const std::filesystem::path& source,
                            const std::filesystem::path& target);

// Reads "52:30:15 N 001:20:00 W", "52:30.25N 1:20W" or decimal degrees with hemisphere letters into
// CentiMinutes; false when the text is not a coordinate pair.
bool ParseOpenAirCoordinate(std::string_view text, double* latitude, double* longitude);

}  // namespace aerix
