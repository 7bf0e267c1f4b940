// The object store's property-database semantics: sort orders, seeks, auto-increment, partial
// writes, volumes, damaged files, durability and use from several threads.
#include "platform/object_store.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

#include "support/test_platform.hpp"

namespace aerix::platform {
namespace {

using aerix::testing::ReadFile;
using aerix::testing::TempDir;
using aerix::testing::WriteFile;

constexpr std::uint32_t kName = MakePropId(1, kCevtLpwstr);
constexpr std::uint32_t kNumber = MakePropId(2, kCevtI4);
constexpr std::uint32_t kReal = MakePropId(3, kCevtR8);

class ObjectStoreTest : public ::testing::Test {
  protected:
    ObjectStoreTest() : store_(dir_.Path() / "objectstore.sqlite") {}

    CeOid Create(std::u16string name, std::vector<SortOrder> sorts, std::uint32_t type = 7) {
        DatabaseInfo info;
        info.name = std::move(name);
        info.type = type;
        info.flags = 7;
        info.sorts = std::move(sorts);
        return store_.CreateDatabase(kObjectStoreVolume, info);
    }
    CeOid Add(DbHandle& h, std::vector<PropVal> props) { return h.Write(0, props); }

    // Every record's text property 1 in the order the handle reads them ("-" when missing).
    std::vector<std::u16string> Names(DbHandle h) {
        std::vector<std::u16string> names;
        std::vector<PropVal> props;
        while (h.Read(props)) {
            std::u16string name = u"-";
            for (const PropVal& p : props)
                if (p.propId == kName)
                    name = std::get<std::u16string>(p.value);
            names.push_back(name);
        }
        return names;
    }

    TempDir dir_;
    ObjectStore store_;
};

TEST_F(ObjectStoreTest, SortOrdersPlaceEqualKeysInInsertionOrderAndMissingKeysLast) {
    struct Case {
        std::uint32_t flags;
        std::vector<std::u16string> expected;
    };
    // Records: "b", "A", (no name), "a", "B", "a" (the second "a" added last).
    const std::vector<Case> cases{
        {0, {u"A", u"B", u"a", u"a", u"b", u"-"}},
        {kSortDescending, {u"b", u"a", u"a", u"B", u"A", u"-"}},
        {kSortUnknownFirst, {u"-", u"A", u"B", u"a", u"a", u"b"}},
        {kSortCaseInsensitive, {u"A", u"a", u"a", u"b", u"B", u"-"}},
    };
    int n = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.flags);
        std::u16string db = u"db" + std::u16string(1, char16_t(u'0' + n++));
        ASSERT_NE(Create(db, {{kName, c.flags}, {kNumber, 0}}), 0u);
        DbHandle h = store_.OpenDatabase(kObjectStoreVolume, db, kName, kOpenAutoIncrement);
        ASSERT_TRUE(h);
        std::int32_t i = 0;
        for (const char16_t* name : {u"b", u"A", u"", u"a", u"B", u"a"}) {
            std::vector<PropVal> props{PropVal::I4(2, i++)};
            if (*name)
                props.push_back(PropVal::Text(1, name));
            ASSERT_NE(Add(h, props), 0u);
        }
        EXPECT_EQ(Names(store_.OpenDatabase(kObjectStoreVolume, db, kName, kOpenAutoIncrement)),
                  c.expected);
        // The second sort order (numbers) gives the insertion order back.
        EXPECT_EQ(Names(store_.OpenDatabase(kObjectStoreVolume, db, kNumber, kOpenAutoIncrement)),
                  (std::vector<std::u16string>{u"b", u"A", u"-", u"a", u"B", u"a"}));
    }
}

TEST_F(ObjectStoreTest, NumericKeysSortByValueNotByText) {
    ASSERT_NE(Create(u"nums", {{kReal, 0}}), 0u);
    DbHandle h = store_.OpenDatabase(kObjectStoreVolume, u"nums", kReal, kOpenAutoIncrement);
    for (double v : {10.0, -2.5, 9.0, 100.0})
        Add(h, {PropVal::R8(3, v)});
    std::vector<double> order;
    std::vector<PropVal> props;
    DbHandle r = store_.OpenDatabase(kObjectStoreVolume, u"nums", kReal, kOpenAutoIncrement);
    while (r.Read(props))
        for (const PropVal& p : props)
            if (p.propId == kReal)
                order.push_back(std::get<double>(p.value));
    EXPECT_EQ(order, (std::vector<double>{-2.5, 9.0, 10.0, 100.0}));
    EXPECT_FALSE(store_.OpenDatabase(kObjectStoreVolume, u"nums", kName, 0))
        << "only a declared sort property opens the database";
}

