#include "store/record_store.hpp"

#include <atomic>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/sqlite.hpp"
#include "store/record_props.hpp"

namespace aerix {

using platform::DatabaseInfo;
using platform::kObjectStoreVolume;
using platform::PropVal;
using platform::SortOrder;
using platform::VolumeGuid;

namespace {

platform::ObjectStore& Store() {
    return *platform::Sys().store;
}

// Failures told on this thread, so that a transaction does not tell a failed write twice.
thread_local std::uint64_t t_failuresTold = 0;

// When the lock or the read-only file was last told (the box closed), in the clock's
// milliseconds; -1: never.
std::atomic<std::int64_t> g_lockToldAt{-1};
std::atomic<std::int64_t> g_readOnlyToldAt{-1};

std::int64_t NowMs() {
    return platform::Sys().clock ? platform::Sys().clock->NowMs() : 0;
}

void TellFailure(const char* otherwise) {
    ++t_failuresTold;
    platform::StoreError error = platform::LastStoreError();
    std::atomic<std::int64_t>* toldAt = error == platform::StoreError::kLocked ? &g_lockToldAt
                                        : error == platform::StoreError::kReadOnly
                                            ? &g_readOnlyToldAt
                                            : nullptr;
    if (toldAt) {
        // Told once: the steps that follow the box within a few seconds (a start opens a dozen
        // databases) fail quietly rather than show it again and again.
        std::int64_t told = toldAt->load();
        if (told >= 0 && NowMs() - told < platform::kLockRetryAfterMs)
            return;
        platform::ShowError(StoreFailureText(error, otherwise));
        *toldAt = NowMs();
        return;
    }
    platform::ShowError(StoreFailureText(error, otherwise));
}

VolumeGuid NavVolume(const NavDataState& nav) {
    return VolumeGuid{nav.NavVolumeGuid};
}

CeOid Create(std::u16string_view name, std::uint32_t type, std::vector<SortOrder> sorts,
             std::uint16_t flags) {
    DatabaseInfo info;
    info.name = std::u16string(name);
    info.type = type;
    info.flags = flags;
    info.sorts = std::move(sorts);
    return Store().CreateDatabase(kObjectStoreVolume, info);
}

DbHandle OpenIn(VolumeGuid volume, std::u16string_view name, std::uint32_t sortProp,
                std::uint32_t* recordCount, const char* failure) {
    DbHandle h = Store().OpenDatabase(volume, name, sortProp, platform::kOpenAutoIncrement);
    if (!h) {
        if (failure)
            TellFailure(failure);
        return h;
    }
    if (recordCount) {
        auto info = Store().OidGetInfo(volume, h.DatabaseOid());
        *recordCount = info ? info->recordCount : 0;
    }
    return h;
}

template <typename Record>
CeOid ReadRecord(DbHandle& h, std::uint32_t mode, std::uint32_t value, Record& r) {
    if (!h || h.Seek(mode, value) == 0)
        return 0;
    thread_local std::vector<PropVal> props;
    CeOid oid = h.Read(props);
    if (oid != 0)
        FromProps(props, r);
    return oid;
}

template <typename Record>
CeOid WriteRecord(DbHandle& h, const Record& r, CeOid oid) {
    CeOid written = h ? h.Write(oid, ToProps(r)) : 0;
    if (written == 0)
        TellFailure("Record write failed");
    return written;
}

bool DeleteAt(DbHandle h, std::uint32_t index) {
    if (!h)
        return false;
    CeOid oid = h.Seek(platform::kSeekBeginning, index);
    return oid != 0 && h.DeleteRecord(oid);
}

}  // namespace

std::string StoreFailureText(platform::StoreError error, std::string_view otherwise) {
    switch (error) {
        case platform::StoreError::kLocked:
            return kDataLockedText;
        case platform::StoreError::kReadOnly:
            return kDataReadOnlyText;
        case platform::StoreError::kFull:
            return std::string(otherwise) + ": disk full";
        default:
            return std::string(otherwise);
    }
}

RecordTransaction::RecordTransaction(bool tellFailure)
    : tx_(Store(), kObjectStoreVolume), toldAtBegin_(t_failuresTold) {
    if (!tx_.Open() && tellFailure)
        TellFailure("Record write failed");
}

bool RecordTransaction::Commit() {
    if (tx_.Commit())
        return true;
    if (t_failuresTold == toldAtBegin_)
        TellFailure("Record write failed");
    return false;
}

// --- create ---

CeOid CreateDatabase(std::u16string_view name, std::uint32_t type, std::uint32_t sortProp) {
    return Create(name, type, {{sortProp, 0}}, schema::kCreateFlags);
}

CeOid CreatePlanDatabase(std::u16string_view name) {
    return CreateDatabase(name, schema::kPlanType, schema::kSecNumber);
}

CeOid CreateWindDatabase(std::u16string_view name) {
    return CreateDatabase(name, schema::kWindType, schema::kWindAltitude);
}

CeOid CreateMapsDatabase() {
    return CreateDatabase(schema::kMapsName, schema::kMapsType, schema::kMapPath);
}

CeOid CreateAircraftDatabase() {
    return CreateDatabase(schema::kAircraftName, schema::kAircraftType, schema::kAcName);
}

CeOid CreateStationsDatabase() {
    return Create(schema::kStationsName, schema::kStationsType,
                  {{schema::kStAircraftName, 0}, {schema::kStKind, 0}}, schema::kCreateFlags);
}

CeOid CreateEnvelopesDatabase() {
    return Create(schema::kEnvelopesName, schema::kEnvelopesType, {{schema::kEnvPointNumber, 0}},
                  schema::kEnvelopeCreateFlags);
}

CeOid CreateNavDatabase(const NavDataState& nav, std::u16string_view name) {
    DatabaseInfo info;
    info.name = std::u16string(name);
    info.flags = schema::kCreateFlags;
    info.sorts = {{schema::kWptName, 0}, {schema::kWptIdent, 0}};
    return Store().CreateDatabase(NavVolume(nav), info);
}

// --- open ---

DbHandle OpenDatabase(std::u16string_view name, std::uint32_t sortProp,
                      std::uint32_t* recordCount) {
    return OpenIn(kObjectStoreVolume, name, sortProp, recordCount, "Could not open database");
}

DbHandle OpenEnvelopes(std::uint32_t* recordCount) {
    return OpenDatabase(schema::kEnvelopesName, schema::kEnvPointNumber, recordCount);
}

DbHandle OpenNavDatabase(const NavDataState& nav, std::u16string_view name, std::uint32_t sortProp,
                         std::uint32_t* recordCount) {
    if (nav.NavVolumeGuid == 0) {
        // No volume is mounted: never fall back on the object store's own databases.
        platform::ShowError("Could not open Nav database");
        return {};
    }
    return OpenIn(NavVolume(nav), name, sortProp, recordCount, "Could not open Nav database");
}

// --- read ---

CeOid ReadWaypoint(DbHandle& h, std::uint32_t mode, std::uint32_t value, WaypointRecord& r) {
    return ReadRecord(h, mode, value, r);
}
CeOid ReadMap(DbHandle& h, std::uint32_t mode, std::uint32_t value, MapRecord& r) {
    return ReadRecord(h, mode, value, r);
}
CeOid ReadSector(DbHandle& h, std::uint32_t mode, std::uint32_t value, SectorRecord& r) {
    return ReadRecord(h, mode, value, r);
}
CeOid ReadWind(DbHandle& h, std::uint32_t mode, std::uint32_t value, WindRecord& r) {
    return ReadRecord(h, mode, value, r);
}
CeOid ReadAircraft(DbHandle& h, std::uint32_t mode, std::uint32_t value, AircraftRecord& r) {
    return ReadRecord(h, mode, value, r);
}
CeOid ReadStation(DbHandle& h, std::uint32_t mode, std::uint32_t value, StationRecord& r) {
    return ReadRecord(h, mode, value, r);
}
CeOid ReadEnvelopePoint(DbHandle& h, std::uint32_t mode, std::uint32_t value,
                        EnvelopePointRecord& r) {
    return ReadRecord(h, mode, value, r);
}

bool ReadActivePlanSector(const SettingsState& settings, std::uint32_t index, SectorRecord& r) {
    if (settings.ActivePlanName.empty())
        return false;
    DbHandle h = Store().OpenDatabase(kObjectStoreVolume, settings.ActivePlanName.view(),
                                      schema::kSecNumber, platform::kOpenAutoIncrement);
    return ReadSector(h, kByIndex, index, r) != 0;
}

int ReadNavSearch(const NavDataState& nav, DbHandle& h, std::u16string_view search,
                  std::u16string& text) {
    WaypointRecord w;
    w.Name = text;
    if (ReadWaypoint(h, kFromCurrent, 0, w) == 0)
        return -1;
    text = nav.NavSearchKey == schema::kWptIdent ? w.Ident : w.Name;
    return text.find(search) != std::u16string::npos ? 1 : 0;
}

CeOid ReadNavListLine(DbHandle& h, std::u16string& line) {
    WaypointRecord w;
    CeOid oid = ReadWaypoint(h, kFromCurrent, 0, w);
    if (oid != 0)
        line = w.Name + u"  " + w.Ident;
    return oid;
}

// --- write ---

CeOid WriteWaypoint(DbHandle& h, const WaypointRecord& r, CeOid oid) {
    return WriteRecord(h, r, oid);
}
CeOid WriteMap(DbHandle& h, const MapRecord& r, CeOid oid) {
    return WriteRecord(h, r, oid);
}
CeOid WriteSector(DbHandle& h, const SectorRecord& r, CeOid oid) {
    return WriteRecord(h, r, oid);
}
CeOid WriteWind(DbHandle& h, const WindRecord& r, CeOid oid) {
    return WriteRecord(h, r, oid);
}
CeOid WriteAircraft(DbHandle& h, const AircraftRecord& r, CeOid oid) {
    return WriteRecord(h, r, oid);
}
CeOid WriteStation(DbHandle& h, const StationRecord& r, CeOid oid) {
    return WriteRecord(h, r, oid);
}
CeOid WriteEnvelopePoint(DbHandle& h, const EnvelopePointRecord& r, CeOid oid) {
    return WriteRecord(h, r, oid);
}

// --- delete ---

bool DeleteWaypoint(const SettingsState& settings, const NavDataState& nav, std::uint32_t index) {
    return DeleteAt(OpenNavDatabase(nav, settings.NavDatabaseName.view(), schema::kWptName), index);
}
bool DeleteMap(std::uint32_t index) {
    return DeleteAt(OpenDatabase(schema::kMapsName, schema::kMapPath), index);
}
bool DeleteWind(std::uint32_t index) {
    return DeleteAt(OpenDatabase(schema::kWindName, schema::kWindAltitude), index);
}
bool DeleteAircraft(std::uint32_t index) {
    return DeleteAt(OpenDatabase(schema::kAircraftName, schema::kAcName), index);
}

bool DeleteStation(CeOid oid) {
    DbHandle h = OpenDatabase(schema::kStationsName, schema::kStKind);
    return h && h.DeleteRecord(oid);
}

bool DeleteEnvelopePoint(CeOid oid) {
    DbHandle h = OpenEnvelopes();
    return h && h.DeleteRecord(oid);
}

bool DeleteSector(const SettingsState& settings, std::uint32_t loadedSectorCount,
                  std::uint32_t index, const std::function<void()>& recomputeRoute) {
    std::uint32_t countAtOpen = 0;
    bool deleted = DeleteAt(
        OpenDatabase(settings.ActivePlanName.view(), schema::kSecNumber, &countAtOpen), index);
    if (loadedSectorCount != 0 && loadedSectorCount + 1 != countAtOpen && recomputeRoute)
        recomputeRoute();
    return deleted;
}

// --- databases ---

bool DeleteDatabase(CeOid oid) {
    return Store().DeleteDatabase(kObjectStoreVolume, oid);
}

bool DatabaseOfType(CeOid oid, std::uint32_t type, std::u16string* name) {
    auto info = Store().OidGetInfo(kObjectStoreVolume, oid);
    if (!info || info->type != type)
        return false;
    if (name)
        *name = info->name;
    return true;
}

std::vector<std::u16string> DatabaseNames(std::uint32_t type) {
    std::vector<std::u16string> names;
    for (const DatabaseInfo& info : Store().EnumDatabases(kObjectStoreVolume, type))
        names.push_back(info.name);
    return names;
}

// --- nav volume ---

std::u16string NavVolumePath(std::u16string_view databaseName) {
    return u"\\My Documents\\aerix\\" + std::u16string(databaseName) + u".CDB";
}

bool MountNavVolume(const SettingsState& settings, NavDataState& nav) {
    auto file =
        platform::Sys().root->ResolveForWrite(NavVolumePath(settings.NavDatabaseName.view()));
    VolumeGuid guid;
    if (!Store().MountVolume(file, platform::kOpenAlways, guid)) {
        platform::ShowError("Could not create database volume");
        return false;
    }
    nav.NavVolumeGuid = guid.value;
    return true;
}

void UnmountNavVolume(NavDataState& nav) {
    if (nav.NavVolumeGuid != 0)
        Store().UnmountVolume(NavVolume(nav));
    nav.NavVolumeGuid = 0;
}

}  // namespace aerix
