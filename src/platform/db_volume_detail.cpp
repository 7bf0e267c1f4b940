#include "platform/db_volume_detail.hpp"

#include "platform/text.hpp"

namespace aerix::platform {

std::string SortsText(const std::vector<SortOrder>& sorts) {
    std::string text;
    for (const SortOrder& s : sorts) {
        if (!text.empty())
            text += ';';
        text += std::to_string(s.propId) + ':' + std::to_string(s.flags);
    }
    return text;
}

std::vector<SortOrder> ParseSorts(std::string_view text) {
    std::vector<SortOrder> sorts;
    while (!text.empty()) {
        auto end = text.find(';');
        std::string item(text.substr(0, end));
        auto colon = item.find(':');
        if (colon != std::string::npos) {
            sorts.push_back({static_cast<std::uint32_t>(std::stoul(item.substr(0, colon))),
                             static_cast<std::uint32_t>(std::stoul(item.substr(colon + 1)))});
        }
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return sorts;
}

// (Built up step by step: GCC 12 warns falsely about "x" + std::to_string(n) at -O3.)
std::string Prefixed(const char* prefix, std::uint64_t n) {
    std::string s(prefix);
    s += std::to_string(n);
    return s;
}

bool KnownType(std::uint16_t type) {
    switch (type) {
        case kCevtI2:
        case kCevtUi2:
        case kCevtI4:
        case kCevtUi4:
        case kCevtR8:
        case kCevtBool:
        case kCevtLpwstr:
        case kCevtBlob:
            return true;
        default:
            return false;
    }
}

void BindKey(SqliteStmt& stmt, int i, const PropValue& v) {
    std::visit(
        [&](const auto& x) {
            using T = std::decay_t<decltype(x)>;
            if constexpr (std::is_same_v<T, double>)
                stmt.BindDouble(i, x);
            else if constexpr (std::is_same_v<T, std::u16string>)
                stmt.BindText(i, Utf16ToUtf8(x));
            else if constexpr (std::is_same_v<T, std::vector<std::uint8_t>>)
                stmt.BindBlob(i, x);
            else
                stmt.BindInt(i, static_cast<std::int64_t>(x));
        },
        v);
}

// Binds column col of src (as SQLite stored it) to parameter i of dst.
void BindColumn(SqliteStmt& dst, int i, const SqliteStmt& src, int col) {
    switch (src.ColumnType(col)) {
        case SQLITE_INTEGER:
            dst.BindInt(i, src.ColumnInt(col));
            break;
        case SQLITE_FLOAT:
            dst.BindDouble(i, src.ColumnDouble(col));
            break;
        case SQLITE_TEXT:
            dst.BindText(i, src.ColumnText(col));
            break;
        case SQLITE_BLOB:
            dst.BindBlob(i, src.ColumnBlob(col));
            break;
        default:
            dst.BindNull(i);
    }
}

// Rank of presence in a sort order: records lacking the key go after all others unless the order
// asks for them first.
int PresenceRank(bool present, std::uint32_t flags) {
    bool unknownFirst = (flags & kSortUnknownFirst) != 0;
    return present == unknownFirst ? 1 : 0;
}

const char* Collation(const SortOrder& s) {
    return (s.flags & kSortCaseInsensitive) ? " COLLATE NOCASE" : "";
}

const PropVal* FindProp(std::span<const PropVal> props, std::uint32_t propId) {
    const PropVal* found = nullptr;
    for (const PropVal& p : props)
        if (p.propId == propId)
            found = &p;  // the last one wins, as in a write that names a property twice
    return found;
}

}  // namespace aerix::platform
