// Results of aerix-tool: with --json one JSON object per result (JSON Lines when several, doubles
// with 17 significant digits); otherwise "key: value" lines a person can read.
#pragma once

#include <iosfwd>
#include <string>

#include <nlohmann/json.hpp>

namespace aerix::tools {

using Json = nlohmann::ordered_json;

// Compact JSON with doubles printed as %.17g (NaN and infinities, which JSON lacks, as null).
std::string DumpJson(const Json& value);

class Output {
  public:
    Output(std::ostream& out, bool json) : out_(out), json_(json) {}
    void Emit(const Json& result);
    bool IsJson() const { return json_; }

  private:
    std::ostream& out_;
    bool json_;
};

}  // namespace aerix::tools