TEST_F(ObjectStoreTest, SeekModesAndAutoIncrement) {
    ASSERT_NE(Create(u"seek", {{kNumber, 0}}), 0u);
    DbHandle w = store_.OpenDatabase(kObjectStoreVolume, u"seek", kNumber, 0);
    std::vector<CeOid> oids;  // oids[k] holds number (k + 1) * 10
    for (std::int32_t v : {30, 10, 50, 20, 40})
        oids.push_back(Add(w, {PropVal::I4(2, v)}));
    std::sort(oids.begin(), oids.end(), [&](CeOid a, CeOid b) {
        std::vector<PropVal> pa, pb;
        w.Seek(kSeekCeOid, a);
        w.Read(pa);
        w.Seek(kSeekCeOid, b);
        w.Read(pb);
        return std::get<std::int32_t>(pa[0].value) < std::get<std::int32_t>(pb[0].value);
    });
    DbHandle h = store_.OpenDatabase(kObjectStoreVolume, u"seek", kNumber, kOpenAutoIncrement);
    std::vector<PropVal> props;
    auto number = [&] { return h.Read(props) ? std::get<std::int32_t>(props[0].value) : -1; };
    std::uint32_t index = 99;

    EXPECT_EQ(h.Seek(kSeekBeginning, 2, &index), oids[2]);
    EXPECT_EQ(index, 2u);
    EXPECT_EQ(number(), 30);
    EXPECT_EQ(number(), 40) << "auto-increment moves on";
    EXPECT_EQ(h.Seek(kSeekCurrent, static_cast<std::uint32_t>(-2), &index), oids[2]);
    EXPECT_EQ(number(), 30);
    EXPECT_EQ(h.Seek(kSeekEnd, 0), oids[4]);
    EXPECT_EQ(number(), 50);
    EXPECT_EQ(number(), -1) << "a read past the end returns 0";
    EXPECT_EQ(h.Seek(kSeekCurrent, 0), 0u) << "nothing stands past the end";
    EXPECT_EQ(h.Seek(kSeekEnd, 1, &index), oids[3]);
    EXPECT_EQ(index, 3u);
    EXPECT_EQ(h.Seek(kSeekCeOid, oids[1], &index), oids[1]);
    EXPECT_EQ(index, 1u);
    EXPECT_EQ(h.Seek(kSeekBeginning, 5), 0u) << "beyond the last record";
    EXPECT_EQ(number(), 20) << "a failed seek leaves the position";
    EXPECT_EQ(h.Seek(kSeekCeOid, 999999), 0u);
    EXPECT_EQ(h.SeekValue(PropVal::I4(2, 40), &index), oids[3]);
    EXPECT_EQ(index, 3u);
    EXPECT_EQ(number(), 40);
    EXPECT_EQ(h.SeekValue(PropVal::I4(2, 41)), 0u);
    EXPECT_EQ(number(), -1) << "a value not found leaves the position at the end";

    DbHandle still = store_.OpenDatabase(kObjectStoreVolume, u"seek", kNumber, 0);
    still.Seek(kSeekBeginning, 1);
    ASSERT_NE(still.Read(props), 0u);
    ASSERT_NE(still.Read(props), 0u);
    EXPECT_EQ(std::get<std::int32_t>(props[0].value), 20) << "without auto-increment reads stay";
}

TEST_F(ObjectStoreTest, PositionFollowsItsRecordWhenOthersAreAddedBefore) {
    ASSERT_NE(Create(u"follow", {{kNumber, 0}}), 0u);
    DbHandle h = store_.OpenDatabase(kObjectStoreVolume, u"follow", kNumber, kOpenAutoIncrement);
    Add(h, {PropVal::I4(2, 10)});
    Add(h, {PropVal::I4(2, 20)});
    std::vector<PropVal> props;
    ASSERT_NE(h.Read(props), 0u);  // 10; now on 20
    Add(h, {PropVal::I4(2, 5)});
    ASSERT_NE(h.Read(props), 0u);
    EXPECT_EQ(std::get<std::int32_t>(props[0].value), 20);
}

