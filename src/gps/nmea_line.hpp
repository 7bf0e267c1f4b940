// What the receiver's reader, playback and the nmea tool do with each completed line, so that all
// three run the same code: recording test, cutting of the line end, the "$" and length filter,
// the idle-timer reset and the sentence table's parser. Publishing and recording the fix stay
// with the callers.
#pragma once

#include <string_view>

#include "gps/gps_fix.hpp"

namespace aerix {

// Characters four to six are "RMC" (any talker: GPRMC, GNRMC, LCRMC ...).
bool IsRmcLine(std::string_view line) noexcept;

// Handles one completed line (bytes before the line feed) into fix: cuts the last character
// (the carriage return; a line ending in LF alone loses a real one), skips lines shorter than 6
// or not starting with "$", resets the idle timer, and parses the sentence types the table reads
// (nmea_sentence.hpp) unless the instrument drawing thread is running. True when a parser ran.
bool HandleNmeaLine(std::string_view line, GpsFix& fix, bool drawingRunning) noexcept;

}  // namespace aerix
