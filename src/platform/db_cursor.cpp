// A cursor over one database of a volume: position, seeks and reads in a sort order.
#include <sqlite3.h>

#include <algorithm>
#include <cstring>

#include "platform/db_volume.hpp"
#include "platform/prop_codec.hpp"
#include "platform/text.hpp"

namespace aerix::platform {

DbCursor::DbCursor(std::shared_ptr<DbVolume> volume, CeOid db, int sortIndex, bool autoIncrement)
    : volume_(std::move(volume)),
      db_(db),
      sortIndex_(sortIndex),
      autoIncrement_(autoIncrement),
      orderGeneration_(volume_->OrderGeneration()) {
    volume_->Attach(this);
}

DbCursor::~DbCursor() {
    stream_ = {};
    volume_->Detach(this);
}

void DbCursor::ResetStream() {
    stream_.Reset();
    rowValid_ = false;
}

// Records may have been added or removed ahead of the position: follow the record it came from.
void DbCursor::SyncPosition() {
    if (orderGeneration_ == volume_->OrderGeneration())
        return;
    orderGeneration_ = volume_->OrderGeneration();
    DbMeta* db = volume_->Find(db_);
    if (db && anchorOid_ != 0) {
        if (auto at = volume_->IndexOf(*db, sortIndex_, anchorOid_))
            pos_ = *at + anchorOffset_;
    }
}

// Makes the stream's current row the record at pos. Walking forward reuses the open statement;
// anything else starts it again at an offset.
bool DbCursor::FetchAt(std::uint64_t pos) {
    DbMeta* db = volume_->Find(db_);
    if (!db)
        return false;
    bool live = stream_.valid() && streamGeneration_ == volume_->DataGeneration();
    if (live && rowValid_ && rowPos_ == pos)
        return true;
    if (!stream_.valid()) {
        stream_ =
            volume_->Sql().Prepare("SELECT oid, props FROM " + db->table +
                                   DbVolume::OrderClause(*db, sortIndex_) + " LIMIT -1 OFFSET ?1");
        if (!stream_.valid())
            return false;
        live = false;
    }
    std::uint64_t at;
    if (live && rowValid_ && rowPos_ < pos && pos - rowPos_ <= 64) {
        at = rowPos_;
    } else {
        stream_.Reset();
        stream_.BindInt(1, static_cast<std::int64_t>(pos));
        streamGeneration_ = volume_->DataGeneration();
        rowValid_ = false;
        if (stream_.Step() != SQLITE_ROW) {
            stream_.Reset();
            return false;
        }
        rowValid_ = true;
        rowPos_ = pos;
        return true;
    }
    while (at < pos) {
        if (stream_.Step() != SQLITE_ROW) {
            ResetStream();
            return false;
        }
        ++at;
    }
    rowPos_ = pos;
    return true;
}

CeOid DbCursor::PlaceAt(std::uint64_t pos, std::uint32_t* index) {
    if (!FetchAt(pos))
        return 0;
    pos_ = pos;
    anchorOid_ = static_cast<CeOid>(stream_.ColumnInt(0));
    anchorOffset_ = 0;
    if (index)
        *index = static_cast<std::uint32_t>(pos);
    return anchorOid_;
}

CeOid DbCursor::Seek(std::uint32_t mode, std::uint32_t value, std::uint32_t* index) {
    DbMeta* db = volume_->Find(db_);
    if (!db)
        return 0;
    SyncPosition();
    switch (mode) {
        case kSeekCeOid: {
            auto at = volume_->IndexOf(*db, sortIndex_, value);
            return at ? PlaceAt(*at, index) : 0;
        }
        case kSeekBeginning:
            return PlaceAt(value, index);
        case kSeekCurrent: {
            auto target = static_cast<std::int64_t>(pos_) + static_cast<std::int32_t>(value);
            return target < 0 ? 0 : PlaceAt(static_cast<std::uint64_t>(target), index);
        }
        case kSeekEnd: {
            // Counted back from the last record (0 is the last); a negative count means the same.
            auto back = static_cast<std::int64_t>(static_cast<std::int32_t>(value));
            back = back < 0 ? -back : back;
            auto count = volume_->RecordCount(*db);
            if (!count)
                return 0;
            std::int64_t target = static_cast<std::int64_t>(*count) - 1 - back;
            return target < 0 ? 0 : PlaceAt(static_cast<std::uint64_t>(target), index);
        }
        default:
            return 0;
    }
}

CeOid DbCursor::SeekValue(const PropVal& value, std::uint32_t* index) {
    DbMeta* db = volume_->Find(db_);
    if (!db || sortIndex_ < 0)
        return 0;
    SyncPosition();
    CeOid oid = volume_->FirstEqual(*db, sortIndex_, value);
    std::optional<std::uint64_t> at;
    if (oid != 0)
        at = volume_->IndexOf(*db, sortIndex_, oid);
    if (!at) {
        // Not found: the position goes to the end, so the next read fails.
        pos_ = volume_->RecordCount(*db).value_or(0);
        anchorOid_ = 0;
        return 0;
    }
    return PlaceAt(*at, index);
}

CeOid DbCursor::Read(std::vector<PropVal>& props) {
    SyncPosition();
    if (!FetchAt(pos_))
        return 0;
    auto oid = static_cast<CeOid>(stream_.ColumnInt(0));
    if (!DecodeProps(stream_.ColumnBlob(1), props))
        return 0;
    anchorOid_ = oid;
    anchorOffset_ = autoIncrement_ ? 1 : 0;
    if (autoIncrement_)
        ++pos_;
    return oid;
}

}  // namespace aerix::platform