TEST_F(ObjectStoreTest, WritesReplaceOnlyTheCarriedProperties) {
    ASSERT_NE(Create(u"partial", {{kName, 0}}), 0u);
    DbHandle h = store_.OpenDatabase(kObjectStoreVolume, u"partial", kName, 0);
    CeOid oid = Add(h, {PropVal::Text(1, u"first"), PropVal::I4(2, 7), PropVal::Bool(4, true)});
    ASSERT_NE(oid, 0u);
    EXPECT_EQ(h.Write(oid, std::vector{PropVal::I4(2, 8), PropVal::Ui2(5, 65535)}), oid);
    std::vector<PropVal> props;
    ASSERT_EQ(h.Seek(kSeekCeOid, oid), oid);
    ASSERT_EQ(h.Read(props), oid);
    EXPECT_EQ(props, (std::vector{PropVal::Text(1, u"first"), PropVal::I4(2, 8),
                                  PropVal::Bool(4, true), PropVal::Ui2(5, 65535)}));
    EXPECT_EQ(h.Write(oid + 1000, std::vector{PropVal::I4(2, 1)}), 0u) << "no such record";
    PropVal wrongType{MakePropId(2, kCevtI4), std::u16string(u"x")};
    EXPECT_EQ(h.Write(0, std::vector{wrongType}), 0u);
    EXPECT_EQ(LastStoreError(), StoreError::kInvalidParameter);
    EXPECT_TRUE(h.DeleteRecord(oid));
    EXPECT_FALSE(h.DeleteRecord(oid));
    EXPECT_EQ(h.RecordCount(), 0u);
}

TEST_F(ObjectStoreTest, DatabaseNamesTypesAndEnumeration) {
    EXPECT_NE(Create(std::u16string(32, u'n'), {}), 0u);
    EXPECT_EQ(Create(std::u16string(33, u'n'), {}), 0u);
    EXPECT_EQ(Create(u"", {}), 0u);
    CeOid plan = Create(u"Plan1", {{MakePropId(400, kCevtI2), 0}}, 19901);
    ASSERT_NE(plan, 0u);
    EXPECT_EQ(Create(u"Plan1", {}, 19901), 0u);
    EXPECT_EQ(LastStoreError(), StoreError::kAlreadyExists);
    EXPECT_EQ(Create(u"PLAN1", {}, 19901), 0u) << "names compare without regard to case";
    EXPECT_EQ(Create(u"five", std::vector<SortOrder>(5, {kNumber, 0})), 0u);
    CeOid other = Create(u"Plan2", {}, 19902);
    ASSERT_NE(other, 0u);

    auto plans = store_.EnumDatabases(kObjectStoreVolume, 19901);
    ASSERT_EQ(plans.size(), 1u);
    EXPECT_EQ(plans[0].name, u"Plan1");
    EXPECT_EQ(store_.EnumDatabases(kObjectStoreVolume).size(), 3u);
    auto info = store_.OidGetInfo(kObjectStoreVolume, plan);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->type, 19901u);
    EXPECT_EQ(info->flags, 7u);
    EXPECT_EQ(info->sorts, (std::vector<SortOrder>{{MakePropId(400, kCevtI2), 0}}));
    EXPECT_TRUE(store_.DeleteDatabase(kObjectStoreVolume, plan));
    EXPECT_FALSE(store_.OidGetInfo(kObjectStoreVolume, plan));
    EXPECT_FALSE(store_.OpenDatabase(kObjectStoreVolume, u"Plan1", 0, 0));
    EXPECT_NE(Create(u"Plan1", {}, 19901), 0u) << "the name is free again";
}

TEST_F(ObjectStoreTest, OpenAlwaysCreatesAnEmptyVolumeWithNoDatabases) {
    auto file = dir_.Path() / "Nav.CDB";
    VolumeGuid guid;
    EXPECT_FALSE(store_.MountVolume(file, kOpenExisting, guid));
    EXPECT_FALSE(std::filesystem::exists(file));
    ASSERT_TRUE(store_.MountVolume(file, kOpenAlways, guid));
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_FALSE(store_.OpenDatabase(guid, u"Nav", 0, 0));
    EXPECT_EQ(LastStoreError(), StoreError::kNotFound);
    VolumeGuid again;
    ASSERT_TRUE(store_.MountVolume(file, kOpenAlways, again));
    EXPECT_EQ(again, guid);
    EXPECT_FALSE(store_.MountVolume(file, kCreateNew, again));
    EXPECT_TRUE(store_.UnmountVolume(guid));
    EXPECT_TRUE(store_.UnmountVolume(guid));
    EXPECT_FALSE(store_.UnmountVolume(guid));
    EXPECT_TRUE(store_.EnumDatabases(guid).empty());
}

