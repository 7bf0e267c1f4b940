// The "Wind Table" dialog model (the rows in altitude order, Add, Edit, Delete, OK) and the
// "Add/Edit Wind data" dialog model it opens.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "planning/plan_state.hpp"
#include "platform/object_store.hpp"
#include "settings/settings_state.hpp"

namespace aerix {

class WindEditDialog {
  public:
    enum Field { kAltitude, kDirection, kSpeed, kTemperature, kFieldCount };
    static constexpr std::string_view kTitle = "Add/Edit Wind data";

    // Empty fields, for a new row.
    static WindEditDialog ForAdd();
    // The row with this id, its values shown as unsigned numbers (a negative temperature shows
    // as its unsigned 32-bit equivalent). Nothing when the row cannot be read.
    static std::optional<WindEditDialog> ForEdit(platform::CeOid oid);

    const std::string& Text(Field f) const { return fields_[f]; }
    void SetText(Field f, std::string_view text) { fields_[f] = text; }
    platform::CeOid RowId() const { return oid_; }

    // OK: reads the four fields as signed integers and writes the row (new, or over the edited
    // one). A field that is not a whole number, or that its column cannot hold, is reported
    // ("Speed (kt): enter a whole number from -32768 to 32767") and nothing is written; the
    // dialog then stays open (false). An unsigned 32-bit figure reads back as the signed number
    // it shows, so an unchanged edit writes the row back as it was.
    bool Ok();

  private:
    std::array<std::string, kFieldCount> fields_;
    platform::CeOid oid_ = 0;
};

class WindTableDialog {
  public:
    static constexpr std::string_view kTitle = "Wind Table";

    // Closing recomputes the plan settings names.
    WindTableDialog(const SettingsState& settings, PlanState& plan)
        : settings_(settings), plan_(plan) {}

    // Sets the title and fills the list.
    void Open();
    // Refills the list from "WindTable", one line per row in altitude order.
    void Refresh();
    const std::vector<std::string>& Lines() const { return lines_; }
    // -1: no line selected.
    void Select(int index) { selected_ = index; }
    int Selected() const { return selected_; }

    // Add: an empty edit dialog. After it ends, Finish(edit, result) writes on OK (1).
    WindEditDialog BeginAdd() const { return WindEditDialog::ForAdd(); }
    // Edit: only with a line selected; the edit dialog on that row.
    std::optional<WindEditDialog> BeginEdit() const;
    // Ends the edit dialog: on result 1 writes through edit.Ok() (false when refused). The list
    // is refilled either way.
    bool Finish(WindEditDialog& edit, int result);
    // Delete: only with a line selected; refused below three rows with "Cannot have less than 3
    // wind table records".
    void Delete();
    // OK, the X, Escape or the window closed: however the dialog ends, the active plan is
    // recomputed with the new winds, so that no sector keeps a heading, ground speed, time or
    // fuel from the old ones. Returns code.
    int Close(int code);
    int Ok() { return Close(1); }

  private:
    const SettingsState& settings_;
    PlanState& plan_;
    std::vector<std::string> lines_;
    std::vector<platform::CeOid> oids_;
    int selected_ = -1;
};

// One list line: "%05ld         %03d        %02d        %02d".
std::string WindLine(std::int32_t altitude, int direction, int speed, int temperature);

}  // namespace aerix
