// The object store: property databases as the pocket computer kept them, on SQLite. The store
// itself is one volume (objectstore.sqlite); further volumes are files mounted by path. Every call
// reports failure by its result (0, false, an invalid handle) and sets LastStoreError(); none
// throws. Handles may be used from any thread; each volume serialises its own calls.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "platform/prop_val.hpp"

namespace aerix::platform {

class DbCursor;
class DbVolume;
class ObjectStore;

// Why the last call on this thread failed.
StoreError LastStoreError();

// An open database, positioned on one of its records (or past the last one).
class DbHandle {
  public:
    DbHandle();
    ~DbHandle();
    DbHandle(DbHandle&&) noexcept;
    DbHandle& operator=(DbHandle&&) noexcept;

    bool valid() const { return cursor_ != nullptr; }
    explicit operator bool() const { return valid(); }
    void Close();

    CeOid DatabaseOid() const;
    std::uint32_t RecordCount();

    // Positions on a record and returns its id; 0 (position unchanged) when there is none.
    // kSeekCeOid: the record with that id; kSeekBeginning: the value-th record in sort order;
    // kSeekCurrent: value (as a signed number) records from the current one; kSeekEnd: value
    // records back from the last. index receives the position counted from the first record.
    CeOid Seek(std::uint32_t mode, std::uint32_t value, std::uint32_t* index = nullptr);
    // The first record in sort order whose sort property equals value (value.propId must be the
    // open sort property). When there is none the position goes past the end and 0 comes back.
    CeOid SeekValue(const PropVal& value, std::uint32_t* index = nullptr);
    // All properties of the current record; 0 past the end. With auto-increment the position
    // moves on to the next record.
    CeOid Read(std::vector<PropVal>& props);
    // oid 0 adds a record; an existing oid has the given properties replaced, keeping the rest.
    // Returns the record's id, 0 on failure.
    CeOid Write(CeOid oid, std::span<const PropVal> props);
    bool DeleteRecord(CeOid oid);

    // Makes the writes until CommitBatch one transaction on the handle's volume: far faster for
    // thousands of records, and all or none of them are kept. Other writers of the volume in this
    // program join the batch. Closing the handle before CommitBatch drops the batch. Inside a
    // VolumeTransaction it joins that one.
    bool BeginBatch();
    bool CommitBatch();

  private:
    friend class ObjectStore;
    explicit DbHandle(std::unique_ptr<DbCursor> cursor);
    std::unique_ptr<DbCursor> cursor_;
    bool batch_ = false;
};

// Several writes to one volume as one transaction (RAII): begun here, kept by Commit, dropped when
// the scope ends without it or when any write inside it failed. A scope begun inside another on
// the same volume (or a handle's batch) joins it: only the outermost one commits. Every writer of
// the volume in this program joins while it is open.
class VolumeTransaction {
  public:
    VolumeTransaction(ObjectStore& store, VolumeGuid volume);
    ~VolumeTransaction();
    VolumeTransaction(const VolumeTransaction&) = delete;
    VolumeTransaction& operator=(const VolumeTransaction&) = delete;

    // False when it could not begin (LastStoreError says why).
    bool Open() const { return volume_ != nullptr; }
    // True when everything written inside is kept (for an inner scope: nothing failed so far).
    bool Commit();

  private:
    std::shared_ptr<DbVolume> volume_;
};

class ObjectStore {
  public:
    explicit ObjectStore(std::filesystem::path storeFile);
    ~ObjectStore();
    ObjectStore(const ObjectStore&) = delete;
    ObjectStore& operator=(const ObjectStore&) = delete;

    const std::filesystem::path& StoreFile() const { return storeFile_; }

    // Creates a database from info's name (1 to 32 characters, unique in the volume without
    // regard to ASCII case), type, flags and up to four sort orders. Returns its id, 0 on failure.
    CeOid CreateDatabase(VolumeGuid volume, const DatabaseInfo& info);
    // Opens by name (or id) for reading in the order of sortProp, which must be one of the
    // database's declared sort properties (0: the order records were added). flags may hold
    // kOpenAutoIncrement.
    DbHandle OpenDatabase(VolumeGuid volume, std::u16string_view name, std::uint32_t sortProp,
                          std::uint32_t flags);
    DbHandle OpenDatabase(VolumeGuid volume, CeOid oid, std::uint32_t sortProp,
                          std::uint32_t flags);
    bool DeleteDatabase(VolumeGuid volume, CeOid oid);
    // Information on a database (with its record count); nothing when oid is not a database.
    std::optional<DatabaseInfo> OidGetInfo(VolumeGuid volume, CeOid oid);
    // The databases of a volume in the order they were created; type 0 lists every type.
    std::vector<DatabaseInfo> EnumDatabases(VolumeGuid volume, std::uint32_t type = 0);

    // Mounts a volume file: kOpenAlways creates an empty one when it is missing, kOpenExisting
    // requires it, kCreateNew requires that it is not there. Mounting a mounted file again gives
    // the same guid and needs one more unmount.
    bool MountVolume(const std::filesystem::path& file, std::uint32_t disposition,
                     VolumeGuid& guid);
    bool UnmountVolume(VolumeGuid guid);

  private:
    friend class VolumeTransaction;
    std::shared_ptr<DbVolume> Volume(VolumeGuid guid);
    DbHandle Open(VolumeGuid volume, std::optional<CeOid> oid, std::u16string_view name,
                  std::uint32_t sortProp, std::uint32_t flags);

    struct Mounted {
        std::shared_ptr<DbVolume> volume;
        std::filesystem::path file;
        int mounts = 0;
    };

    std::filesystem::path storeFile_;
    std::mutex mutex_;
    std::shared_ptr<DbVolume> store_;
    std::map<std::uint32_t, Mounted> mounted_;
    std::uint32_t nextGuid_ = 1;
};

}  // namespace aerix::platform