TEST_F(ObjectStoreTest, DamagedFilesFailAndAreNeverOverwritten) {
    // A valid volume with one record, to be cut short.
    auto good = dir_.Path() / "good.CDB";
    {
        ObjectStore other(dir_.Path() / "unused.sqlite");
        VolumeGuid g;
        ASSERT_TRUE(other.MountVolume(good, kOpenAlways, g));
        DatabaseInfo info;
        info.name = u"db";
        info.sorts = {{kNumber, 0}};
        ASSERT_NE(other.CreateDatabase(g, info), 0u);
        DbHandle h = other.OpenDatabase(g, u"db", kNumber, 0);
        for (std::int32_t i = 0; i < 200; ++i)
            h.Write(0, std::vector{PropVal::I4(2, i), PropVal::Text(1, std::u16string(100, u'x'))});
    }
    std::string whole = ReadFile(good);
    ASSERT_GT(whole.size(), 8192u);
    const std::vector<std::pair<const char*, std::string>> damaged{
        {"text", "this is not a database\n"},
        {"cut mid-page", whole.substr(0, whole.size() / 2 + 100)},
        {"cut at a page", whole.substr(0, 4096 * 2)},
        {"bad magic", "SQLite format 2" + whole.substr(15)},
    };
    for (const auto& [what, bytes] : damaged) {
        SCOPED_TRACE(what);
        auto file = dir_.Path() / (std::string(what) + ".CDB");
        WriteFile(file, bytes);
        VolumeGuid g;
        EXPECT_FALSE(store_.MountVolume(file, kOpenAlways, g));
        EXPECT_EQ(LastStoreError(), StoreError::kInvalidFile);
        EXPECT_EQ(ReadFile(file), bytes);
    }
    WriteFile(store_.StoreFile(), "garbage");
    EXPECT_EQ(Create(u"x", {}), 0u);
    EXPECT_EQ(LastStoreError(), StoreError::kInvalidFile);
    EXPECT_FALSE(store_.OpenDatabase(kObjectStoreVolume, u"x", 0, 0));
    EXPECT_EQ(ReadFile(store_.StoreFile()), "garbage");
}

TEST_F(ObjectStoreTest, ACrashLosesNothingAlreadyWritten) {
    ASSERT_NE(Create(u"durable", {{kNumber, 0}}), 0u);
    pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ObjectStore writer(store_.StoreFile());
        DbHandle h = writer.OpenDatabase(kObjectStoreVolume, u"durable", kNumber, 0);
        for (std::int32_t i = 0; i < 50; ++i)
            if (!h.Write(0, std::vector{PropVal::I4(2, i)}))
                ::_exit(2);
        ::_exit(0);  // no close, no checkpoint: as if the program died here
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    ASSERT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(store_.OpenDatabase(kObjectStoreVolume, u"durable", kNumber, 0).RecordCount(), 50u);
}

TEST_F(ObjectStoreTest, HandlesWorkFromSeveralThreads) {
    ASSERT_NE(Create(u"shared", {{kNumber, 0}}), 0u);
    auto writer = [this](std::int32_t base) {
        DbHandle h = store_.OpenDatabase(kObjectStoreVolume, u"shared", kNumber, 0);
        for (std::int32_t i = 0; i < 200; ++i)
            h.Write(0, std::vector{PropVal::I4(2, base + i)});
    };
    auto reader = [this] {
        for (int pass = 0; pass < 20; ++pass)
            Names(store_.OpenDatabase(kObjectStoreVolume, u"shared", kNumber, kOpenAutoIncrement));
    };
    std::jthread a(writer, 0), b(writer, 1000), c(reader);
    a.join();
    b.join();
    c.join();
    EXPECT_EQ(store_.OpenDatabase(kObjectStoreVolume, u"shared", kNumber, 0).RecordCount(), 400u);
}

}  // namespace
}  // namespace aerix::platform

