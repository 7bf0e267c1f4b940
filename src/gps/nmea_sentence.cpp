#include "gps/nmea_sentence.hpp"

#include <cstring>

#include "gps/rmc_parser.hpp"

namespace aerix {

namespace {

struct SentenceRow {
    char type[4];
    NmeaSentenceParser parse;
};

constexpr SentenceRow kSentences[] = {
    {"RMC", ParseRmc},
};

}  // namespace

NmeaSentenceParser FindNmeaSentenceParser(std::string_view sentence) noexcept {
    if (sentence.size() < 6)
        return nullptr;
    const char* type = sentence.data() + 3;
    for (const SentenceRow& row : kSentences) {
        if (std::memcmp(type, row.type, 3) == 0)
            return row.parse;
    }
    return nullptr;
}

bool ParseNmeaSentence(std::string_view sentence, GpsFix& fix) noexcept {
    NmeaSentenceParser parse = FindNmeaSentenceParser(sentence);
    if (!parse)
        return false;
    parse(sentence, fix);
    return true;
}

}  // namespace aerix
