// Typed properties of the object store's records, with the pocket computer's numbering: a property
// id carries its identifier in the high 16 bits and its value type in the low 16 bits.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace aerix::platform {

using CeOid = std::uint32_t;

enum CeValueType : std::uint16_t {
    kCevtI2 = 2,
    kCevtI4 = 3,
    kCevtR8 = 5,
    kCevtBool = 11,
    kCevtUi2 = 18,
    kCevtUi4 = 19,
    kCevtLpwstr = 31,
    kCevtBlob = 65,
};

constexpr std::uint32_t MakePropId(std::uint16_t id, std::uint16_t type) {
    return (static_cast<std::uint32_t>(id) << 16) | type;
}
constexpr std::uint16_t PropNumber(std::uint32_t propId) {
    return static_cast<std::uint16_t>(propId >> 16);
}
constexpr std::uint16_t PropType(std::uint32_t propId) {
    return static_cast<std::uint16_t>(propId & 0xFFFF);
}

// The alternatives line up with the value types: I2, UI2, I4, UI4, R8, BOOL, LPWSTR, BLOB.
using PropValue = std::variant<std::int16_t, std::uint16_t, std::int32_t, std::uint32_t, double,
                               bool, std::u16string, std::vector<std::uint8_t>>;

struct PropVal {
    std::uint32_t propId = 0;
    PropValue value;

    static PropVal I2(std::uint16_t id, std::int16_t v) { return {MakePropId(id, kCevtI2), v}; }
    static PropVal Ui2(std::uint16_t id, std::uint16_t v) { return {MakePropId(id, kCevtUi2), v}; }
    static PropVal I4(std::uint16_t id, std::int32_t v) { return {MakePropId(id, kCevtI4), v}; }
    static PropVal Ui4(std::uint16_t id, std::uint32_t v) { return {MakePropId(id, kCevtUi4), v}; }
    static PropVal R8(std::uint16_t id, double v) { return {MakePropId(id, kCevtR8), v}; }
    static PropVal Bool(std::uint16_t id, bool v) { return {MakePropId(id, kCevtBool), v}; }
    static PropVal Text(std::uint16_t id, std::u16string v) {
        return {MakePropId(id, kCevtLpwstr), std::move(v)};
    }
    static PropVal Blob(std::uint16_t id, std::vector<std::uint8_t> v) {
        return {MakePropId(id, kCevtBlob), std::move(v)};
    }

    friend bool operator==(const PropVal&, const PropVal&) = default;
};

// The value type a variant alternative stands for.
constexpr std::uint16_t ValueTypeOf(const PropValue& v) {
    constexpr std::uint16_t types[] = {kCevtI2, kCevtUi2,  kCevtI4,     kCevtUi4,
                                       kCevtR8, kCevtBool, kCevtLpwstr, kCevtBlob};
    return types[v.index()];
}

// True when the value's alternative is the one the property id's type names.
constexpr bool TypeMatches(const PropVal& p) {
    return ValueTypeOf(p.value) == PropType(p.propId);
}

// Sort flags of a declared sort order.
enum : std::uint32_t {
    kSortDescending = 0x1,
    kSortCaseInsensitive = 0x2,
    kSortUnknownFirst = 0x4,
};

struct SortOrder {
    std::uint32_t propId = 0;
    std::uint32_t flags = 0;
    friend bool operator==(const SortOrder&, const SortOrder&) = default;
};

inline constexpr std::size_t kMaxSortOrders = 4;
inline constexpr std::size_t kMaxDatabaseName = 32;

// Database-information flags: which members of the description are meant.
enum : std::uint16_t {
    kDbInfoValidName = 0x1,
    kDbInfoValidType = 0x2,
    kDbInfoValidSortSpec = 0x4,
};

struct DatabaseInfo {
    CeOid oid = 0;
    std::u16string name;
    std::uint32_t type = 0;
    std::uint16_t flags = 0;
    std::vector<SortOrder> sorts;
    std::uint32_t recordCount = 0;
};

// Open flags.
enum : std::uint32_t { kOpenAutoIncrement = 0x1 };

// Seek modes.
enum SeekMode : std::uint32_t {
    kSeekCeOid = 0x1,
    kSeekBeginning = 0x2,
    kSeekEnd = 0x4,
    kSeekCurrent = 0x8,
    kSeekValueFirstEqual = 0x20,
};

// Volume mount dispositions.
enum : std::uint32_t {
    kCreateNew = 1,
    kOpenExisting = 3,
    kOpenAlways = 4,
};

// A mounted volume; 0 is the object store itself.
struct VolumeGuid {
    std::uint32_t value = 0;
    friend bool operator==(const VolumeGuid&, const VolumeGuid&) = default;
};
inline constexpr VolumeGuid kObjectStoreVolume{0};

// Why the last object-store call on this thread failed.
enum class StoreError {
    kNone = 0,
    kNotFound,          // no such database, record or volume
    kInvalidFile,       // the file is not a valid volume (it is left untouched)
    kAlreadyExists,     // a database of that name, or a volume file that must be new
    kInvalidParameter,  // a bad name, sort order, property type or seek
    kIo,                // SQLite refused the operation
    kLocked,            // another program holds the file's lock (after a short wait)
    kFull,              // the disk (or the file's size limit) is full
    kReadOnly,          // a file of the volume (its shared-memory index too) may not be written
};

}  // namespace aerix::platform