namespace aerix::platform {
namespace {

// Database "B", sorted on an integer.
CeOid CreateB(ObjectStore& s) {
    DatabaseInfo info;
    info.name = u"B";
    info.flags = 7;
    info.sorts = {{MakePropId(1, kCevtI4), 0}};
    return s.CreateDatabase(kObjectStoreVolume, info);
}

// The records of database "B".
std::uint32_t RecordsOfB(ObjectStore& s) {
    std::uint32_t n = 0;
    DbHandle h = s.OpenDatabase(kObjectStoreVolume, u"B", 0, kOpenAutoIncrement);
    std::vector<PropVal> props;
    while (h.Read(props))
        ++n;
    return n;
}

TEST(ObjectStoreBatch, CommitsAllOrDropsAllWhenTheHandleCloses) {
    TempDir dir;
    auto file = dir.Path() / "objectstore.sqlite";
    {
        ObjectStore store(file);
        ASSERT_NE(CreateB(store), 0u);
        DbHandle h = store.OpenDatabase(kObjectStoreVolume, u"B", 0, kOpenAutoIncrement);
        ASSERT_TRUE(h.BeginBatch());
        EXPECT_FALSE(h.BeginBatch());  // no nesting
        for (int i = 0; i < 3; ++i)
            ASSERT_NE(h.Write(0, std::vector{PropVal::I4(1, i)}), 0u);
        EXPECT_EQ(RecordsOfB(store), 3u);  // visible to the program at once
        ASSERT_TRUE(h.CommitBatch());
        EXPECT_FALSE(h.CommitBatch());

        ASSERT_TRUE(h.BeginBatch());
        ASSERT_NE(h.Write(0, std::vector{PropVal::I4(1, 9)}), 0u);
        h.Close();  // never committed
        EXPECT_EQ(RecordsOfB(store), 3u);
        // Ids handed out in the dropped batch do not break later writes.
        DbHandle again = store.OpenDatabase(kObjectStoreVolume, u"B", 0, kOpenAutoIncrement);
        ASSERT_NE(again.Write(0, std::vector{PropVal::I4(1, 4)}), 0u);
    }
    ObjectStore reopened(file);
    EXPECT_EQ(RecordsOfB(reopened), 4u);
}

TEST(ObjectStoreBatch, ScopesNestAndOnlyTheOutermostKeepsTheWrites) {
    TempDir dir;
    auto file = dir.Path() / "objectstore.sqlite";
    auto add = [](ObjectStore& s, int value) {
        DbHandle h = s.OpenDatabase(kObjectStoreVolume, u"B", 0, kOpenAutoIncrement);
        return h.Write(0, std::vector{PropVal::I4(1, value)}) != 0;
    };
    {
        ObjectStore store(file);
        ASSERT_NE(CreateB(store), 0u);

        {
            VolumeTransaction outer(store, kObjectStoreVolume);
            ASSERT_TRUE(outer.Open());
            ASSERT_TRUE(add(store, 1));
            {
                VolumeTransaction inner(store, kObjectStoreVolume);
                ASSERT_TRUE(add(store, 2));
                EXPECT_TRUE(inner.Commit());
            }
            EXPECT_EQ(RecordsOfB(store), 2u);
        }  // the outer one never committed: the inner commit kept nothing
        EXPECT_EQ(RecordsOfB(store), 0u);

        {
            VolumeTransaction outer(store, kObjectStoreVolume);
            ASSERT_TRUE(add(store, 1));
            { VolumeTransaction inner(store, kObjectStoreVolume); }  // left without Commit
            EXPECT_FALSE(outer.Commit());
        }
        EXPECT_EQ(RecordsOfB(store), 0u);

        {
            // A handle's batch (as an import makes) inside a scope joins it.
            VolumeTransaction outer(store, kObjectStoreVolume);
            DbHandle h = store.OpenDatabase(kObjectStoreVolume, u"B", 0, kOpenAutoIncrement);
            ASSERT_TRUE(h.BeginBatch());
            ASSERT_NE(h.Write(0, std::vector{PropVal::I4(1, 3)}), 0u);
            EXPECT_TRUE(h.CommitBatch());
            ASSERT_TRUE(add(store, 4));
            EXPECT_TRUE(outer.Commit());
            EXPECT_FALSE(outer.Commit());
        }
        EXPECT_EQ(RecordsOfB(store), 2u);
        ASSERT_TRUE(add(store, 5));  // a single write outside any scope is its own transaction
    }
    ObjectStore reopened(file);
    EXPECT_EQ(RecordsOfB(reopened), 3u);
}

}  // namespace
}  // namespace aerix::platform
