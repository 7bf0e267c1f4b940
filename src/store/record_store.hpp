// The record store: every database the program keeps, created, opened, read, written and deleted
// record by record through these operations; nothing above them builds property arrays. Failures
// are told in the program's own words ("Could not open database", "Record write failed", ...) and
// come back as 0, false or an invalid handle.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/object_store.hpp"
#include "settings/settings_state.hpp"
#include "store/nav_data_state.hpp"
#include "store/records.hpp"
#include "store/schema.hpp"

namespace aerix {

using platform::CeOid;
using platform::DbHandle;

// What a failure of the store is told as: a lock held by another program, a read-only file or a
// full disk in words, anything else as otherwise says. A lock or a read-only file is told once for
// a run of failures within a few seconds of each other.
inline constexpr const char* kDataLockedText = "The data is locked by another program";
// A store file (often the -shm beside objectstore.sqlite, left by a copy or a restore) that may
// not be written: no write can be kept until its permission returns.
inline constexpr const char* kDataReadOnlyText =
    "The data cannot be written: a file in the data folder is read-only. Give the data folder's "
    "files write permission again, or close Aerix and remove objectstore.sqlite-shm";
std::string StoreFailureText(platform::StoreError error, std::string_view otherwise);

// Several writes to the object store as one change (a plan renumbered, reversed or recomputed):
// Commit keeps all of them; a scope left without it, or in which a write failed, keeps none. A
// scope begun inside another joins it, and only the outermost one commits. Single writes need
// none: each is a transaction of its own.
class RecordTransaction {
  public:
    // When it cannot begin it says why ("Record write failed", the lock, the full disk), unless
    // told not to because the steps inside will say it in their own words.
    explicit RecordTransaction(bool tellFailure = true);
    RecordTransaction(const RecordTransaction&) = delete;
    RecordTransaction& operator=(const RecordTransaction&) = delete;
    bool Open() const { return tx_.Open(); }
    // False when the change is not kept; said unless a failed write inside has said it already.
    bool Commit();

