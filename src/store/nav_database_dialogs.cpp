#include "store/nav_database_dialogs.hpp"

#include <cmath>
#include <filesystem>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"
#include "platform/text_numbers.hpp"
#include "store/nav_volume_scope.hpp"
#include "store/record_store.hpp"
#include "store/strict_number.hpp"
#include "store/waypoint_import.hpp"

namespace aerix {

namespace {

constexpr std::size_t kMaxNavDatabaseName = 32;

std::string Utf8(std::u16string_view text) {
    return Utf16ToUtf8(text);
}

std::string NumberText(double value) {
    return FormatGeneral(value, 10);
}

// A text field that must fit its width in the in-memory database.
bool FitText(const std::string& text, std::size_t chars, const char* message, std::u16string& out) {
    out = Utf8ToUtf16(TrimBlanks(text));
    if (out.size() > chars) {
        platform::ShowError(message);
        return false;
    }
    return true;
}

// The active database, mounted for one dialog operation. Says why when there is none.
bool ActiveDatabaseChosen(const SettingsState& settings) {
    if (settings.NavDatabaseName.empty()) {
        platform::ShowError("No navigation database chosen");
        return false;
    }
    return true;
}

bool ValidFileName(std::u16string_view name) {
    if (name.empty() || name == u"." || name == u"..")
        return false;
    for (char16_t c : name)
        if (c < 0x20 || std::u16string_view(u"\\/:*?\"<>|").find(c) != std::u16string_view::npos)
            return false;
    return true;
}

}  // namespace

std::string_view WaypointTypeName(int code) {
    static constexpr std::string_view names[] = {
        "Airfield",     "VOR/DME",      "VOR",      "NDB",     "Intersection",
        "User def wpt", "Reporting pt", "Heliport", "Seaport",
    };
    return code >= 1 && code <= kWaypointTypeCodes ? names[code - 1] : std::string_view();
}

bool NewNavDatabase(SettingsState& settings, NavDataState& nav, std::string_view nameText) {
    std::u16string name = Utf8ToUtf16(TrimBlanks(nameText));
    if (name.empty()) {
        platform::ShowError("Enter a database name");
        return false;
    }
    if (name.size() > kMaxNavDatabaseName) {
        platform::ShowError("Database name too long (32 characters at most)");
        return false;
    }
    if (!ValidFileName(name)) {
        platform::ShowError("A database name cannot contain \\ / : * ? \" < > |");
        return false;
    }
    std::error_code ec;
    if (std::filesystem::exists(platform::Sys().root->Resolve(NavVolumePath(name)), ec)) {
        platform::ShowError("Database already exists");
        return false;
    }
    {
        NavVolumeScope volume(nav, name);
        if (!volume.Mounted())
            return false;
        if (CreateNavDatabase(nav, name) == 0) {
            platform::ShowError("Could not create Nav database");
            return false;
        }
    }
    settings.NavDatabaseName.assign(name);
    nav.ArraysPending = 1;
    return true;
}

bool ParsePositionText(std::string_view input, bool latitude, std::int32_t* centiMinutes) {
    // Degree (UTF-8 C2 B0), minute and second marks and colons separate like blanks.
    std::string text;
    text.reserve(input.size());
    for (std::size_t i = 0; i < input.size(); ++i) {
        char c = input[i];
        if (c == '\xC2' && i + 1 < input.size() && input[i + 1] == '\xB0') {
            text += ' ';
            ++i;
        } else {
            text += (c == '\'' || c == '"' || c == ':') ? ' ' : c;
        }
    }
    std::string_view s = TrimBlanks(text);
    if (s.empty())
        return false;
    const char positive = latitude ? 'N' : 'E', negative = latitude ? 'S' : 'W';
    int hemisphere = 0;
    auto letter = [&](char c) {
        char u = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        return u == positive ? 1 : u == negative ? -1 : 0;
    };
    if (int h = letter(s.front())) {
        hemisphere = h;
        s.remove_prefix(1);
    } else if (int h2 = letter(s.back())) {
        hemisphere = h2;
        s.remove_suffix(1);
    }
    s = TrimBlanks(s);
    if (hemisphere != 0 && s.find(' ') == std::string_view::npos) {
        std::size_t dot = s.find('.');
        std::size_t whole = dot == std::string_view::npos ? s.size() : dot;
        if (whole == (latitude ? 4u : 5u))  // the packed form of the waypoint files
            return ParseCupCoordinate(std::string(s) + (hemisphere > 0 ? positive : negative),
                                      latitude, centiMinutes);
    }
    double parts[3] = {0, 0, 0};
    int count = 0;
    bool minus = false;
    while (!s.empty()) {
        std::size_t end = s.find(' ');
        std::string_view token = s.substr(0, end);
        if (count == 3)
            return false;
        if (token.front() == '-' || token.front() == '+') {
            if (count != 0 || hemisphere != 0)
                return false;
            minus = token.front() == '-';
            token.remove_prefix(1);
        }
        auto value = StrictNumber(token);
        if (!value || token.empty() || token.front() == '-' || token.front() == '+')
            return false;
        parts[count++] = *value;
        s = end == std::string_view::npos ? std::string_view() : TrimBlanks(s.substr(end));
    }
    if (count == 0 || parts[1] >= 60.0 || parts[2] >= 60.0)
        return false;
    double degrees = parts[0] + parts[1] / 60.0 + parts[2] / 3600.0;
    if (degrees > (latitude ? 90.0 : 180.0))
        return false;
    if (minus || hemisphere < 0)
        degrees = -degrees;
    *centiMinutes = static_cast<std::int32_t>(std::lround(degrees * 6000.0));
    return true;
}

WaypointForm FormFromWaypoint(const WaypointRecord& r) {
    WaypointForm f;
    f.name = Utf8(r.Name);
    f.ident = Utf8(r.Ident);
    f.latitude = NumberText(r.Latitude / 6000.0);
    f.longitude = NumberText(r.Longitude / 6000.0);
    f.elevation = NumberText(r.Value104);
    f.type = r.WaypointType;
    f.frequency = Utf8(r.Text106);
    f.runwayLength = std::to_string(r.Number107);
    f.region = Utf8(r.ExtraText);
    f.municipality = Utf8(r.FurtherTexts[kWptMunicipality]);
    f.runway = Utf8(r.FurtherTexts[kWptRunway]);
    f.source = Utf8(r.FurtherTexts[kWptSource]);
    for (std::size_t i = 0; i < f.notes.size(); ++i)
        f.notes[i] = Utf8(r.FurtherTexts[kWptFirstNote + i]);
    return f;
}

bool WaypointFromForm(const WaypointForm& f, WaypointRecord& r) {
    WaypointRecord w;
    if (TrimBlanks(f.name).empty()) {
        platform::ShowError("Enter a name");
        return false;
    }
    if (!FitText(f.name, kWptNameChars, "Name too long (35 characters at most)", w.Name) ||
        !FitText(f.ident, kWptIdentChars, "Ident too long (5 characters at most)", w.Ident) ||
        !FitText(f.region, kWptExtraChars, "Country too long (23 characters at most)", w.ExtraText))
        return false;
    if (!ParsePositionText(f.latitude, true, &w.Latitude)) {
        platform::ShowError("Invalid latitude");
        return false;
    }
    if (!ParsePositionText(f.longitude, false, &w.Longitude)) {
        platform::ShowError("Invalid longitude");
        return false;
    }
    if (!TrimBlanks(f.elevation).empty()) {
        auto feet = StrictNumber(f.elevation);
        if (!feet || std::fabs(*feet) > 100000.0) {
            platform::ShowError("Invalid elevation");
            return false;
        }
        w.Value104 = *feet;
    }
    if (f.type < 0 || f.type > kWaypointTypeCodes) {
        platform::ShowError("Invalid waypoint type");
        return false;
    }
    w.WaypointType = static_cast<std::int16_t>(f.type);
    if (!TrimBlanks(f.runwayLength).empty()) {
        auto metres = StrictNumber(f.runwayLength);
        if (!metres || *metres < 0 || *metres > 32767 || *metres != std::floor(*metres)) {
            platform::ShowError("Invalid runway length");
            return false;
        }
        w.Number107 = static_cast<std::int16_t>(*metres);
    }
    w.Text106 = Utf8ToUtf16(TrimBlanks(f.frequency));
    w.FurtherTexts[kWptMunicipality] = Utf8ToUtf16(TrimBlanks(f.municipality));
    w.FurtherTexts[kWptRunway] = Utf8ToUtf16(TrimBlanks(f.runway));
    w.FurtherTexts[kWptSource] = Utf8ToUtf16(TrimBlanks(f.source));
    for (std::size_t i = 0; i < f.notes.size(); ++i)
        w.FurtherTexts[kWptFirstNote + i] = Utf8ToUtf16(f.notes[i]);
    r = std::move(w);
    return true;
}

std::vector<NavListLine> ListNavDatabase(const SettingsState& settings, NavDataState& nav,
                                         std::string_view searchText) {
    std::vector<NavListLine> lines;
    if (!ActiveDatabaseChosen(settings))
        return lines;
    std::u16string search = Utf8ToUtf16(searchText);
    NavVolumeScope volume(nav, settings.NavDatabaseName.view());
    DbHandle h = OpenNavDatabase(nav, settings.NavDatabaseName.view(), schema::kWptName);
    bool byIdent = nav.NavSearchKey == schema::kWptIdent;
    std::uint32_t index = 0;
    ReadEach(h, ReadWaypoint, [&](const WaypointRecord& w, platform::CeOid oid) {
        const std::u16string& key = byIdent ? w.Ident : w.Name;
        if (key.find(search) != std::u16string::npos)
            lines.push_back({index, oid, Utf8(w.Name + u"  " + w.Ident)});
        ++index;
    });
    return lines;
}

bool AddWaypoint(const SettingsState& settings, NavDataState& nav, const WaypointForm& form) {
    WaypointRecord r;
    if (!ActiveDatabaseChosen(settings) || !WaypointFromForm(form, r))
        return false;
    if (r.FurtherTexts[kWptSource].empty())
        r.FurtherTexts[kWptSource] = u"user";
    NavVolumeScope volume(nav, settings.NavDatabaseName.view());
    DbHandle h = OpenNavDatabase(nav, settings.NavDatabaseName.view(), schema::kWptName);
    if (!h || WriteWaypoint(h, r) == 0)
        return false;
    nav.ArraysPending = 1;
    return true;
}

bool ReadWaypointForEdit(const SettingsState& settings, NavDataState& nav, platform::CeOid oid,
                         WaypointForm& form) {
    if (!ActiveDatabaseChosen(settings))
        return false;
    NavVolumeScope volume(nav, settings.NavDatabaseName.view());
    DbHandle h = OpenNavDatabase(nav, settings.NavDatabaseName.view(), schema::kWptName);
    WaypointRecord r;
    if (!h || ReadWaypoint(h, kByOid, oid, r) == 0)
        return false;
    form = FormFromWaypoint(r);
    return true;
}

bool EditWaypoint(const SettingsState& settings, NavDataState& nav, platform::CeOid oid,
                  const WaypointForm& form) {
    WaypointRecord r;
    if (!ActiveDatabaseChosen(settings) || !WaypointFromForm(form, r))
        return false;
    NavVolumeScope volume(nav, settings.NavDatabaseName.view());
    DbHandle h = OpenNavDatabase(nav, settings.NavDatabaseName.view(), schema::kWptName);
    if (!h || WriteWaypoint(h, r, oid) == 0)
        return false;
    nav.ArraysPending = 1;
    return true;
}

bool DeleteWaypointAt(const SettingsState& settings, NavDataState& nav, std::uint32_t index) {
    if (!ActiveDatabaseChosen(settings) || !platform::AskWarning("Delete waypoint - Are you sure?"))
        return false;
    NavVolumeScope volume(nav, settings.NavDatabaseName.view());
    if (!DeleteWaypoint(settings, nav, index))
        return false;
    nav.ArraysPending = 1;
    return true;
}

}  // namespace aerix
