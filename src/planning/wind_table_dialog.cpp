#include "planning/wind_table_dialog.hpp"

#include <cstdio>
#include <limits>

#include "planning/sector_computation.hpp"
#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "store/record_store.hpp"
#include "utilities/entry_text.hpp"

namespace aerix {

namespace {

constexpr const char* kLabels[] = {"Altitude (ft)", "Direction (deg true)", "Speed (kt)",
                                   "Temperature (deg)"};

// A field's 32-bit figure: signed, or the unsigned form the edit dialog shows a negative in.
std::optional<std::int32_t> Word(std::string_view text) {
    auto v = ParseWholeNumber(text);
    if (!v || *v < std::numeric_limits<std::int32_t>::min() ||
        *v > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(*v));
}

}  // namespace

std::string WindLine(std::int32_t altitude, int direction, int speed, int temperature) {
    char buf[96];
    std::snprintf(buf, sizeof buf, "%05ld         %03d        %02d        %02d",
                  static_cast<long>(altitude), direction, speed, temperature);
    return buf;
}

WindEditDialog WindEditDialog::ForAdd() {
    return WindEditDialog{};
}

std::optional<WindEditDialog> WindEditDialog::ForEdit(platform::CeOid oid) {
    DbHandle h = OpenDatabase(schema::kWindName, schema::kWindAltitude);
    WindRecord r;
    if (!h || ReadWind(h, kByOid, oid, r) == 0)
        return std::nullopt;
    WindEditDialog d;
    d.oid_ = oid;
    auto show = [](int value) { return std::to_string(static_cast<std::uint32_t>(value)); };
    d.fields_[kAltitude] = show(r.Altitude);
    d.fields_[kDirection] = show(r.Direction);
    d.fields_[kSpeed] = show(r.Speed);
    d.fields_[kTemperature] = show(r.Temperature);
    return d;
}

bool WindEditDialog::Ok() {
    std::array<std::int32_t, kFieldCount> v{};
    for (int f = 0; f < kFieldCount; ++f) {
        auto word = Word(fields_[f]);
        bool narrow = f != kAltitude;
        if (!word || (narrow && (*word < std::numeric_limits<std::int16_t>::min() ||
                                 *word > std::numeric_limits<std::int16_t>::max()))) {
            platform::ShowError(std::string(kLabels[f]) + ": enter a whole number from " +
                                (narrow ? "-32768 to 32767" : "-2147483648 to 2147483647"));
            return false;
        }
        v[f] = *word;
    }
    WindRecord r;
    r.Altitude = v[kAltitude];
    r.Direction = static_cast<std::int16_t>(v[kDirection]);
    r.Speed = static_cast<std::int16_t>(v[kSpeed]);
    r.Temperature = static_cast<std::int16_t>(v[kTemperature]);
    DbHandle h = OpenDatabase(schema::kWindName, schema::kWindAltitude);
    if (!h)
        return false;
    return WriteWind(h, r, oid_) != 0;
}

void WindTableDialog::Open() {
    platform::SetTitle(kTitle);
    Refresh();
}

void WindTableDialog::Refresh() {
    lines_.clear();
    oids_.clear();
    DbHandle h = OpenDatabase(schema::kWindName, schema::kWindAltitude);
    ReadEach(h, ReadWind, [&](const WindRecord& r, platform::CeOid oid) {
        lines_.push_back(WindLine(r.Altitude, r.Direction, r.Speed, r.Temperature));
        oids_.push_back(oid);
    });
    if (selected_ >= static_cast<int>(lines_.size()))
        selected_ = -1;
}

std::optional<WindEditDialog> WindTableDialog::BeginEdit() const {
    if (selected_ < 0 || selected_ >= static_cast<int>(oids_.size()))
        return std::nullopt;
    return WindEditDialog::ForEdit(oids_[static_cast<std::size_t>(selected_)]);
}

bool WindTableDialog::Finish(WindEditDialog& edit, int result) {
    bool written = result == platform::kIdOk && edit.Ok();
    Refresh();
    return written;
}

void WindTableDialog::Delete() {
    if (selected_ < 0 || selected_ >= static_cast<int>(lines_.size()))
        return;
    if (lines_.size() == 3) {
        platform::ShowError("Cannot have less than 3 wind table records");
        return;
    }
    DeleteWind(static_cast<std::uint32_t>(selected_));
    Refresh();
}

int WindTableDialog::Close(int code) {
    RecomputePlan(settings_, plan_, 0);
    return code;
}

}  // namespace aerix
