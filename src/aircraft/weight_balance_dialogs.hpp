// The weight-and-balance dialogs of the current aircraft: the loading dialog (a weight for each
// station, the fuel in the aircraft's fuel units) and the result dialog (total weight, moment,
// centre of gravity, the envelope graph and the verdict). The loading passes between them in
// AircraftState::WbLoading.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "aircraft/aircraft_state.hpp"
#include "aircraft/weight_balance.hpp"
#include "settings/settings_state.hpp"
#include "store/records.hpp"

namespace aerix {

class WeightBalanceLoadingDialog {
  public:
    static constexpr std::string_view kTitle = "Weight and balance";

    struct Row {
        StationRecord Station;
        std::string Text;    // weight, or fuel quantity on a fuel row
        bool Fixed = false;  // the basic aircraft row: its weight is the aircraft's
    };

    WeightBalanceLoadingDialog(const SettingsState& settings, AircraftState& state)
        : settings_(settings), state_(state) {}

    // Reads the current aircraft (settings.AircraftReg) and its stations; the loads last
    // confirmed for it (state.WbLoading) are offered again. False, after saying why, when there is
    // no current aircraft or it has no stations.
    bool Open();
    const AircraftRecord& Aircraft() const { return aircraft_; }
    const std::vector<Row>& Rows() const { return rows_; }
    // "ROW1 (lb)", "FUEL (US gal)".
    std::string Label(std::size_t row) const;
    // A fuel row's quantity as weight ("= 239.8 lb"); empty for other rows or unreadable text.
    std::string Note(std::size_t row) const;
    void SetText(std::size_t row, std::string_view text);

    // OK: every entry must be a number from 0 to 100000 (empty reads as 0); the first bad one is
    // reported ("ROW1: enter a weight from 0 to 100000 lb") and false comes back. Otherwise the
    // loading goes to state.WbLoading.
    bool Ok();
    void Close();

  private:
    const SettingsState& settings_;
    AircraftState& state_;
    AircraftRecord aircraft_;
    std::vector<Row> rows_;
};

class WeightBalanceResultDialog {
  public:
    static constexpr std::string_view kTitle = "W&B result";

    explicit WeightBalanceResultDialog(const AircraftState& state) : state_(state) {}

    // Works out state.WbLoading against the aircraft's envelope and limits. False, after saying
    // so, when no loading was confirmed or its aircraft is gone.
    bool Open();
    void Close();

    const AircraftRecord& Aircraft() const { return aircraft_; }
    const std::vector<EnvelopePoint>& Envelope() const { return envelope_; }
    const WeightBalanceResult& Result() const { return result_; }
    // Labelled figures with units: weight, moment, arm, fuel, zero-fuel weight and arm.
    std::vector<std::pair<std::string, std::string>> Figures() const;
    // The verdict and, when out, why: "forward or aft of the envelope", each limit exceeded.
    std::vector<std::string> VerdictLines() const;

  private:
    const AircraftState& state_;
    AircraftRecord aircraft_;
    std::vector<EnvelopePoint> envelope_;
    WeightBalanceResult result_;
};

// The envelope corners stored for an aircraft, in point-number order.
std::vector<EnvelopePoint> EnvelopeOf(std::u16string_view aircraft);

}  // namespace aerix
