#include "platform/object_store.hpp"

#include "platform/db_volume.hpp"

#include <utility>

namespace aerix::platform {

namespace fs = std::filesystem;

namespace {

thread_local StoreError t_lastError = StoreError::kNone;

template <typename T>
T Fail(StoreError e, T result) {
    t_lastError = e;
    return result;
}

}  // namespace

StoreError LastStoreError() {
    return t_lastError;
}

// --- DbHandle ---------------------------------------------------------------------------------

DbHandle::DbHandle() = default;

DbHandle::DbHandle(std::unique_ptr<DbCursor> cursor) : cursor_(std::move(cursor)) {}

DbHandle::~DbHandle() {
    Close();
}

DbHandle::DbHandle(DbHandle&& other) noexcept
    : cursor_(std::move(other.cursor_)), batch_(std::exchange(other.batch_, false)) {}

DbHandle& DbHandle::operator=(DbHandle&& other) noexcept {
    if (this != &other) {
        Close();
        cursor_ = std::move(other.cursor_);
        batch_ = std::exchange(other.batch_, false);
    }
    return *this;
}

void DbHandle::Close() {
    if (!cursor_)
        return;
    std::shared_ptr<DbVolume> keep = cursor_->VolumePtr();
    std::lock_guard lock(keep->Mutex());
    if (batch_)
        keep->EndBatch(false);
    batch_ = false;
    cursor_.reset();
}

bool DbHandle::BeginBatch() {
    if (!cursor_ || batch_)
        return Fail(StoreError::kInvalidParameter, false);
    std::lock_guard lock(cursor_->Volume().Mutex());
    ClearSqlFailure();
    batch_ = cursor_->Volume().BeginBatch();
    t_lastError = batch_ ? StoreError::kNone : Refined(StoreError::kIo);
    return batch_;
}

bool DbHandle::CommitBatch() {
    if (!cursor_ || !batch_)
        return Fail(StoreError::kInvalidParameter, false);
    std::lock_guard lock(cursor_->Volume().Mutex());
    batch_ = false;
    ClearSqlFailure();
    bool done = cursor_->Volume().EndBatch(true);
    t_lastError = done ? StoreError::kNone : Refined(StoreError::kIo);
    return done;
}

CeOid DbHandle::DatabaseOid() const {
    return cursor_ ? cursor_->Database() : 0;
}

std::uint32_t DbHandle::RecordCount() {
    if (!cursor_)
        return Fail(StoreError::kInvalidParameter, 0u);
    std::lock_guard lock(cursor_->Volume().Mutex());
    DbMeta* db = cursor_->Volume().Find(cursor_->Database());
    auto n = db ? cursor_->Volume().RecordCount(*db) : std::nullopt;
    return n ? *n : Fail(StoreError::kNotFound, 0u);
}

CeOid DbHandle::Seek(std::uint32_t mode, std::uint32_t value, std::uint32_t* index) {
    if (!cursor_)
        return Fail(StoreError::kInvalidParameter, CeOid{0});
    std::lock_guard lock(cursor_->Volume().Mutex());
    CeOid oid = cursor_->Seek(mode, value, index);
    t_lastError = oid ? StoreError::kNone : StoreError::kNotFound;
    return oid;
}

CeOid DbHandle::SeekValue(const PropVal& value, std::uint32_t* index) {
    if (!cursor_)
        return Fail(StoreError::kInvalidParameter, CeOid{0});
    std::lock_guard lock(cursor_->Volume().Mutex());
    CeOid oid = cursor_->SeekValue(value, index);
    t_lastError = oid ? StoreError::kNone : StoreError::kNotFound;
    return oid;
}

CeOid DbHandle::Read(std::vector<PropVal>& props) {
    if (!cursor_)
        return Fail(StoreError::kInvalidParameter, CeOid{0});
    std::lock_guard lock(cursor_->Volume().Mutex());
    CeOid oid = cursor_->Read(props);
    t_lastError = oid ? StoreError::kNone : StoreError::kNotFound;
    return oid;
}

CeOid DbHandle::Write(CeOid oid, std::span<const PropVal> props) {
    if (!cursor_)
        return Fail(StoreError::kInvalidParameter, CeOid{0});
    std::lock_guard lock(cursor_->Volume().Mutex());
    ClearSqlFailure();
    StoreError error = StoreError::kNone;
    CeOid written = cursor_->Volume().WriteRecord(cursor_->Database(), oid, props, error);
    t_lastError = Refined(error);
    return written;
}

bool DbHandle::DeleteRecord(CeOid oid) {
    if (!cursor_)
        return Fail(StoreError::kInvalidParameter, false);
    std::lock_guard lock(cursor_->Volume().Mutex());
    ClearSqlFailure();
    StoreError error = StoreError::kNone;
    bool done = cursor_->Volume().DeleteRecord(cursor_->Database(), oid, error);
    t_lastError = Refined(error);
    return done;
}

// --- VolumeTransaction ------------------------------------------------------------------------

VolumeTransaction::VolumeTransaction(ObjectStore& store, VolumeGuid volume)
    : volume_(store.Volume(volume)) {
    if (!volume_)
        return;
    std::lock_guard lock(volume_->Mutex());
    ClearSqlFailure();
    if (!volume_->BeginBatch()) {
        t_lastError = Refined(StoreError::kIo);
        volume_.reset();
        return;
    }
    t_lastError = StoreError::kNone;
}

VolumeTransaction::~VolumeTransaction() {
    if (!volume_)
        return;
    std::lock_guard lock(volume_->Mutex());
    volume_->EndBatch(false);
}

bool VolumeTransaction::Commit() {
    if (!volume_)
        return false;
    std::shared_ptr<DbVolume> volume = std::move(volume_);
    std::lock_guard lock(volume->Mutex());
    ClearSqlFailure();
    bool done = volume->EndBatch(true);
    t_lastError = done ? StoreError::kNone : Refined(StoreError::kIo);
    return done;
}

// --- ObjectStore ------------------------------------------------------------------------------

ObjectStore::ObjectStore(fs::path storeFile) : storeFile_(std::move(storeFile)) {}

ObjectStore::~ObjectStore() = default;

// The store file is opened on first use, and again on each use while it cannot be: a damaged
// file fails every call (and is left as it is) rather than being replaced.
std::shared_ptr<DbVolume> ObjectStore::Volume(VolumeGuid guid) {
    std::lock_guard lock(mutex_);
    if (guid == kObjectStoreVolume) {
        if (!store_) {
            StoreError error = StoreError::kNone;
            ClearSqlFailure();
            std::error_code ec;
            fs::create_directories(storeFile_.parent_path(), ec);
            store_ = DbVolume::Open(storeFile_, true, false, error);
            if (!store_)
                t_lastError = Refined(error);
        }
        return store_;
    }
    auto it = mounted_.find(guid.value);
    if (it == mounted_.end()) {
        t_lastError = StoreError::kNotFound;
        return nullptr;
    }
    return it->second.volume;
}

CeOid ObjectStore::CreateDatabase(VolumeGuid guid, const DatabaseInfo& info) {
    auto volume = Volume(guid);
    if (!volume)
        return 0;
    std::lock_guard lock(volume->Mutex());
    ClearSqlFailure();
    StoreError error = StoreError::kNone;
    CeOid oid = volume->CreateDatabase(info, error);
    t_lastError = Refined(error);
    return oid;
}

DbHandle ObjectStore::OpenDatabase(VolumeGuid guid, std::u16string_view name,
                                   std::uint32_t sortProp, std::uint32_t flags) {
    return Open(guid, std::nullopt, name, sortProp, flags);
}

DbHandle ObjectStore::OpenDatabase(VolumeGuid guid, CeOid oid, std::uint32_t sortProp,
                                   std::uint32_t flags) {
    return Open(guid, oid, {}, sortProp, flags);
}

DbHandle ObjectStore::Open(VolumeGuid guid, std::optional<CeOid> oid, std::u16string_view name,
                           std::uint32_t sortProp, std::uint32_t flags) {
    auto volume = Volume(guid);
    if (!volume)
        return {};
    std::lock_guard lock(volume->Mutex());
    volume->Refresh();
    DbMeta* db = oid ? volume->Find(*oid) : volume->Find(name);
    if (!db)
        return Fail(StoreError::kNotFound, DbHandle());
    int sortIndex = -1;
    if (sortProp != 0) {
        const auto& sorts = db->info.sorts;
        for (std::size_t i = 0; i < sorts.size() && sortIndex < 0; ++i)
            if (sorts[i].propId == sortProp)
                sortIndex = static_cast<int>(i);
        if (sortIndex < 0)
            return Fail(StoreError::kInvalidParameter, DbHandle());
    }
    t_lastError = StoreError::kNone;
    return DbHandle(std::make_unique<DbCursor>(volume, db->info.oid, sortIndex,
                                               (flags & kOpenAutoIncrement) != 0));
}

bool ObjectStore::DeleteDatabase(VolumeGuid guid, CeOid oid) {
    auto volume = Volume(guid);
    if (!volume)
        return false;
    std::lock_guard lock(volume->Mutex());
    ClearSqlFailure();
    StoreError error = StoreError::kNone;
    bool done = volume->DeleteDatabase(oid, error);
    t_lastError = Refined(error);
    return done;
}

std::optional<DatabaseInfo> ObjectStore::OidGetInfo(VolumeGuid guid, CeOid oid) {
    auto volume = Volume(guid);
    if (!volume)
        return std::nullopt;
    std::lock_guard lock(volume->Mutex());
    auto info = volume->Info(oid);
    t_lastError = info ? StoreError::kNone : StoreError::kNotFound;
    return info;
}

std::vector<DatabaseInfo> ObjectStore::EnumDatabases(VolumeGuid guid, std::uint32_t type) {
    auto volume = Volume(guid);
    if (!volume)
        return {};
    std::lock_guard lock(volume->Mutex());
    t_lastError = StoreError::kNone;
    return volume->Enumerate(type);
}

bool ObjectStore::MountVolume(const fs::path& file, std::uint32_t disposition, VolumeGuid& guid) {
    // A path the data root refused is empty; SQLite would open a throw-away database for it.
    if (file.empty())
        return Fail(StoreError::kInvalidParameter, false);
    std::error_code ec;
    fs::path key = fs::weakly_canonical(file, ec);
    if (ec)
        key = fs::absolute(file);
    std::lock_guard lock(mutex_);
    for (auto& [id, m] : mounted_) {
        if (m.file == key) {
            if (disposition == kCreateNew)
                return Fail(StoreError::kAlreadyExists, false);
            ++m.mounts;
            guid = VolumeGuid{id};
            t_lastError = StoreError::kNone;
            return true;
        }
    }
    bool exists = fs::exists(key, ec);
    switch (disposition) {
        case kOpenAlways:
            break;
        case kOpenExisting:
            if (!exists)
                return Fail(StoreError::kNotFound, false);
            break;
        case kCreateNew:
            if (exists)
                return Fail(StoreError::kAlreadyExists, false);
            break;
        default:
            return Fail(StoreError::kInvalidParameter, false);
    }
    StoreError error = StoreError::kNone;
    ClearSqlFailure();
    // A mounted volume belongs to this program until it is unmounted, as the pocket computer held
    // a mounted volume file; that also spares every write the file locking.
    auto volume = DbVolume::Open(key, true, true, error);
    if (!volume)
        return Fail(error, false);
    std::uint32_t id = nextGuid_++;
    mounted_[id] = Mounted{std::move(volume), key, 1};
    guid = VolumeGuid{id};
    t_lastError = StoreError::kNone;
    return true;
}

bool ObjectStore::UnmountVolume(VolumeGuid guid) {
    std::lock_guard lock(mutex_);
    auto it = mounted_.find(guid.value);
    if (guid == kObjectStoreVolume || it == mounted_.end())
        return Fail(StoreError::kNotFound, false);
    if (--it->second.mounts == 0)
        mounted_.erase(it);  // open handles keep the file open until they close
    t_lastError = StoreError::kNone;
    return true;
}

}  // namespace aerix::platform
