#include "tools/output.hpp"

#include <cmath>
#include <cstdio>
#include <ostream>

namespace aerix::tools {

namespace {

std::string FormatDouble(double v) {
    if (!std::isfinite(v))
        return "null";
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.17g", v);
    std::string text(buf);
    // Keep it a JSON number that reads back as a double.
    if (text.find_first_of(".eE") == std::string::npos)
        text += ".0";
    return text;
}

void Dump(const Json& value, std::string& out) {
    switch (value.type()) {
        case Json::value_t::object: {
            out += '{';
            bool first = true;
            for (auto it = value.begin(); it != value.end(); ++it) {
                if (!first)
                    out += ", ";
                first = false;
                out += Json(it.key()).dump();
                out += ": ";
                Dump(it.value(), out);
            }
            out += '}';
            break;
        }
        case Json::value_t::array: {
            out += '[';
            for (std::size_t i = 0; i < value.size(); ++i) {
                if (i)
                    out += ", ";
                Dump(value[i], out);
            }
            out += ']';
            break;
        }
        case Json::value_t::number_float:
            out += FormatDouble(value.get<double>());
            break;
        default:
            out += value.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
}

std::string PlainValue(const Json& value) {
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_number_float()) {
        double v = value.get<double>();
        if (!std::isfinite(v))
            return std::isnan(v) ? "nan" : (v > 0 ? "inf" : "-inf");
        char buf[40];
        std::snprintf(buf, sizeof buf, "%.17g", v);
        return buf;
    }
    return DumpJson(value);
}

}  // namespace

std::string DumpJson(const Json& value) {
    std::string out;
    Dump(value, out);
    return out;
}

void Output::Emit(const Json& result) {
    if (json_) {
        out_ << DumpJson(result) << '\n';
        return;
    }
    if (!result.is_object()) {
        out_ << PlainValue(result) << '\n';
        return;
    }
    for (auto it = result.begin(); it != result.end(); ++it) {
        out_ << it.key() << ": " << PlainValue(it.value()) << '\n';
    }
    if (result.size() > 1)
        out_ << '\n';
}

}  // namespace aerix::tools