  private:
    platform::VolumeTransaction tx_;
    std::uint64_t toldAtBegin_;
};

// Seek modes the readers take.
inline constexpr std::uint32_t kByOid = platform::kSeekCeOid;          // the record with that id
inline constexpr std::uint32_t kByIndex = platform::kSeekBeginning;    // the n-th in sort order
inline constexpr std::uint32_t kFromCurrent = platform::kSeekCurrent;  // 0: the record the handle
                                                                       // stands on

// --- create: the new database's id, 0 when it cannot be created (the name exists, is empty or
// longer than 32 characters) ---
CeOid CreateDatabase(std::u16string_view name, std::uint32_t type, std::uint32_t sortProp);
CeOid CreatePlanDatabase(std::u16string_view name);
CeOid CreateWindDatabase(std::u16string_view name);  // "WindTable" or "ZeroWindTable"
CeOid CreateMapsDatabase();
CeOid CreateAircraftDatabase();
CeOid CreateStationsDatabase();
CeOid CreateEnvelopesDatabase();
// A navigation database inside the mounted nav volume, sorted by name and by ident.
CeOid CreateNavDatabase(const NavDataState& nav, std::u16string_view name);

// --- open: each form opens with auto-increment and, when recordCount is given, gives the
// database's record count. The handle's DatabaseOid() is the database's id (0 on failure) ---
// A database of the object store by name ("Could not open database").
DbHandle OpenDatabase(std::u16string_view name, std::uint32_t sortProp,
                      std::uint32_t* recordCount = nullptr);
// "Envelopes" by point number ("Could not open database").
DbHandle OpenEnvelopes(std::uint32_t* recordCount = nullptr);
// A database inside the mounted nav volume (nav.NavVolumeGuid; "Could not open Nav database").
DbHandle OpenNavDatabase(const NavDataState& nav, std::u16string_view name, std::uint32_t sortProp,
                         std::uint32_t* recordCount = nullptr);

// --- read: seek (mode, value), then copy the properties the record carries into r. Returns the
// record's id, 0 when the seek or the read fails (past the end) ---
CeOid ReadWaypoint(DbHandle& h, std::uint32_t mode, std::uint32_t value, WaypointRecord& r);
CeOid ReadMap(DbHandle& h, std::uint32_t mode, std::uint32_t value, MapRecord& r);
CeOid ReadSector(DbHandle& h, std::uint32_t mode, std::uint32_t value, SectorRecord& r);
CeOid ReadWind(DbHandle& h, std::uint32_t mode, std::uint32_t value, WindRecord& r);
CeOid ReadAircraft(DbHandle& h, std::uint32_t mode, std::uint32_t value, AircraftRecord& r);
CeOid ReadStation(DbHandle& h, std::uint32_t mode, std::uint32_t value, StationRecord& r);
CeOid ReadEnvelopePoint(DbHandle& h, std::uint32_t mode, std::uint32_t value,
                        EnvelopePointRecord& r);

// The sector at index (0 = first) of the active plan (settings.ActivePlanName), for the
// simulator: quiet, false when there is no such sector or no plan.
bool ReadActivePlanSector(const SettingsState& settings, std::uint32_t index, SectorRecord& r);

// Search read of the nav database: the current record's name (or, when nav.NavSearchKey is the
// ident, its ident) into text. 1 when search occurs in it (case-sensitive), 0 when not, -1 when
// there is no record to read.
int ReadNavSearch(const NavDataState& nav, DbHandle& h, std::u16string_view search,
                  std::u16string& text);
// The current record as a list line: name, two blanks, ident. 0 when there is none.
// Reads from where h stands to the end of its sort order, each record into a fresh Record, and
// hands each with its id to visit (which may return false to stop). A handle that did not open
// reads nothing.
template <typename Record, typename Visit>
void ReadEach(DbHandle& h, CeOid (*read)(DbHandle&, std::uint32_t, std::uint32_t, Record&),
              Visit visit) {
    while (h) {
        Record r;
        CeOid oid = read(h, kFromCurrent, 0, r);
        if (oid == 0)
            return;
        if constexpr (std::is_same_v<decltype(visit(std::move(r), oid)), bool>) {
            if (!visit(std::move(r), oid))
                return;
        } else {
            visit(std::move(r), oid);
        }
    }
}

CeOid ReadNavListLine(DbHandle& h, std::u16string& line);

// --- write: every property in the kind's order, as a new record (oid 0) or over the record oid.
// Returns the record's id; 0 after "Record write failed" ---
CeOid WriteWaypoint(DbHandle& h, const WaypointRecord& r, CeOid oid = 0);
CeOid WriteMap(DbHandle& h, const MapRecord& r, CeOid oid = 0);
CeOid WriteSector(DbHandle& h, const SectorRecord& r, CeOid oid = 0);
CeOid WriteWind(DbHandle& h, const WindRecord& r, CeOid oid = 0);
CeOid WriteAircraft(DbHandle& h, const AircraftRecord& r, CeOid oid = 0);
CeOid WriteStation(DbHandle& h, const StationRecord& r, CeOid oid = 0);
CeOid WriteEnvelopePoint(DbHandle& h, const EnvelopePointRecord& r, CeOid oid = 0);

// --- delete: by position in sort order (0 = first), or by id for stations and envelope points ---
// In the active nav database (settings.NavDatabaseName), its volume mounted by the caller.
bool DeleteWaypoint(const SettingsState& settings, const NavDataState& nav, std::uint32_t index);
bool DeleteMap(std::uint32_t index);
bool DeleteWind(std::uint32_t index);
bool DeleteAircraft(std::uint32_t index);
bool DeleteStation(CeOid oid);
bool DeleteEnvelopePoint(CeOid oid);
// Deletes a sector of the active plan (settings.ActivePlanName), then calls recomputeRoute unless
// the loaded plan's sector count (loadedSectorCount) is 0 or, plus one, equals the records the
// plan held before.
bool DeleteSector(const SettingsState& settings, std::uint32_t loadedSectorCount,
                  std::uint32_t index, const std::function<void()>& recomputeRoute);

// --- databases ---
bool DeleteDatabase(CeOid oid);
// True when oid is a database of the object store of this type; its name goes to name.
bool DatabaseOfType(CeOid oid, std::uint32_t type, std::u16string* name = nullptr);
// Names of the object store's databases of this type, in the order they were created.
std::vector<std::u16string> DatabaseNames(std::uint32_t type);

// --- the nav volume "\My Documents\aerix\<NavDatabaseName>.CDB" ---
// "\My Documents\aerix\<databaseName>.CDB".
std::u16string NavVolumePath(std::u16string_view databaseName);
// Mounts the active database's volume (created empty when missing) and keeps its guid in
// nav.NavVolumeGuid. On failure says "Could not create database volume" and returns false.
bool MountNavVolume(const SettingsState& settings, NavDataState& nav);
void UnmountNavVolume(NavDataState& nav);

}  // namespace aerix
