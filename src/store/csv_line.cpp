#include "store/csv_line.hpp"

namespace aerix {

bool SplitCsvLine(std::string_view line, std::vector<std::string>& fields) {
    fields.clear();
    std::size_t i = 0;
    while (true) {
        std::string field;
        if (i < line.size() && line[i] == '"') {
            ++i;
            bool closed = false;
            while (i < line.size()) {
                if (line[i] != '"') {
                    field += line[i++];
                } else if (i + 1 < line.size() && line[i + 1] == '"') {
                    field += '"';
                    i += 2;
                } else {
                    ++i;
                    closed = true;
                    break;
                }
            }
            if (!closed) {
                fields.push_back(std::move(field));
                return false;
            }
            // Text between the closing quote and the comma is kept, as spreadsheets do.
            while (i < line.size() && line[i] != ',')
                field += line[i++];
        } else {
            while (i < line.size() && line[i] != ',')
                field += line[i++];
        }
        fields.push_back(std::move(field));
        if (i >= line.size())
            return true;
        ++i;  // the comma
    }
}

}  // namespace aerix
