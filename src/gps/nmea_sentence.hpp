// The sentences the program reads, chosen by their type: characters four to six, after "$" and
// the two-letter talker (GPRMC, GNRMC, LCRMC ...). Reading one more sentence is one more row of
// the table in nmea_sentence.cpp.
#pragma once

#include <string_view>

#include "gps/gps_fix.hpp"

namespace aerix {

// Parses one whole sentence ("$GPRMC,...", no line end) into fix. Pure: it only fills the fix,
// and leaves publishing, logging and recording to the reader and playback.
using NmeaSentenceParser = void (*)(std::string_view sentence, GpsFix& fix) noexcept;

// The parser for the sentence's type; null for a type the program does not read (or a sentence
// too short to have one).
NmeaSentenceParser FindNmeaSentenceParser(std::string_view sentence) noexcept;

// Parses the sentence by its type into fix. False, with fix untouched, for a type not read.
bool ParseNmeaSentence(std::string_view sentence, GpsFix& fix) noexcept;

}  // namespace aerix
